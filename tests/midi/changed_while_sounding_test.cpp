// What a playing does when the events change under it.
#include <vector>

#include "midi/playback_fixture.h"

namespace zelmar {
namespace {

TEST_F(Playback, GoesOnWithTheNextEventWhenAnEarlierOneComesWhileItsOwnSounds) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  std::vector<std::int32_t> started;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone& tone) {
    started.push_back(tone.AbsRef());
    if (started.size() == 3) {
      Add(MUSIC_NOTE, 1, 1, 0, "G4", 0.25);
      tune_->CalcNotesOff();
      tune_->SortStartTimes();
    }
  });
  PlayFrom();
  EXPECT_EQ(started, std::vector<std::int32_t>({2, 3, 4, 5}));
}

TEST_F(Playback, GoesOnWithItsEventWhenAnEarlierOneComesBetweenTwo) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  std::vector<std::int32_t> started;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context,
                   [&](Tone& tone) { started.push_back(tone.AbsRef()); });
  QObject::connect(tune_.get(), &Tune::MelodyTested, &context, [&, done = false]() mutable {
    if (done || started.size() < 3 || tune_->CurrentTone()->EventType() != MUSIC_NOTE) return;
    done = true;
    Add(MUSIC_NOTE, 1, 1, 0, "G4", 0.25);
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
  });
  PlayFrom();
  EXPECT_EQ(started, std::vector<std::int32_t>({2, 3, 4, 5}));
}

TEST_F(Playback, GoesOnWithItsEventWhenAnEarlierOneComesAndTheEndsStay) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  std::vector<std::int32_t> started;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone& tone) {
    started.push_back(tone.AbsRef());
    if (started.size() != 3) return;
    Add(MUSIC_NOTE, 1, 1, 0, "G4", 0.25);
    tune_->SortStartTimes();
  });
  PlayFrom();
  EXPECT_EQ(started, std::vector<std::int32_t>({2, 3, 4, 5}));
}

TEST_F(Playback, GoesOnWithItsEventWhenEarlierOnesAreTakenOut) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  std::vector<std::int32_t> started;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone& tone) {
    started.push_back(tone.AbsRef());
    if (started.size() != 3) return;
    tune_->Remove(QStringLiteral("2"));
    tune_->Remove(QStringLiteral("3"));
  });
  PlayFrom();
  EXPECT_EQ(started, std::vector<std::int32_t>({2, 3, 4, 5}));
}

TEST_F(Playback, EndsEveryNoteThoughAnEarlierEventIsTakenOut) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
  Prepare();
  QObject context;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone& tone) {
    if (tone.AbsRef() == 3) tune_->Remove(QStringLiteral("2"));
  });
  PlayFrom();
  int begun = 0, ended = 0;
  for (const Timed& sent : Sent()) {
    begun += sent.word == NoteOn(60, 1, 127);
    ended += sent.word == NoteOn(60, 1, 0);
  }
  EXPECT_EQ(begun, 4);
  EXPECT_EQ(ended, 4);
}

}  // namespace
}  // namespace zelmar
