// Filling the global tables from the database.
#pragma once

namespace zelmar {

// Names, favourites, families and best octaves of the instruments by number. Returns at once when the
// database fails. Throws SubscriptError for a number outside 0 to 128.
void LoadInstrumentTable();

// Replaces TheToneBanks by the table of the current MidiMode ("GS", "XG", "GM2"; empty for any other).
void LoadToneBank();

}  // namespace zelmar
