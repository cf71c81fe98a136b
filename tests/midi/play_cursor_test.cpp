// Events that come, go and are sorted while their tune plays: what remains is heard once.
#include <algorithm>
#include <functional>
#include <random>
#include <set>

#include "midi/playback_fixture.h"

namespace zelmar {
namespace {

// Eight notes on the beats of two bars, from C4 upwards.
class EditedWhilePlaying : public Playback {
 protected:
  EditedWhilePlaying() {
    for (int i = 0; i < kNotes; ++i) notes_.push_back(AddNote(i));
    Prepare();
    QObject::connect(tune_.get(), &Tune::NoteStarted, [this](Tone& tone) { heard_.append(tone.Number()); });
    QObject::connect(tune_.get(), &Tune::NoteStopped, [this](Tone& tone) { ended_.append(tone.Number()); });
    QObject::connect(tune_.get(), &Tune::Finished, [this] { ++finished_; });
  }

  std::shared_ptr<Tone> AddNote(int number) {
    const auto tone =
        Add(MUSIC_NOTE, static_cast<std::int16_t>(1 + number / 4), static_cast<std::int16_t>(1 + number % 4));
    tone->SetNumber(Pitch(number));
    return tone;
  }
  static std::int16_t Pitch(int number) { return static_cast<std::int16_t>(60 + number); }
  static QList<int> Pitches(std::initializer_list<int> numbers) {
    QList<int> pitches;
    for (const int number : numbers) pitches.append(Pitch(number));
    return pitches;
  }

  // Plays, and changes the events once `count` notes have been heard: from the event queue.
  void PlayAndEdit(qsizetype count, const std::function<void()>& edit) {
    bool edited = false;
    platform_.events->on_serve = [&, edit](int) {
      if (edited || !tune_->Playing() || heard_.size() < count) return;
      edited = true;
      edit();
    };
    PlayFrom();
    platform_.events->on_serve = {};
    EXPECT_TRUE(edited);
    EXPECT_FALSE(tune_->Playing());
    EXPECT_EQ(finished_, 1);
  }
  // The same within the event that tells of the note.
  void PlayAndEditWithin(qsizetype count, const std::function<void()>& edit) {
    const QObject context;
    QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&] {
      if (heard_.size() == count) edit();
    });
    PlayFrom();
    EXPECT_FALSE(tune_->Playing());
    EXPECT_EQ(finished_, 1);
  }
  void EditInBothWays(qsizetype count, const std::function<void()>& edit, const QList<int>& expected) {
    const auto before = tune_->Tones();
    std::vector<std::shared_ptr<Tone>> tones;
    for (const auto& tone : *before) tones.push_back(tone);
    PlayAndEdit(count, edit);
    EXPECT_EQ(heard_, expected) << "from the queue";
    const auto again = std::make_shared<Tones>();
    for (const auto& tone : tones) again->Add(tone);
    tune_->SetTones(again);
    heard_.clear();
    ended_.clear();
    finished_ = 0;
    PlayAndEditWithin(count, edit);
    EXPECT_EQ(heard_, expected) << "within the note's own event";
  }

  void RemoveNote(int number) {
    tune_->Remove(QString::number(notes_[static_cast<std::size_t>(number)]->AbsRef()));
  }
  void Rebuild() {
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
  }

  static constexpr int kNotes = 8;
  const QList<int> all_ = Pitches({0, 1, 2, 3, 4, 5, 6, 7});
  std::vector<std::shared_ptr<Tone>> notes_;
  QList<int> heard_, ended_;  // numbers of the notes that began and that ended
  int finished_ = 0;
};

// --- Events that come ---

TEST_F(EditedWhilePlaying, ControllersThatComeBehindRepeatNothing) {
  EditInBothWays(
      4,
      [this] {
        for (int i = 0; i < 4; ++i) Add(10, 1, 1);
        tune_->SortStartTimes();
      },
      all_);
}

TEST_F(EditedWhilePlaying, ControllersThatComeAheadAreSentInTheirPlace) {
  int told = 0;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&](Tone&) {
    ++told;
    EXPECT_EQ(heard_.size(), 6);
  });
  PlayAndEdit(4, [this] {
    for (int i = 0; i < 4; ++i) Add(10, 2, 2, 60);
    tune_->SortStartTimes();
  });
  EXPECT_EQ(heard_, all_);
  EXPECT_EQ(told, 4);
}

TEST_F(EditedWhilePlaying, NotesThatComeAheadAreHeardAndThoseBehindAreNot) {
  EditInBothWays(4,
                 [this] {
                   for (const auto& [bar, pitch] : {std::pair{1, "C6"}, {2, "E6"}})
                     Add(MUSIC_NOTE, static_cast<std::int16_t>(bar), 2, 60, pitch, 0.25);
                   Rebuild();
                 },
                 {60, 61, 62, 63, 64, 65, 88, 66, 67});
}

TEST_F(EditedWhilePlaying, NotesThatComeAtTheVeryEndAreHeardThere) {
  EditInBothWays(
      4, [this] { Add(MUSIC_NOTE, 3, 1, 0, "C6"); }, all_ + QList<int>{84});
}

TEST_F(EditedWhilePlaying, ANoteOfTheMomentThatSoundsIsHeardWhenItIsSortedBehindIt) {
  EditInBothWays(3,
                 [this] {
                   Add(MUSIC_NOTE, 1, 3, 0, "C6");
                   Rebuild();
                 },
                 {60, 61, 62, 84, 63, 64, 65, 66, 67});
}

TEST_F(EditedWhilePlaying, WhatComesBeforeTheFirstEventOfTheStartBarIsNotPlayed) {
  bool edited = false;
  RemoveNote(4);
  Rebuild();
  platform_.events->on_serve = [&](int) {
    if (edited || !tune_->Playing()) return;
    edited = true;
    for (int i = 0; i < 4; ++i) Add(MUSIC_NOTE, 1, 3, 60, "C6", 0.25);
    Add(MUSIC_NOTE, 2, 1, 60, "E6", 0.25);
    Rebuild();
  };
  PlayFrom(2);
  EXPECT_TRUE(edited);
  EXPECT_EQ(heard_, (QList<int>{88, 65, 66, 67}));
}

// --- Events that go ---

TEST_F(EditedWhilePlaying, NotesThatWereHeardMayGo) {
  EditInBothWays(
      5,
      [this] {
        for (const int number : {0, 1, 2, 3}) RemoveNote(number);
      },
      all_);
}

TEST_F(EditedWhilePlaying, TheNoteThatSoundsMayGo) {
  EditInBothWays(
      3, [this] { RemoveNote(2); }, all_);
  // With all that was played before it.
  heard_.clear();
  finished_ = 0;
  notes_.clear();
  tune_->Tones()->Clear();
  for (int i = 0; i < kNotes; ++i) notes_.push_back(AddNote(i));
  Prepare();
  EditInBothWays(
      3,
      [this] {
        for (const int number : {0, 1, 2}) RemoveNote(number);
        Rebuild();
      },
      all_);
}

TEST_F(EditedWhilePlaying, NotesThatAreToComeMayGo) {
  EditInBothWays(
      4,
      [this] {
        for (const int number : {5, 6}) RemoveNote(number);
      },
      Pitches({0, 1, 2, 3, 4, 7}));
}

TEST_F(EditedWhilePlaying, TheEventUnderTheCursorMayGo) {
  bool gone = false;
  platform_.events->on_serve = [&](int) {
    if (gone || !tune_->Playing() || tune_->CurrentTone() != notes_[4]) return;
    gone = true;
    ASSERT_EQ(tune_->Item(tune_->PlayIndex()), notes_[4]);
    tune_->Remove(tune_->PlayIndex());
  };
  PlayFrom();
  EXPECT_TRUE(gone);
  EXPECT_EQ(heard_, Pitches({0, 1, 2, 3, 5, 6, 7}));
}

TEST_F(EditedWhilePlaying, ThePlaceOfTheCursorIsThatOfItsEvent) {
  PlayAndEdit(4, [this] {
    tune_->Remove(1);
    for (int i = 0; i < 3; ++i) Add(10, 1, 1);
    tune_->SortStartTimes();
    const QObject* const context = new QObject(tune_.get());
    QObject::connect(tune_.get(), &Tune::Ticked, context, [this] {
      if (tune_->CurrentTone()) {
        EXPECT_EQ(tune_->Item(tune_->PlayIndex()), tune_->CurrentTone());
      }
    });
  });
  EXPECT_EQ(heard_, all_);
}

TEST_F(EditedWhilePlaying, WithNoEventLeftThePlayingEnds) {
  EditInBothWays(
      4, [this] { tune_->Tones()->Clear(); }, Pitches({0, 1, 2, 3}));
  EXPECT_EQ(tune_->CurrentTone(), nullptr);
}

TEST_F(EditedWhilePlaying, WhatStandsInPlaceOfAllThatWentIsPlayedFromItsTime) {
  EditInBothWays(4,
                 [this] {
                   tune_->Tones()->Clear();
                   for (const auto& [beat, pitch] : {std::pair{1, "C6"}, {3, "D6"}, {4, "E6"}})
                     Add(MUSIC_NOTE, 1, static_cast<std::int16_t>(beat), 0, pitch, 0.25);
                   Add(MUSIC_NOTE, 2, 1, 0, "F6");
                   Rebuild();
                 },
                 {60, 61, 62, 63, 88, 89});
}

// --- The order ---

TEST_F(EditedWhilePlaying, SortingGoesOnBehindTheEventThatWasPlayedLast) {
  EditInBothWays(
      4, [this] { tune_->SortStartTimes(); }, all_);
}

TEST_F(EditedWhilePlaying, SortingRepeatsNothingThatWasPlayedOutOfItsTurn) {
  // Played as they stand: the fifth note first.
  const auto tones = std::make_shared<Tones>();
  tones->Add(notes_[4]);
  for (const auto& tone : *tune_->Tones())
    if (tone != notes_[4]) tones->Add(tone);
  tune_->SetTones(tones);
  EditInBothWays(
      3, [this] { tune_->SortStartTimes(); }, Pitches({4, 0, 1, 2, 3, 5, 6, 7}));
}

TEST_F(EditedWhilePlaying, NoteEndsThatAreMadeAnewAreSentOnce) {
  for (const int heard : {1, 4, 5, 8}) {
    SCOPED_TRACE(heard);
    EditInBothWays(
        heard, [this] { Rebuild(); }, all_);
    EXPECT_EQ(ended_, all_);
    heard_.clear();
    ended_.clear();
    finished_ = 0;
  }
}

TEST_F(EditedWhilePlaying, NoteEndsOfOneMomentAreEachSentOnce) {
  for (const int number : {12, 16, 19}) {
    const auto note = AddNote(1);
    note->SetNumber(Pitch(number));
  }
  Rebuild();
  int rebuilt = 0;
  // Between the ends of the chord.
  QObject::connect(tune_.get(), &Tune::NoteStopped, [&] {
    if (ended_.size() != 3) return;
    ++rebuilt;
    Rebuild();
  });
  PlayFrom();
  EXPECT_EQ(rebuilt, 1);
  const QList<int> expected = Pitches({0, 1, 12, 16, 19, 2, 3, 4, 5, 6, 7});
  EXPECT_EQ(heard_, expected);
  EXPECT_EQ(ended_, expected);
}

TEST_F(EditedWhilePlaying, ANoteThatIsMovedAheadIsHeardInItsNewPlaceAndNothingIsLostBefore) {
  const auto move = [this] {
    notes_[2]->SetBar(2);
    notes_[2]->SetTick(60);
    Rebuild();
  };
  for (const bool within : {false, true}) {
    if (within)
      PlayAndEditWithin(3, move);
    else
      PlayAndEdit(3, move);
    EXPECT_EQ(heard_, Pitches({0, 1, 2, 3, 4, 5, 6, 2, 7}));
    heard_.clear();
    finished_ = 0;
    notes_[2]->SetBar(1);
    notes_[2]->SetTick(0);
    Rebuild();
  }
}

TEST_F(EditedWhilePlaying, ANoteThatIsTunedAnewWhileItSoundsIsNotRepeated) {
  EditInBothWays(
      3,
      [this] {
        notes_[2]->SetNumber(90);
        Rebuild();
        notes_[2]->SetNumber(Pitch(2));
      },
      all_);
}

// --- Other events in the place of all ---

TEST_F(EditedWhilePlaying, AnotherCollectionOfTheSameEventsGoesOn) {
  EditInBothWays(
      4,
      [this] {
        const auto tones = std::make_shared<Tones>();
        for (const auto& tone : *tune_->Tones()) tones->Add(tone);
        tune_->SetTones(tones);
      },
      all_);
}

TEST_F(EditedWhilePlaying, CopiesOfTheEventsGoOn) {
  EditInBothWays(
      4,
      [this] {
        const auto tones = std::make_shared<Tones>();
        for (int i = 0; i < 3; ++i) Add(10, 1, 1);
        tune_->SortStartTimes();
        for (const auto& tone : *tune_->Tones()) tones->Add(std::make_shared<Tone>(*tone));
        tune_->SetTones(tones);
      },
      all_);
  EXPECT_EQ(ended_, all_);
}

TEST_F(EditedWhilePlaying, ATuneThatIsLetGoInTheMiddlePlaysToItsEnd) {
  platform_.events->on_serve = [this](int) {
    if (heard_.size() == 4) tune_.reset();
  };
  PlayFrom();
  EXPECT_EQ(heard_, all_);
  EXPECT_EQ(finished_, 1);
}

// --- Any of these, at any time ---

class EditedAtRandom : public EditedWhilePlaying {
 protected:
  void Edit(std::mt19937& chance) {
    const auto below = [&chance](int end) { return std::uniform_int_distribution(0, end - 1)(chance); };
    // Half a beat and more from here.
    const auto now = static_cast<int>((SecondsSinceMidnight() - start_) * 4.0);
    const auto place = [&](Tone& tone, int half_beats) {
      tone.SetBar(static_cast<std::int16_t>(1 + half_beats / 8));
      tone.SetBeat(static_cast<std::int16_t>(1 + half_beats % 8 / 2));
      tone.SetTick(static_cast<std::int16_t>(half_beats % 2 * 60 + 7));
    };
    switch (below(7)) {
      case 0:
        for (int i = below(4); i >= 0; --i) Add(10, 1, static_cast<std::int16_t>(1 + below(4)));
        break;
      case 1: {
        const auto note = Add(MUSIC_NOTE, 1, 1, 0, "C4", 0.25);
        note->SetNumber(next_++);
        place(*note, now + 2 + below(6));
        expected_.insert(note->Number());
        break;
      }
      case 2: {
        const auto note = Add(MUSIC_NOTE, 1, 1, 0, "C4", 0.25);
        note->SetNumber(next_++);
        place(*note, std::max(now - 2 - below(6), 0));
        unsure_.insert(note->Number());
        break;
      }
      case 3:
        if (tune_->Count() > 0) {
          const auto tone = tune_->Item(1 + below(static_cast<int>(tune_->Count())));
          if (tone->EventType() == MUSIC_NOTE) unsure_.insert(tone->Number());
          tune_->Remove(QString::number(tone->AbsRef()));
        }
        break;
      case 4:
        tune_->CalcNotesOff();
        break;
      case 5: {
        const auto copies = std::make_shared<Tones>();
        for (const auto& tone : *tune_->Tones()) copies->Add(std::make_shared<Tone>(*tone));
        tune_->SetTones(copies);
        break;
      }
      default:
        break;
    }
    tune_->SortStartTimes();
  }

  std::set<int> expected_, unsure_;
  std::int16_t next_ = 10;
};

TEST_F(EditedAtRandom, EveryNoteThatStaysIsHeardOnceAndNoneTwice) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 chance(seed);
    tune_->Tones()->Clear();
    heard_.clear();
    unsure_.clear();
    expected_.clear();
    next_ = 10;
    for (int i = 0; i < 4 * kNotes; ++i) {
      AddNote(i)->SetNumber(static_cast<std::int16_t>(90 + i));
      expected_.insert(90 + i);
    }
    Prepare();
    platform_.events->on_serve = [&](int) {
      if (tune_->Playing() && std::uniform_int_distribution(0, 400)(chance) == 0 && next_ < 80) Edit(chance);
    };
    PlayFrom();
    platform_.events->on_serve = {};
    for (const int number : expected_)
      if (!unsure_.contains(number)) {
        EXPECT_EQ(heard_.count(number), 1) << number;
      }
    for (const int number : unsure_) EXPECT_LE(heard_.count(number), 1) << number;
  }
}

}  // namespace
}  // namespace zelmar
