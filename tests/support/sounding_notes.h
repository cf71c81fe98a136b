// What a listener hears of a tune that was played: when each note began and ended on the wire, beside what is
// written.
#pragma once

#include <vector>

#include "model/tune.h"
#include "support/scripted_services.h"

namespace zelmar::testing_support {

// Times in milliseconds from the start of the playing.
struct HeardNote {
  int channel;  // from 1
  int pitch;
  double start;
  double end;
};

// In the order of their starts. A note ends with the first message that ends or begins its pitch on its
// channel; one that nothing ends has no end and is left out.
std::vector<HeardNote> HeardNotes(const std::vector<SentMessage>& sent, double start_seconds);

struct WrittenNote : HeardNote {
  int events_at_start;  // of the whole tune, itself among them
};

// The notes of the tune by their places and lengths alone, in the order of their starts.
std::vector<WrittenNote> WrittenNotes(const Tune& tune);

// How much shorter than written a note may sound: events leave one by one, one at each step of the timer.
double AllowedLoss(const WrittenNote& note, const Tune& tune);

// The heard note of each written one; empty when they are not the same ones.
std::vector<HeardNote> HeardFor(const std::vector<WrittenNote>& written, std::vector<HeardNote> heard);

}  // namespace zelmar::testing_support
