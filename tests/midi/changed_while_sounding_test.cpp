// What a playing does when the events change under it, its own among them.
#include <functional>
#include <vector>

#include "midi/playback_fixture.h"

namespace zelmar {
namespace {

// Four notes, numbered 2 to 5, on the beats of a bar, each half as long as its beat.
class ChangedWhileSounding : public Playback {
 protected:
  using Numbers = std::vector<std::int32_t>;

  ChangedWhileSounding() {
    for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat, 0, "C4", 0.5);
    Prepare();
    QObject::connect(tune_.get(), &Tune::NoteStarted, &context_,
                     [this](Tone& tone) { started_.push_back(tone.AbsRef()); });
    // A playing that never ends is stopped.
    platform_.events->on_serve = [this](int count) {
      if (count > 200000) tune_->Stopit();
    };
  }

  // Plays, and acts as the note of that number begins.
  const Numbers& PlayAndActAt(std::int32_t number, std::function<void()> act) {
    QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [number, act](Tone& tone) {
      if (tone.AbsRef() == number) act();
    });
    PlayFrom();
    return started_;
  }
  void AddEarlierNote() { Add(MUSIC_NOTE, 1, 1, 0, "G4", 0.25); }
  void Remove(const char* key) { tune_->Remove(QString::fromLatin1(key)); }
  void PutInOrder() {
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
  }

  Numbers started_;
  QObject context_;
};

TEST_F(ChangedWhileSounding, AnEarlierNoteWithItsEndMovesNothing) {
  EXPECT_EQ(PlayAndActAt(4,
                         [this] {
                           AddEarlierNote();
                           PutInOrder();
                         }),
            Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, AnEarlierNoteWithoutAnEndMovesNothing) {
  EXPECT_EQ(PlayAndActAt(4,
                         [this] {
                           AddEarlierNote();
                           tune_->SortStartTimes();
                         }),
            Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, AnEarlierNoteThatComesBetweenTwoMovesNothing) {
  QObject::connect(tune_.get(), &Tune::MelodyTested, &context_, [this, done = false]() mutable {
    if (done || started_.size() < 3 || tune_->CurrentTone()->EventType() != MUSIC_NOTE) return;
    done = true;
    AddEarlierNote();
    PutInOrder();
  });
  PlayFrom();
  EXPECT_EQ(started_, Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, ALaterNoteIsPlayedInItsTurn) {
  std::int32_t later = 0;
  PlayAndActAt(3, [this, &later] {
    later = Add(MUSIC_NOTE, 1, 3, 60, "G4", 0.25)->AbsRef();
    tune_->SortStartTimes();
  });
  EXPECT_EQ(started_, Numbers({2, 3, 4, later, 5}));
}

TEST_F(ChangedWhileSounding, EndsThatAreMadeAnewMoveNothing) {
  EXPECT_EQ(PlayAndActAt(4, [this] { PutInOrder(); }), Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, NotesThatWerePlayedMayGo) {
  EXPECT_EQ(PlayAndActAt(4,
                         [this] {
                           Remove("2");
                           Remove("3");
                         }),
            Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, TheNoteThatHasJustBegunMayGo) {
  EXPECT_EQ(PlayAndActAt(3, [this] { Remove("3"); }), Numbers({2, 3, 4, 5}));
}

TEST_F(ChangedWhileSounding, ANoteThatIsTakenOutAheadIsPassedOver) {
  EXPECT_EQ(PlayAndActAt(3, [this] { Remove("4"); }), Numbers({2, 3, 5}));
}

TEST_F(ChangedWhileSounding, EveryNoteEndsThoughAnEarlierEventIsTakenOut) {
  PlayAndActAt(3, [this] { Remove("2"); });
  int begun = 0, ended = 0;
  for (const Timed& sent : Sent()) {
    begun += sent.word == NoteOn(60, 1, 127);
    ended += sent.word == NoteOn(60, 1, 0);
  }
  EXPECT_EQ(begun, 4);
  EXPECT_EQ(ended, 4);
}

TEST_F(ChangedWhileSounding, WithoutAnyEventLeftItEndsOnce) {
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, &context_, [&finished] { ++finished; });
  EXPECT_EQ(PlayAndActAt(3, [this] { tune_->Tones()->Clear(); }), Numbers({2, 3}));
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(finished, 1);
}

}  // namespace
}  // namespace zelmar
