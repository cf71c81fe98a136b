// Note-offs come and go as a set, all or none.
#include "model/note_ends.h"

#include <gtest/gtest.h>

#include "model/tones_of_a_tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using namespace testing_support;

// Two notes with their ends, and a third one of which a test makes what it wants.
class ATuneWithEnds : public ::testing::Test {
 protected:
  ATuneWithEnds() {
    AddNote(tune_, 1, 1, 1.0);
    AddNote(tune_, 1, 2, 1.0);
    tune_.CalcNotesOff();
    bad_ = AddNote(tune_, 1, 3, 1.0);
    AddNote(tune_, 1, 4, 1.0);
    tune_.SetChangedSinceLastSaved(false);
  }

  template <typename Error>
  void ExpectFailureThatLeavesAllAsItWas() {
    const QString numbers = NumbersOf(*tune_.Tones());
    const std::int32_t last = tune_.LastAbsRef();
    const auto tones = tune_.Tones();
    EXPECT_THROW(tune_.CalcNotesOff(), Error);
    EXPECT_EQ(tune_.Tones(), tones);
    EXPECT_EQ(NumbersOf(*tune_.Tones()), numbers);
    EXPECT_EQ(tune_.LastAbsRef(), last);
    EXPECT_FALSE(tune_.ChangedSinceLastSaved());
    // The ends that were there before are still found by their keys.
    EXPECT_EQ(tune_.Item(QStringLiteral("4"))->EventType(), MUSIC_NOTE_OFF);
  }

  Tune tune_;
  std::shared_ptr<Tone> bad_;
};

TEST_F(ATuneWithEnds, StaysAsItWasWhenAnEndHasNoPlace) {
  bad_->SetDuration(1e12);
  ExpectFailureThatLeavesAllAsItWas<OverflowError>();
  bad_->SetDuration(1.0);
  bad_->SetBar(32767);
  ExpectFailureThatLeavesAllAsItWas<OverflowError>();
}

TEST_F(ATuneWithEnds, StaysAsItWasWhenAMetreIsZero) {
  bad_->SetBeatLength(0);
  ExpectFailureThatLeavesAllAsItWas<DivisionError>();
  bad_->SetBeatLength(4);
  bad_->SetBeatsPerBar(0);
  ExpectFailureThatLeavesAllAsItWas<DivisionError>();
}

TEST_F(ATuneWithEnds, StaysAsItWasWhenTheNumbersRunOut) {
  tune_.SetLastAbsRef(std::numeric_limits<std::int32_t>::max() - 2);
  tune_.SetChangedSinceLastSaved(false);
  ExpectFailureThatLeavesAllAsItWas<OverflowError>();
}

TEST_F(ATuneWithEnds, StaysAsItWasWhenANumberIsInUse) {
  // The running number was set back: the ends would take the number of a note.
  tune_.SetLastAbsRef(3);
  tune_.SetChangedSinceLastSaved(false);
  ExpectFailureThatLeavesAllAsItWas<DuplicateKeyError>();
}

TEST_F(ATuneWithEnds, MayGiveTheirNumbersToNewEnds) {
  tune_.Remove(QString::number(bad_->AbsRef()));
  tune_.Remove(tune_.Count());
  tune_.SetLastAbsRef(3);
  tune_.CalcNotesOff();
  EXPECT_EQ(EventsOf(tune_), QStringLiteral("C4 C4 -C4 -C4"));
  EXPECT_EQ(tune_.LastAbsRef(), 5);
}

TEST_F(ATuneWithEnds, IsCorrectedAfterTheFailure) {
  bad_->SetBeatLength(0);
  EXPECT_THROW(tune_.CalcNotesOff(), DivisionError);
  bad_->SetBeatLength(4);
  tune_.CalcNotesOff();
  tune_.SortStartTimes();
  EXPECT_EQ(EventsOf(tune_), QStringLiteral("C4 -C4 C4 -C4 C4 -C4 C4 -C4"));
}

// --- What an end holds ---

TEST(ANoteEnd, HoldsOfItsNoteThePlaceThePitchAndTheMetreAndNoMore) {
  Tone note;
  note.SetAbsRef(7);
  note.SetBar(3);
  note.SetBeat(2);
  note.SetTick(41);
  note.SetDuration(2.5);
  note.SetNumber(68);
  note.SetEnHarmonic(QStringLiteral("#"));
  note.SetVolume(91);
  note.SetOldVolume(70000);
  note.SetInstrument(23);
  note.SetTrack(5);
  note.SetChannel(16);
  note.SetBeatsPerBar(6);
  note.SetBeatLength(8);
  note.SetSendPatch(true);
  const Tone end = NoteOffOf(note, 99);
  EXPECT_EQ(end.EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(end.AbsRef(), 99);
  // 300 pulses behind its start: five beats of 60.
  EXPECT_EQ(end.Bar(), 4);
  EXPECT_EQ(end.Beat(), 1);
  EXPECT_EQ(end.Tick(), 41);
  EXPECT_EQ(end.Number(), 68);
  EXPECT_EQ(end.Track(), 5);
  EXPECT_EQ(end.Channel(), 16);
  EXPECT_EQ(end.BeatsPerBar(), 6);
  EXPECT_EQ(end.BeatLength(), 8);
  EXPECT_EQ(end.Volume(), 0);
  EXPECT_EQ(end.OldVolume(), 0);
  const Tone fresh;
  EXPECT_EQ(end.Instrument(), fresh.Instrument());
  EXPECT_EQ(end.Duration(), fresh.Duration());
  EXPECT_EQ(end.EnHarmonic(), fresh.EnHarmonic());
  EXPECT_EQ(end.SendPatch(), fresh.SendPatch());
}

TEST(ANoteEnd, HasEveryPitchThatANoteCanHave) {
  for (int number = -12; number <= 140; ++number) {
    Tone note;
    note.SetNumber(static_cast<std::int16_t>(number));
    EXPECT_EQ(NoteOffOf(note, 1).Number(), note.Number()) << number;
  }
}

TEST(ANoteEnd, TellsNobodyWhoListensToItsNote) {
  class Listener : public ToneListener {
   public:
    void PitchRefused(Tone&, PitchRefusal) override { ++refusals; }
    int refusals = 0;
  };
  Listener listener;
  Tone note;
  note.SetListener(&listener);
  NoteOffOf(note, 1).SetPitch(QStringLiteral("none"));
  EXPECT_EQ(listener.refusals, 0);
}

}  // namespace
}  // namespace zelmar
