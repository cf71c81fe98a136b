// Rows of the database as parts of a tune. Each function throws Failure for a row that cannot be held.
#pragma once

#include <memory>

#include "model/tune.h"

namespace zelmar {

class Recordset;

// The tune that a row of tblMelodies tells of, without its tracks, words, themes and events.
std::shared_ptr<Tune> TuneOfRow(const Recordset& row);

// The fields of an event row, by number.
struct EventFields {
  explicit EventFields(const Recordset& rows);

  int event_type, abs_ref, bar, beat, tick, track, duration, instrument, pitch, volume, enharmonic;
};

// An event as stored, without what it takes from its track and its tune.
std::shared_ptr<Tone> ToneOfRow(const Recordset& row, const EventFields& fields);

}  // namespace zelmar
