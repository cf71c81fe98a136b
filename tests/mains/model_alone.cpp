// A program of the model and the platform and nothing else: that it links shows that neither asks for more,
// and what it does that a tune is whole without an engine that would sound it.
#include <cstdio>
#include <memory>

#include "model/tune.h"

namespace {

int failures = 0;

void Expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  ++failures;
}

}  // namespace

int main() {
  using namespace zelmar;
  const auto tune = std::make_shared<Tune>();
  tune->CreateMelody(0, 100, 1, {QStringLiteral("C4"), QStringLiteral("E4")});
  tune->CalcNotesOff();
  tune->SortStartTimes();
  Expect(tune->Count() == 4, "two notes have two ends");
  int ends = 0;
  QObject::connect(tune.get(), &Tune::Finished, [&ends] { ++ends; });
  std::int16_t bar = 0;
  tune->Play(bar);
  tune->JumpTo(2);
  Expect(!tune->Playing() && bar == 0 && ends == 0, "what cannot sound does not play");
  tune->MelodyTest();
  tune->TuneQuilTimer_NewBeat();
  tune->Item(1)->Play();
  Expect(tune->PlayIndex() == 0 && tune->CurrentTone() == nullptr && tune->TuneQuilTimer() == nullptr,
         "nothing is under way");
  tune->Stopit();
  Expect(ends == 1, "a stop tells of the end");
  tune->SetBarNumber(2);
  tune->Rewind();
  Expect(tune->BarNumber() == 1 && tune->BeatNumber() == 1, "it can be placed");
  return failures == 0 ? 0 : 1;
}
