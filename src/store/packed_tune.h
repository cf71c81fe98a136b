// A tune as bytes, every field in its own width, for keeping one aside outside the database.
//
// Two halves: the head (catalogue, tracks, words and themes), which is small, and the events, which are
// packed fast enough to do so while a person works. What playing leaves in a tune (its place, the metronome,
// the tempo and expression maps, the rests) is no part of it.
#pragma once

#include <QByteArray>
#include <memory>

namespace zelmar {

class Tune;

QByteArray PackTuneHead(Tune& tune);
// Throws OverflowError when an event has a pitch that no number stands for.
QByteArray PackTuneEvents(const Tune& tune);

// The tune of a head with its events behind it, as it was: the same events in the same order, the same mark
// of change, the same saved FileName. Throws Failure when the bytes are not what the two functions above
// make; nothing in them is taken on trust.
std::shared_ptr<Tune> UnpackTune(const QByteArray& bytes);

}  // namespace zelmar
