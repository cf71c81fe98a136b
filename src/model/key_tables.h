// The key names with their signatures, and the display names of the event types. The tables are empty until
// their loader has run; a user of a table calls the loader first.
#pragma once

#include <QString>
#include <array>

#include "model/event_type.h"

namespace zelmar {

inline constexpr int kKeyNameCount = 18;
inline constexpr std::int16_t kNoSuchKey = 99;

extern std::array<std::int16_t, kKeyNameCount> MajorKeySharps;
extern std::array<std::int16_t, kKeyNameCount> MinorKeySharps;
extern std::array<QString, kKeyNameCount> MajorKeyNames;
extern std::array<QString, kKeyNameCount> MinorKeyNames;

// By event type code; codes without a name are empty.
extern std::array<QString, kEventTypeCount> ControllerNames;

void LoadPitchNameTables();
void LoadControllerNames();

// The first key name whose signature is `sharps`, among the minor keys when `minor` is not 0. Throws
// SubscriptError when there is none.
QString KeyNameFromSharps(std::int16_t sharps, std::uint8_t minor);

}  // namespace zelmar
