// What may happen while a save serves events: the tune is edited, replaced or saved again.
#include "store/saving_fixture.h"

namespace zelmar::testing_support {
namespace {

class InterruptedSave : public SavingTest {
 protected:
  InterruptedSave() {
    class TickingClock : public Clock {
     public:
      double SecondsSinceMidnight() override { return seconds_ += 0.1; }

     private:
      double seconds_ = 36000.0;
    };
    Platform().clock = std::make_shared<TickingClock>();  // every row is due to serve events
    TheMainWindow().SetMyTune(tune);
  }

  // Takes a step once, when that many event rows of the save are committed.
  template <typename Step>
  void When(int rows, Step step) {
    platform.events->on_serve = [this, rows, step, done = false](int) mutable {
      if (done || !database.Connect()->TableNames().contains(QStringLiteral("Mine")) ||
          Events("Mine").size() != rows)
        return;
      done = happened = true;
      const Step taken = step;  // which may put another function in the place of this one
      taken();
    };
  }

  // A save within the one that serves events, whose connection is open.
  void SaveWithin(const std::shared_ptr<Tune>& other, const char* code_name) {
    bool failed = true;
    SaveTune(other, QString::fromUtf8(code_name), failed, SavePortion::kAll);
    EXPECT_FALSE(failed);
  }

  std::shared_ptr<Tune> tune = MakeTune();
  bool happened = false;
};

TEST_F(InterruptedSave, ATuneThatIsReplacedIsSavedToItsEnd) {
  const std::weak_ptr<Tune> watched = tune;
  When(2, [this] { TheMainWindow().SetMyTune(std::make_shared<Tune>()); });
  bool failed = true;
  SaveTune(std::exchange(tune, nullptr), QStringLiteral("Mine"), failed, SavePortion::kAll);
  EXPECT_TRUE(happened);
  EXPECT_FALSE(failed);
  EXPECT_EQ(Events("Mine").size(), 4);
  EXPECT_TRUE(watched.expired());
}

TEST_F(InterruptedSave, EventsThatGoOrComeShiftWhatIsWritten) {
  When(2, [this] {
    while (tune->Count() > 2) tune->Remove(tune->Count());
  });
  Save(tune, "Mine");
  EXPECT_TRUE(happened);
  EXPECT_LT(Events("Mine").size(), 4);
  When(1, [this] { tune->Add(MakeTone(MUSIC_NOTE, 90, 9, 1, 1, "E4")); });
  EXPECT_FALSE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(Events("Mine").last().contains(QStringLiteral("E4")));
}

TEST_F(InterruptedSave, AChangeThatCameTooLateForItsRowCountsAsAChange) {
  When(3, [this] {
    tune->Item(1)->SetVolume(11);
    tune->SetChangedSinceLastSaved(true);
  });
  EXPECT_FALSE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(happened);
  EXPECT_FALSE(Events("Mine").first().contains(QStringLiteral("|11|")));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  Save(tune, "Mine");
  EXPECT_TRUE(Events("Mine").first().contains(QStringLiteral("|11|")));
}

TEST_F(InterruptedSave, AChangeDuringTheSecondSaveIsNoFailureOfTheFirst) {
  When(2, [this] {
    When(3, [this] { tune->SetChangedSinceLastSaved(true); });
    SaveWithin(tune, "Mine");
  });
  EXPECT_FALSE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(Events("Mine").size(), 4);
}

TEST_F(InterruptedSave, ATuneThatIsSortedOrLosesAllItsEventsHarmsNothing) {
  When(2, [this] { tune->SortStartTimes(); });
  Save(tune, "Mine");
  EXPECT_TRUE(happened);
  EXPECT_EQ(Events("Mine").size(), 4);
  happened = false;
  When(1, [this] { tune->SetTones(std::make_shared<Tones>()); });
  EXPECT_FALSE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(happened);
  EXPECT_EQ(Events("Mine").size(), 1);
}

TEST_F(InterruptedSave, ASecondSaveOfTheTuneTakesThePlaceOfTheFirst) {
  When(2, [this] {
    tune->Item(1)->SetVolume(11);
    SaveWithin(tune, "mine");
  });
  Save(tune, "Mine");
  EXPECT_TRUE(happened);
  // Each event stands there once, as the second save found it.
  EXPECT_EQ(Events("Mine").size(), 4);
  EXPECT_TRUE(Events("Mine").first().contains(QStringLiteral("|11|")));
  EXPECT_NE(Load(QStringLiteral("Mine")), nullptr);
}

TEST_F(InterruptedSave, ASecondSaveBeforeTheFirstRowOrBehindTheLastWritesEachEventOnce) {
  for (const int rows : {0, 4}) {
    happened = false;
    When(rows, [this] { SaveWithin(tune, "Mine"); });
    Save(tune, "Mine");
    EXPECT_TRUE(happened);
    EXPECT_EQ(Events("Mine").size(), 4) << rows;
    platform.events->on_serve = nullptr;
    database.Execute(QStringLiteral("drop table [Mine]"));
  }
}

TEST_F(InterruptedSave, AChangeBehindTheLastRowCountsAsAChange) {
  int servings_of_the_end = 0;
  platform.events->on_serve = [&](int) {
    if (!tune->ChangedSinceLastSaved() && servings_of_the_end++ == 0) tune->SetTitle(QStringLiteral("Later"));
  };
  EXPECT_FALSE(SaveFails(tune, "Mine"));
  EXPECT_GT(servings_of_the_end, 0);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(InterruptedSave, ASecondSaveThatFailsLetsTheFirstOneTellSo) {
  When(2, [this] {
    platform.events->on_serve = [this](int) {
      if (database.Connect()->TableNames().contains(QStringLiteral("Mine")) && Events("Mine").size() == 1)
        database.Execute(QStringLiteral("drop table [Mine]"));
    };
    bool failed = false;
    EXPECT_EQ(FailureNumber([&] { SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll); }),
              error_number::kTableNotFound);
  });
  EXPECT_TRUE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(InterruptedSave, ASaveUnderAnotherNameDisturbsNothing) {
  const auto other = MakeTune();
  When(2, [&] { SaveWithin(other, "Else"); });
  Save(tune, "Mine");
  EXPECT_TRUE(happened);
  EXPECT_EQ(Events("Mine").size(), 4);
  EXPECT_EQ(Events("Else").size(), 4);
}

TEST_F(InterruptedSave, NamesThatDifferInALetterOutsideAsciiAreTwoTunes) {
  const auto other = MakeTune();
  platform.events->on_serve = [&, done = false](int) mutable {
    if (done || !database.Connect()->TableNames().contains(QStringLiteral("É")) || Events("É").size() != 2)
      return;
    done = happened = true;
    SaveWithin(other, "é");
  };
  Save(tune, "É");
  EXPECT_TRUE(happened);
  EXPECT_EQ(Events("É").size(), 4);
  EXPECT_EQ(Events("é").size(), 4);
}

TEST_F(InterruptedSave, ARowThatCannotBeWrittenEndsTheSaveAndTellsHowFarItCame) {
  When(3, [this] { database.Execute(QStringLiteral("drop table [Mine]")); });
  const QString told = FailureOfSave(tune, QStringLiteral("Mine"), error_number::kTableNotFound);
  EXPECT_TRUE(told.contains(QStringLiteral(
      "Written to the database before that: catalogue data, words, themes, tracks, the first 3 events. The "
      "notes in the database are incomplete; save again.")))
      << told.toStdString();
  EXPECT_EQ(Select("select * from tblTracks where CodeName = 'Mine'").size(), 2);
}

}  // namespace
}  // namespace zelmar::testing_support
