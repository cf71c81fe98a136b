// The unsaved tune in its file: when it is written, when it goes, and how the next start offers it.
#include <gtest/gtest.h>

#include <QDir>
#include <QLocale>
#include <QSignalSpy>
#include <QTimer>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "platform/paths.h"
#include "shell/recovery_keeper.h"
#include "shell/recovery_offer.h"
#include "shell/saving.h"
#include "store/packed_tune.h"
#include "store/recovery_file.h"
#include "store/tune_loader.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/whole_tune.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Recovery : public ::testing::Test {
 protected:
  Recovery() {
    qputenv("XDG_STATE_HOME", state_.path().toLocal8Bit());
    database_.AddTune(QStringLiteral("ONE"), {QStringLiteral("C4"), QStringLiteral("D4")});
  }
  ~Recovery() override { qunsetenv("XDG_STATE_HOME"); }

  std::shared_ptr<Tune> LoadAndChange() {
    TuneLoader loader;
    QString name = QStringLiteral("ONE");
    loader.DoLoad(name);
    EXPECT_TRUE(loader.LoadedOk());
    auto tune = TheMainWindow().MyTune();
    tune->SetTitle(QStringLiteral("Changed"));
    return tune;
  }

  QStringList Files() const {
    return QDir(database_.Directory())
        .entryList({QStringLiteral("Zelmar-unsaved-*")}, QDir::Files, QDir::Name);
  }
  // The tune in the one file of the application directory.
  std::shared_ptr<Tune> InFile() const {
    const QStringList files = Files().filter(QRegularExpression(QStringLiteral("\\.tune$")));
    if (files.size() != 1) return nullptr;
    return ReadRecoveryFile(database_.Directory() + u'/' + files[0]).tune;
  }
  // Has the keeper look, as its timer does, and waits for the disk.
  void Look() {
    keeper_->Check();
    keeper_->KeepNow();
  }

  // A file of a program that is gone.
  void Leave(Tune& tune, const QString& database_path) const {
    RecoveryFile file({database_.Directory()});
    file.Write(RecoveryContents(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC), database_path,
                                PackedWhole(tune), {}));
  }
  void Leave(Tune& tune) const { Leave(tune, Global().DatabasePath); }
  void Offer(QList<MessageAnswer> answers = {}) {
    platform_.messages->answers = std::move(answers);
    OfferWhatWasLeft(*keeper_);
  }
  const QList<ShownMessage>& Boxes() const { return platform_.messages->shown; }

  ScriptedPlatform platform_;
  SampleDatabase database_;
  QTemporaryDir state_;
  std::unique_ptr<RecoveryKeeper> keeper_ = std::make_unique<RecoveryKeeper>();
};

// --- Keeping ---

TEST_F(Recovery, ATimerLooksOftenEnough) {
  const QTimer& timer = Find<QTimer>(*keeper_, "RecoveryTimer");
  EXPECT_TRUE(timer.isActive());
  EXPECT_FALSE(timer.isSingleShot());
  EXPECT_LE(timer.interval(), 30000);
}

TEST_F(Recovery, TheTimerHasAChangedTuneWritten) {
  const auto tune = LoadAndChange();
  QSignalSpy kept(keeper_.get(), &RecoveryKeeper::Kept);
  Find<QTimer>(*keeper_, "RecoveryTimer").setInterval(1);
  ASSERT_TRUE(kept.wait());
  ASSERT_NE(InFile(), nullptr);
  EXPECT_EQ(Everything(*InFile()), Everything(*tune));
}

TEST_F(Recovery, WithoutUnsavedWorkNoFileIsMade) {
  Look();
  const auto tune = LoadAndChange();
  tune->SetChangedSinceLastSaved(false);
  Look();
  tune->SetMetroVolume(100);
  Look();
  Global().TuneLoadedFlag = false;
  tune->SetTitle(QStringLiteral("x"));
  Look();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, ANewTuneWithoutANoteIsNotKept) {
  TheMainWindow().SetMyTune(std::make_shared<Tune>());
  Global().TuneLoadedFlag = true;
  Look();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, EachLaterChangeIsWrittenToo) {
  const auto tune = LoadAndChange();
  Look();
  tune->Item(1)->SetPitch(QStringLiteral("A4"));
  tune->SetChangedSinceLastSaved(true);
  Look();
  EXPECT_EQ(InFile()->Item(1)->Pitch(), QStringLiteral("A4"));
}

TEST_F(Recovery, AWriteThatMarksNothingIsWrittenToo) {
  const auto tune = LoadAndChange();
  Look();
  tune->SetTempo(77);
  tune->SetDescription(QStringLiteral("words"));
  Look();
  EXPECT_EQ(Everything(*InFile()), Everything(*tune));
}

TEST_F(Recovery, AnUnchangedFileIsNotWrittenAgain) {
  LoadAndChange();
  QSignalSpy kept(keeper_.get(), &RecoveryKeeper::Kept);
  Look();
  EXPECT_EQ(kept.count(), 1);
  Look();
  Look();
  EXPECT_EQ(kept.count(), 1);
}

TEST_F(Recovery, TheFileGoesWhenTheTuneIsSaved) {
  LoadAndChange();
  Look();
  ASSERT_NE(InFile(), nullptr);
  EXPECT_TRUE(SaveWholeTune(QStringLiteral("Saving")));
  keeper_.reset();  // which waits for the disk
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, TheFileGoesWhenAnotherTuneTakesThePlace) {
  LoadAndChange();
  Look();
  TheMainWindow().SetMyTune(nullptr);
  keeper_->TuneReplaced();
  keeper_.reset();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, TheFileOfTheTuneThatIsStillThereStays) {
  LoadAndChange();
  Look();
  keeper_->TuneReplaced();
  keeper_.reset();
  EXPECT_NE(InFile(), nullptr);
}

TEST_F(Recovery, AProgramThatClosesLeavesTheFileToTheAnswer) {
  const auto tune = LoadAndChange();
  Look();
  Global().MainFormLoaded = true;
  tune->SetTitle(QStringLiteral("Later"));
  keeper_->Check();
  TheMainWindow().SetMyTune(nullptr);
  keeper_->TuneReplaced();
  keeper_.reset();
  EXPECT_EQ(InFile()->Title(), QStringLiteral("Changed"));
}

TEST_F(Recovery, KeepNowWritesAtOnceAndAlsoWhileTheProgramCloses) {
  const auto tune = LoadAndChange();
  Global().MainFormLoaded = true;
  EXPECT_TRUE(keeper_->KeepNow());
  EXPECT_EQ(Everything(*InFile()), Everything(*tune));
  tune->SetChangedSinceLastSaved(false);
  EXPECT_TRUE(keeper_->KeepNow());
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, AFolderThatTakesNoFileIsReplacedByTheStateDirectory) {
  QFile wall(database_.Directory() + QStringLiteral("/wall"));
  ASSERT_TRUE(wall.open(QIODevice::WriteOnly));
  SetApplicationDirectory(wall.fileName());
  LoadAndChange();
  EXPECT_TRUE(keeper_->KeepNow());
  SetApplicationDirectory(database_.Directory());
  EXPECT_TRUE(Files().isEmpty());
  EXPECT_EQ(LeftRecoveries({state_.filePath(QStringLiteral("zelmar"))}).size(), 0U);  // held
  keeper_.reset();
  EXPECT_EQ(LeftRecoveries({state_.filePath(QStringLiteral("zelmar"))}).size(), 1U);
}

TEST_F(Recovery, WhereNothingTakesItThatIsSaidOnce) {
  QFile wall(database_.Directory() + QStringLiteral("/wall"));
  ASSERT_TRUE(wall.open(QIODevice::WriteOnly));
  SetApplicationDirectory(wall.fileName());
  qputenv("XDG_STATE_HOME", wall.fileName().toLocal8Bit());
  const auto tune = LoadAndChange();
  EXPECT_FALSE(keeper_->KeepNow());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Unsaved tune not kept"));
  EXPECT_TRUE(Boxes()[0].text.contains(wall.fileName()));
  for (int look = 0; look < 5; ++look) {
    tune->SetTitle(QString::number(look));
    EXPECT_FALSE(keeper_->KeepNow());
  }
  EXPECT_EQ(Boxes().size(), 1);
  // Once there is room it is kept, without a word.
  ASSERT_TRUE(wall.remove());
  EXPECT_TRUE(keeper_->KeepNow());
  EXPECT_EQ(Boxes().size(), 1);
}

// --- Offering ---

TEST_F(Recovery, WithoutAFileNothingIsAsked) {
  Offer();
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Recovery, AFileIsOfferedWithItsTitleAndTime) {
  Leave(*TuneWithEverything());
  Offer({MessageAnswer::kCancel});
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNoCancel);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kYes);
  EXPECT_TRUE(Boxes()[0].text.contains(TuneWithEverything()->Title()));
  const QDateTime kept_at(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC);
  EXPECT_TRUE(Boxes()[0].text.contains(QLocale().toString(kept_at.toLocalTime(), QLocale::ShortFormat)));
  EXPECT_FALSE(Boxes()[0].text.contains(QStringLiteral("another database")));
}

TEST_F(Recovery, YesBringsTheTuneBackUnsavedUnderItsName) {
  Leave(*TuneWithEverything());
  Offer({MessageAnswer::kYes});
  const auto tune = TheMainWindow().MyTune();
  ASSERT_NE(tune, nullptr);
  EXPECT_TRUE(Global().TuneLoadedFlag);
  EXPECT_EQ(Everything(*tune), Everything(*TuneWithEverything()));
  EXPECT_EQ(tune->FileName(), QStringLiteral("Ode"));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  // By now it is this program's own, and there is one file of it.
  EXPECT_EQ(Everything(*InFile()), Everything(*tune));
  EXPECT_TRUE(LeftRecoveries(RecoveryFolders()).empty());
  keeper_.reset();
  EXPECT_EQ(LeftRecoveries(RecoveryFolders()).size(), 1U);
}

TEST_F(Recovery, WhatIsBroughtBackCanBeSaved) {
  Leave(*TuneWithEverything());
  Offer({MessageAnswer::kYes});
  const auto tune = TheMainWindow().MyTune();
  tune->SetTrackFilterOn(false);
  EXPECT_TRUE(SaveWholeTune(QStringLiteral("Saving")));
  EXPECT_EQ(database_.Column(QStringLiteral("select Composer from tblMelodies where CodeName = 'Ode'")),
            QStringList{QStringLiteral("Beethoven")});
  keeper_.reset();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, NoRemovesTheFile) {
  Leave(*TuneWithEverything());
  Offer({MessageAnswer::kNo});
  EXPECT_EQ(TheMainWindow().MyTune(), nullptr);
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(Recovery, CancelAsksAgainAtTheNextStart) {
  Leave(*TuneWithEverything());
  Offer({MessageAnswer::kCancel});
  EXPECT_EQ(TheMainWindow().MyTune(), nullptr);
  Offer({MessageAnswer::kCancel});
  EXPECT_EQ(Boxes().size(), 2);
}

TEST_F(Recovery, AProgramThatClosesWhileTheBoxStandsRemovesNothing) {
  Leave(*TuneWithEverything());
  platform_.messages->on_show = [] { Global().MainFormLoaded = true; };
  Offer({MessageAnswer::kNo});
  EXPECT_EQ(Files().size(), 1);
}

TEST_F(Recovery, AnotherDatabaseIsToldOf) {
  Leave(*TuneWithEverything(), QStringLiteral("/else/Other.mdb"));
  Offer({MessageAnswer::kCancel});
  EXPECT_TRUE(
      Boxes()[0].text.endsWith(QStringLiteral("It was worked on with another database: /else/Other.mdb.")));
}

TEST_F(Recovery, OneIsBroughtBackAndTheOthersWait) {
  for (const char* title : {"First", "Second", "Third"}) {
    const auto tune = TuneWithEverything();
    tune->SetTitle(QString::fromLatin1(title));
    Leave(*tune);
  }
  Offer({MessageAnswer::kNo, MessageAnswer::kYes});
  EXPECT_EQ(Boxes().size(), 2);
  keeper_.reset();
  EXPECT_EQ(LeftRecoveries(RecoveryFolders()).size(), 2U);
}

TEST_F(Recovery, AFileThatCannotBeReadIsToldOnceAndSetAside) {
  Leave(*TuneWithEverything());
  const QString path = database_.Directory() + u'/' + Files()[0];
  QFile file(path);
  ASSERT_TRUE(file.resize(file.size() - 1));
  Offer();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Unsaved tune not brought back"));
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("it is damaged")));
  EXPECT_TRUE(Boxes()[0].text.contains(path + QStringLiteral(".set-aside")));
  EXPECT_TRUE(QFile::exists(path + QStringLiteral(".set-aside")));
  Offer();
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(Recovery, ATuneWithChangesIsAskedAboutBeforeTheOldOneComesBack) {
  Leave(*TuneWithEverything());
  const auto tune = LoadAndChange();
  Offer({MessageAnswer::kYes, MessageAnswer::kCancel});
  EXPECT_EQ(TheMainWindow().MyTune(), tune);
  EXPECT_EQ(LeftRecoveries(RecoveryFolders()).size(), 1U);
}

TEST_F(Recovery, WhatCannotBeKeptAnewStaysInTheOldFile) {
  Leave(*TuneWithEverything());
  const QString name = Files()[0];
  QFile wall(database_.Directory() + QStringLiteral("/wall"));
  ASSERT_TRUE(wall.open(QIODevice::WriteOnly));
  platform_.messages->on_show = [&] {
    SetApplicationDirectory(wall.fileName());
    qputenv("XDG_STATE_HOME", wall.fileName().toLocal8Bit());
  };
  Offer({MessageAnswer::kYes});
  ASSERT_NE(TheMainWindow().MyTune(), nullptr);
  SetApplicationDirectory(database_.Directory());
  EXPECT_EQ(Files(), QStringList{name});
}

}  // namespace
}  // namespace zelmar
