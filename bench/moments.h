// How late messages leave behind the bang that owes them: the moments at which they left, those at which they
// were owed, and beside them the lateness of a bare loop that wakes as often.
#pragma once

#include <QObject>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "figure.h"
#include "model/tune.h"
#include "platform/services.h"

namespace zelmar::bench {

inline constexpr double kBangMilliseconds = 2.0;

// Keeps the moment of every note message, in milliseconds of the wall clock.
class MomentKeeper : public MidiOutput {
 public:
  int DeviceCount() override { return 1; }
  QString DeviceName(int) override { return QStringLiteral("moments"); }
  int Open(int) override { return kSuccess; }
  void Close() override {}
  void Reset() override {}
  void ShortMessage(std::uint32_t packed) override {
    if ((packed & 0xF0U) == 0x90U) moments.push_back(SecondsSinceMidnight() * 1000.0);
  }
  void LongMessage(const QByteArray&) override {}
  QString ErrorText(int) override { return {}; }

  std::vector<double> moments;
};

// Lateness of each wake-up behind a grid of 2 ms, until told to stop.
inline std::vector<double> BareLoop(const std::atomic<bool>& stop) {
  std::vector<double> lateness;
  const auto period = std::chrono::microseconds(2000);
  auto next = std::chrono::steady_clock::now() + period;
  while (!stop) {
    std::this_thread::sleep_until(next);
    lateness.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - next).count());
    next += period;
  }
  return lateness;
}

// The bang that owes each note message: the first at or behind its moment, one event to a bang.
inline std::vector<double> OwedMoments(Tune& tune, double first_bang, double mark, double start) {
  std::vector<double> owed;
  std::int64_t bang = 0;
  for (const auto& tone : tune) {
    const double due = start + tune.TimeFromPulse(tone->Bar(), tone->Beat(), tone->Tick(), tune.BeatsPerBar(),
                                                  tune.BeatLength());
    const auto first_due = static_cast<std::int64_t>(std::ceil((due - mark) / kBangMilliseconds));
    bang = std::max(bang, std::max<std::int64_t>(first_due, 0));
    owed.push_back(bang == 0 ? first_bang : mark + kBangMilliseconds * static_cast<double>(bang));
    ++bang;
  }
  return owed;
}

// In milliseconds.
struct Lateness {
  std::vector<double> messages;
  std::vector<double> bare;
};

// Has `play` play the tune, whose messages go to the keeper, beside a bare loop. Without messages when not
// all came.
inline Lateness LatenessOf(Tune& tune, MomentKeeper& keeper, const std::function<void()>& play) {
  double first_bang = 0.0, mark = 0.0;
  const QObject listener;
  QObject::connect(&tune, &Tune::MelodyTested, &listener, [&first_bang] {
    if (first_bang == 0.0) first_bang = SecondsSinceMidnight() * 1000.0;
  });
  // The first beat is raised just before the marks are set.
  QObject::connect(&tune, &Tune::Ticked, &listener, [&mark] {
    if (mark == 0.0) mark = SecondsSinceMidnight() * 1000.0;
  });

  keeper.moments.clear();
  keeper.moments.reserve(static_cast<std::size_t>(tune.Count()));
  std::atomic<bool> stop = false;
  Lateness lateness;
  std::thread loop([&] { lateness.bare = BareLoop(stop); });
  play();
  stop = true;
  loop.join();

  const auto owed = OwedMoments(tune, first_bang, mark, static_cast<double>(tune.MelodyStartTime()) * 1000.0);
  if (owed.size() != keeper.moments.size()) {
    std::fprintf(stderr, "%zu messages were owed and %zu came\n", owed.size(), keeper.moments.size());
    return {};
  }
  for (std::size_t i = 0; i < owed.size(); ++i) lateness.messages.push_back(keeper.moments[i] - owed[i]);
  return lateness;
}

// Prints how far the share of the messages lies above the same share of the bare loop.
inline void PrintLateness(const char* what, const Lateness& lateness, double share, double limit) {
  const double measured = Percentile(lateness.messages, share);
  const double yardstick = Percentile(lateness.bare, share);
  PrintFigure(what, measured, yardstick, "ms", measured - yardstick, limit);
}

}  // namespace zelmar::bench
