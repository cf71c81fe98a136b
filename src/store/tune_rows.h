// Rows of the database as parts of a tune, and parts of a tune as rows of the database. A function that reads
// throws Failure for a row that cannot be held; one that writes fills the current row of `row` and throws
// DatabaseError for a table that lacks a field.
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

// The database takes no empty text: an empty field of the catalogue becomes one blank, in the tune as well;
// an empty length becomes the word that keeps the tune out of the browsers; an empty title is replaced in the
// row alone.
void FillCatalogueRow(Recordset& row, Tune& tune, const QString& code_name);
void FillWordRow(Recordset& row, const Word& word, const QString& code_name);
void FillThemeRow(Recordset& row, const Theme& theme, const QString& code_name);
// A track without a name is stored under one made of its number.
void FillTrackRow(Recordset& row, const Track& track, const QString& code_name);
void FillEventRow(Recordset& row, const EventFields& fields, const Tone& tone);

}  // namespace zelmar
