// What combo boxes offer: a text with the number that it stands for. Instruments, banks and tracks.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

namespace zelmar {

class Track;
class Tracks;

struct ComboEntry {
  QString text;
  int number = 0;

  bool operator==(const ComboEntry&) const = default;
};

// The first `count` instruments (1 to kInstrumentCount), as "40.  (Violin)" with the number 40. Throws
// SubscriptError for another count.
std::vector<ComboEntry> InstrumentEntries(int count);

// The variation banks that TheToneBanks holds for the instrument, in table order; the number is that of
// BankNumber.
std::vector<ComboEntry> BankEntries(int instrument);

struct Bank {
  std::uint8_t msb = 0;  // controller 0
  std::uint8_t lsb = 0;  // controller 32

  bool operator==(const Bank&) const = default;
};
constexpr int BankNumber(Bank bank) {
  return bank.msb * 256 + bank.lsb;
}
constexpr Bank BankOfNumber(int number) {
  return {static_cast<std::uint8_t>(number / 256), static_cast<std::uint8_t>(number % 256)};
}

// How a track is written: number and description with something between them, or the description alone. The
// number of an entry is the track's.
struct TrackFormat {
  const char16_t* between = nullptr;  // null for the description alone
  const char16_t* first = nullptr;    // an entry before all others, with the number kAllTracks
};
inline constexpr int kAllTracks = -1;
inline constexpr TrackFormat kNumberedTracks{u". "};
inline constexpr TrackFormat kTrackDescriptions{};
inline constexpr TrackFormat kTrackFilter{u" - ", u"All Tracks"};

// The tracks in their order; with `wanted`, only those for which it is true.
std::vector<ComboEntry> TrackEntries(const Tracks& tracks, TrackFormat format,
                                     const std::function<bool(const Track&)>& wanted = {});

}  // namespace zelmar
