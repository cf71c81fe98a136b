// A list of tunes that asks for the one that is chosen.
#include "shell/tune_list.h"

#include <QHeaderView>
#include <QSignalSpy>

#include "platform/failure.h"
#include "store/connection.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class TuneLists : public ::testing::Test {
 protected:
  TuneLists() {
    for (const char* name : {"Air", "Brook"}) {
      SampleTune tune;
      tune.code_name = QString::fromUtf8(name);
      tune.title = QStringLiteral("The ") + tune.code_name;
      database_.AddTune(tune);
    }
    list_.resize(700, 200);
    list_.show();
  }

  void Load(const char* condition = "1 = 1") {
    list_.Load(database_.Connect(),
               QStringLiteral("SELECT title, Composer, Length, Tempo, codename FROM tblmelodies "
                              "WHERE %1 ORDER BY title")
                   .arg(QString::fromUtf8(condition)));
  }
  QModelIndex Cell(int row, int column) const { return list_.model()->index(row, column); }
  QImage Picture() { return list_.grab().toImage(); }

  ScriptedPlatform platform_;
  SampleDatabase database_;
  TuneList list_{QStringLiteral("gridMelodies")};
  QSignalSpy wanted_{&list_, &TuneList::TuneWanted};
};

TEST_F(TuneLists, AClickOnAnyCellAsksForItsTune) {
  Load();
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, list_.visualRect(Cell(1, 2)).center());
  ASSERT_EQ(wanted_.size(), 1);
  EXPECT_EQ(wanted_[0], QVariantList({QStringLiteral("Brook"), QStringLiteral("The Brook")}));
}

TEST_F(TuneLists, EnterAsksForTheCurrentTuneAndTheArrowsForNone) {
  Load();
  list_.setCurrentIndex(Cell(0, 0));
  QTest::keyClick(&list_, Qt::Key_Down);
  EXPECT_EQ(wanted_.size(), 0);
  QTest::keyClick(&list_, Qt::Key_Return);
  QTest::keyClick(&list_, Qt::Key_Enter);
  ASSERT_EQ(wanted_.size(), 2);
  EXPECT_EQ(wanted_[1][0].toString(), QStringLiteral("Brook"));
}

TEST_F(TuneLists, NothingIsAskedForWhereThereIsNoTune) {
  Load("title = 'none'");
  QTest::keyClick(&list_, Qt::Key_Return);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  Load();
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, QPoint(5, list_.viewport()->height() - 2));
  EXPECT_EQ(wanted_.size(), 0);
}

TEST_F(TuneLists, WhoAnswersMayEndTheList) {
  auto* mortal = new TuneList(QStringLiteral("gridMelodies"));
  mortal->Load(database_.Connect(), QStringLiteral("SELECT title, codename FROM tblMelodies"));
  QObject::connect(mortal, &TuneList::TuneWanted, mortal, &QObject::deleteLater);
  mortal->setCurrentIndex(mortal->model()->index(0, 0));
  QTest::keyClick(mortal, Qt::Key_Return);
  const QPointer<TuneList> gone(mortal);
  LetClosedWindowsGo();
  EXPECT_EQ(gone, nullptr);
}

TEST_F(TuneLists, TheTuneThatPlaysLooksDifferentAsLongAsItPlays) {
  Load();
  const QImage before = Picture();
  list_.SetPlaying(QStringLiteral("BROOK"));
  EXPECT_NE(Picture(), before);
  list_.SetPlaying({});
  EXPECT_EQ(Picture(), before);
}

TEST_F(TuneLists, AnEmptyListSaysWhatIsMissing) {
  Load("title = 'none'");
  const QImage blank = Picture();
  list_.SetEmptyText(QStringLiteral("No tunes of this composer."));
  EXPECT_NE(Picture(), blank);
  Load();
  const QImage with_tunes = Picture();
  list_.SetEmptyText({});
  EXPECT_EQ(Picture(), with_tunes) << "nothing stands behind rows";
}

TEST_F(TuneLists, TheColumnsShareTheWidthAndTheTitleHasTheMost) {
  Load();
  const auto whole = [this] { return list_.horizontalHeader()->length(); };
  EXPECT_LE(whole(), list_.viewport()->width());
  EXPECT_GT(whole(), list_.viewport()->width() - 10);
  for (int column = 1; column < 4; ++column) EXPECT_GT(list_.columnWidth(0), list_.columnWidth(column));
  list_.resize(900, 200);
  EXPECT_GT(whole(), 880);
}

TEST_F(TuneLists, AStatementThatFailsIsAFailureOfItsCaller) {
  Load();
  EXPECT_THROW(list_.Load(database_.Connect(), QStringLiteral("SELECT codename FROM nothing")), Failure);
  EXPECT_EQ(list_.Tunes().rowCount(), 2);
}

TEST_F(TuneLists, TabLeavesTheList) {
  EXPECT_FALSE(list_.tabKeyNavigation());
  EXPECT_FALSE(list_.accessibleName().isEmpty());
}

}  // namespace
}  // namespace zelmar
