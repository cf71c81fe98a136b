// The log of the database stays short during a save on a disk with little room, whatever is saved.
#include <QDir>

#include "platform/disk_room.h"
#include "store/saving_fixture.h"
#include "support/media.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

constexpr qint64 kMegabyte = 1024 * 1024;

class LogOfASave : public SavingTest {
 protected:
  LogOfASave() {
    SetRoomOnDisk([this](const QString&) { return room; });
  }
  ~LogOfASave() override { SetRoomOnDisk({}); }

  static std::shared_ptr<Tune> LongTune(std::int32_t events) {
    auto tune = MakeTune();
    for (std::int32_t i = 20; i < events; ++i) tune->Add(MakeTone(MUSIC_NOTE, i, 4 + i / 16, 1, 1, "C4"));
    return tune;
  }

  // The bytes of the database and of all that the engine keeps beside it.
  static qint64 Taken(const QString& folder) {
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) bytes += file.size();
    return bytes;
  }

  // The most that a save takes beyond what it leaves.
  qint64 TakenBeyond(const std::shared_ptr<Tune>& tune) {
    qint64 most = 0;
    platform.events->on_serve = [&](int) { most = std::max(most, Taken(database.Directory())); };
    Save(tune, "Mine");
    platform.events->on_serve = nullptr;
    return most - Taken(database.Directory());
  }

  std::uint64_t room = 10 * kMegabyte;
};

// Each time that the log is emptied the disk is waited for.
TEST_F(LogOfASave, OnADiskWithPlentyOfRoomIsEmptiedSeldom) {
  room = 1000 * kMegabyte;
  const auto tune = LongTune(2500);
  EXPECT_GT(TakenBeyond(tune), 2 * kMegabyte);
  EXPECT_LT(TakenBeyond(tune), 4 * kMegabyte);
}

TEST_F(LogOfASave, GivesRoomBackOnceTheDiskFillsUp) {
  room = 1000 * kMegabyte;
  const auto tune = LongTune(5000);
  qint64 longest = 0, last = 0;
  platform.events->on_serve = [&](int) {
    const qint64 log = QFileInfo(database.Path() + QStringLiteral("-wal")).size();
    if (log > 2 * kMegabyte) room = 10 * kMegabyte;
    longest = std::max(longest, log);
    if (log > 0) last = log;
  };
  Save(tune, "Mine");
  EXPECT_GT(longest, 2 * kMegabyte);
  EXPECT_LT(longest, 4 * kMegabyte);
  EXPECT_LT(last, kMegabyte);
}

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
  SaveTune(LongTune(1500), QStringLiteral("Mine"), failed, SavePortion::kAll);
  EXPECT_FALSE(failed);
  EXPECT_EQ(held->Text(0), QStringLiteral("a"));
  EXPECT_GT(Events("Mine").size(), 1400);
}

// The disk has room for the tune itself and one megabyte. Where no such disk can be mounted, the folder is
// watched for taking more.
TEST_F(LogOfASave, ATuneOfAHundredThousandEventsNeedsAMegabyteBesideItself) {
  constexpr std::int32_t kEvents = 100000;
  const QString folder = database.Directory() + QStringLiteral("/disk");
  ASSERT_TRUE(QDir().mkpath(folder));
  const QString path = folder + QStringLiteral("/Small.mdb");
  const QByteArray empty = BytesOf(database.Path());
  const auto save = [&](const std::shared_ptr<Tune>& tune) {
    QFile copy(path);
    if (!copy.open(QIODevice::WriteOnly) || copy.write(empty) != empty.size())
      throw std::runtime_error("no copy");
    copy.close();
    Global().DatabasePath = path;
    bool failed = true;
    SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
    EXPECT_FALSE(failed);
    EXPECT_FALSE(tune->ChangedSinceLastSaved());
    return QFileInfo(path).size();
  };
  qint64 after = 0;
  {
    const SmallMedium roomy(folder, 100 * kMegabyte);
    qint64 most = 0;
    platform.events->on_serve = [&](int) { most = std::max(most, Taken(folder)); };
    after = save(LongTune(kEvents));
    platform.events->on_serve = nullptr;
    EXPECT_GT(after, 2 * kMegabyte);
    EXPECT_LT(most - after, kMegabyte);
  }
  SetRoomOnDisk({});
  const SmallMedium disk(folder, after + kMegabyte);
  if (disk.Mounted()) {
    EXPECT_EQ(save(LongTune(kEvents)), after);
  }
}

}  // namespace
}  // namespace zelmar::testing_support
