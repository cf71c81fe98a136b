// Note-offs come and go as a set, all or none.
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

}  // namespace
}  // namespace zelmar
