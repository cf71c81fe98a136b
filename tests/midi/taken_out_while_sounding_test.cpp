// What a playing does when events are taken out of it, its own among them.
#include <vector>

#include "midi/playback_fixture.h"

namespace zelmar {
namespace {

class TakenOut : public Playback {
 protected:
  TakenOut() {
    for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
    Prepare();
    QObject::connect(tune_.get(), &Tune::NoteStarted, &context_,
                     [this](Tone& tone) { started_.push_back(tone.AbsRef()); });
    // A playing that never ends is stopped.
    platform_.events->on_serve = [this](int count) {
      if (count > 200000) tune_->Stopit();
    };
  }

  using Numbers = std::vector<std::int32_t>;
  Numbers started_;
  QObject context_;
};

TEST_F(TakenOut, TheNoteThatHasJustBegunIsFollowedByTheNext) {
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [this](Tone& tone) {
    if (tone.AbsRef() == 3) tune_->Remove(QStringLiteral("3"));
  });
  PlayFrom();
  EXPECT_EQ(started_, Numbers({2, 3, 4, 5}));
}

TEST_F(TakenOut, TheNextNoteIsPassedOver) {
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [this](Tone& tone) {
    if (tone.AbsRef() == 3) tune_->Remove(QStringLiteral("4"));
  });
  PlayFrom();
  EXPECT_EQ(started_, Numbers({2, 3, 5}));
}

TEST_F(TakenOut, EverythingEndsThePlaying) {
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [this](Tone& tone) {
    if (tone.AbsRef() == 3) tune_->Tones()->Clear();
  });
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, &context_, [&] { ++finished; });
  PlayFrom();
  EXPECT_EQ(started_, Numbers({2, 3}));
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(finished, 1);
}

TEST_F(Playback, GoesOnWithItsEventWhenTheEndsAreMadeAnew) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  std::vector<std::int32_t> started;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone& tone) {
    started.push_back(tone.AbsRef());
    if (started.size() != 3) return;
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
  });
  PlayFrom();
  EXPECT_EQ(started, std::vector<std::int32_t>({2, 3, 4, 5}));
}

}  // namespace
}  // namespace zelmar
