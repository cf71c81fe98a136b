// Tunes in which no field has its default, and every field of a tune as text, for comparing two of them.
#pragma once

#include <QStringList>
#include <memory>

#include "model/tune.h"

namespace zelmar::testing_support {

// A line for each thing in the tune, a field behind its name; numbers with a fraction to the last bit.
QStringList Everything(Tune& tune);

// Tracks, words, themes and events of every kind, each field with a value of its own.
std::shared_ptr<Tune> TuneWithEverything();

// The bytes of a tune, its head and its events.
QByteArray PackedWhole(Tune& tune);

// Any tune at all, the same one for the same seed.
std::shared_ptr<Tune> RandomTune(unsigned seed);

}  // namespace zelmar::testing_support
