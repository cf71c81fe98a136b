// The log of the database stays short during a save, whatever is saved.
#include <QDir>

#include "store/saving_fixture.h"
#include "support/media.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

constexpr qint64 kMegabyte = 1024 * 1024;

class LogOfASave : public SavingTest {
 protected:
  static std::shared_ptr<Tune> LongTune(std::int32_t events) {
    auto tune = MakeTune();
    for (std::int32_t i = 20; i < events; ++i) tune->Add(MakeTone(MUSIC_NOTE, i, 4 + i / 16, 1, 1, "C4"));
    return tune;
  }

  // The bytes of the database and of all that the engine keeps beside it.
  qint64 Taken() const {
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(database.Directory()).entryInfoList(QDir::Files)) bytes += file.size();
    return bytes;
  }

  // The most that a save takes beyond what it leaves.
  qint64 TakenBeyond(const std::shared_ptr<Tune>& tune) {
    qint64 most = 0;
    platform.events->on_serve = [&](int) { most = std::max(most, Taken()); };
    Save(tune, "Mine");
    platform.events->on_serve = nullptr;
    return most - Taken();
  }
};

TEST_F(LogOfASave, OfManyEventsStaysBelowAMegabyte) {
  const auto tune = LongTune(5000);
  EXPECT_LT(TakenBeyond(tune), kMegabyte);
  EXPECT_LT(TakenBeyond(tune), kMegabyte) << "over the older one";
}

TEST_F(LogOfASave, OfManyWordsAndThemesStaysBelowAMegabyte) {
  const auto tune = MakeTune();
  for (std::int16_t i = 1; i <= 3000; ++i) tune->Words()->Add(0, 1, i, QString(100, u'w'));
  for (std::int16_t i = 1; i <= 200; ++i) tune->Themes()->Add(1, i, i, QString(4000, u't'), 1, i);
  EXPECT_LT(TakenBeyond(tune), kMegabyte);
}

TEST_F(LogOfASave, IsEmptiedByItsPagesWhateverTheirSize) {
  for (const int size : {512, 65536}) {
    {
      OtherProgram program(database.Path());
      program.Run("PRAGMA journal_mode=DELETE");
      program.Run(QStringLiteral("PRAGMA page_size=%1").arg(size));
      program.Run("VACUUM");
    }
    EXPECT_LT(TakenBeyond(LongTune(2000)), kMegabyte + 2 * size) << size;
  }
}

// A reader keeps the log from beginning anew; the save goes on, and does not try again with every row.
TEST_F(LogOfASave, AReaderElsewhereIsNoObstacle) {
  const auto reader = database.Connect();
  database.AddRow(QStringLiteral("tblFamily"), {QStringLiteral("a")});
  database.AddRow(QStringLiteral("tblFamily"), {QStringLiteral("b")});
  const auto held = Recordset::OpenTable(reader, QStringLiteral("tblFamily"), CursorType::kForwardOnly);
  bool failed = true;
  SaveTune(LongTune(1500), QStringLiteral("Mine"), failed, QStringLiteral("ALL"));
  EXPECT_FALSE(failed);
  EXPECT_EQ(held->Text(0), QStringLiteral("a"));
  EXPECT_GT(Events("Mine").size(), 1400);
}

// The disk has room for the tune itself and one megabyte. Where no such disk can be mounted, the folder is
// watched for taking more.
TEST_F(LogOfASave, ATuneOfAHundredThousandEventsNeedsAMegabyteBesideItself) {
  const auto tune = LongTune(100000);
  const QString small = database.Directory() + QStringLiteral("/disk");
  ASSERT_TRUE(QDir().mkpath(small));
  const QString path = small + QStringLiteral("/Small.mdb");
  const QByteArray before = BytesOf(database.Path());
  const qint64 beyond = TakenBeyond(tune);
  EXPECT_LT(beyond, kMegabyte);
  const qint64 after = QFileInfo(database.Path()).size();
  ASSERT_GT(after, 2 * kMegabyte);

  const SmallMedium disk(small, after + kMegabyte);
  if (!disk.Mounted()) return;
  QFile copy(path);
  ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
  copy.write(before);
  copy.close();
  Global().DatabasePath = path;
  const auto again = LongTune(100000);
  bool failed = true;
  SaveTune(again, QStringLiteral("Mine"), failed, QStringLiteral("ALL"));
  EXPECT_FALSE(failed);
  EXPECT_EQ(Connection::Open(path)->TableNames().last(), QStringLiteral("Mine"));
  EXPECT_EQ(QFileInfo(path).size(), after);
}

}  // namespace
}  // namespace zelmar::testing_support
