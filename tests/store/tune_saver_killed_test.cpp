// A program that is killed in the middle of a save leaves a database that opens and holds what was committed.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "store/saving_fixture.h"

namespace zelmar::testing_support {
namespace {

constexpr char kPathVariable[] = "ZELMAR_KILLED_SAVE_DATABASE";
constexpr int kEvents = 1500;
constexpr int kKills = 40;

// All that is stored of the tune differs from one version to the other.
std::shared_ptr<Tune> Version(int version) {
  auto tune = MakeTune();
  tune->SetTitle(QStringLiteral("Version %1").arg(version));
  tune->SetTones(std::make_shared<Tones>());
  for (std::int32_t i = 1; i <= kEvents; ++i) {
    auto tone = MakeTone(MUSIC_NOTE, i, 1 + i / 16, 1 + i % 3, 1, "C4");
    tone->SetVolume(static_cast<std::uint8_t>(60 + version));
    tune->Add(tone);
  }
  tune->SetWords(std::make_shared<Words>());
  tune->SetThemes(std::make_shared<Themes>());
  for (std::int16_t i = 1; i <= 20; ++i) {
    tune->Words()->Add(0, 1, i, QStringLiteral("word %1 of %2").arg(i).arg(version));
    tune->Themes()->Add(1, i, i, QStringLiteral("theme of %1").arg(version), 1, i);
    tune->Tracks()->Add(QStringLiteral("track of %1").arg(version), static_cast<std::uint8_t>(10 + i), 1, 0,
                        false, 0, 0);
  }
  return tune;
}

class KilledSave : public SavingTest {
 protected:
  // The rows of each part in the order in which a save writes them.
  std::vector<QStringList> Parts() const {
    return {Select("select * from tblMelodies where CodeName = 'Mine'"),
            Select("select * from tblWords where FileName = 'Mine'"),
            Select("select * from tblThemes where CodeName = 'Mine'"),
            Select("select * from tblTracks where CodeName = 'Mine'"), Events("Mine")};
  }

  void CopyDatabase(const QString& from, const QString& to) const {
    for (const char* tail : {"", "-wal", "-shm"}) QFile::remove(to + QString::fromLatin1(tail));
    ASSERT_TRUE(QFile::copy(from, to));
  }

  // Starts this program again to save version 2, and waits until it is about to begin.
  void Start(QProcess& process) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(kPathVariable), database.Path());
    environment.insert(QStringLiteral("TMPDIR"), desk.path());
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=KilledSave.SavesItsTune")});
    QByteArray output;
    while (!output.contains("ready")) {
      ASSERT_TRUE(process.waitForReadyRead());
      output += process.readAll();
    }
  }

  QTemporaryDir desk;  // for the samples of those that are killed before they can tidy up
};

// By itself it saves into its own sample; started by the test below, into that one's.
TEST_F(KilledSave, SavesItsTune) {
  const QString path = qEnvironmentVariable(kPathVariable, database.Path());
  const auto tune = Version(2);
  Global().DatabasePath = path;
  std::printf("ready\n");
  std::fflush(stdout);
  Save(tune, "Mine");
}

TEST_F(KilledSave, LeavesAPrefixOfItsRowsAtWhateverMomentItEnds) {
  const QString pristine = database.Directory() + QStringLiteral("/pristine.mdb");
  Save(Version(2), "Mine");
  const auto after = Parts();
  Save(Version(1), "Mine");
  const auto before = Parts();
  const QStringList other = OtherTune();
  ASSERT_FALSE(QFile::exists(database.Path() + QStringLiteral("-wal")));
  ASSERT_TRUE(QFile::copy(database.Path(), pristine));

  QElapsedTimer timer;
  QProcess whole;
  Start(whole);
  timer.start();
  ASSERT_TRUE(whole.waitForFinished());
  double duration = static_cast<double>(timer.nsecsElapsed()) * 1e-3;  // microseconds
  ASSERT_EQ(Parts(), after);

  int inside = 0;
  // Other programs make one save last longer than the next: more are killed when too few were in the middle.
  for (int kill = 0; kill < kKills || (kill < 5 * kKills && inside <= kKills / 4); ++kill) {
    CopyDatabase(pristine, database.Path());
    QProcess process;
    Start(process);
    const double moment = static_cast<double>(kill % kKills) / kKills;
    QThread::usleep(static_cast<unsigned long>(duration * moment));
    process.kill();
    ASSERT_TRUE(process.waitForFinished());

    EXPECT_EQ(database.Column(QStringLiteral("select * from pragma_integrity_check")),
              QStringList{QStringLiteral("ok")});
    EXPECT_EQ(OtherTune(), other);
    const auto parts = Parts();
    bool reached_the_end = true;  // of every part up to here
    for (std::size_t part = 0; part < parts.size(); ++part) {
      const bool begun = parts[part] != before[part];
      EXPECT_TRUE(!begun || parts[part] == after[part].mid(0, parts[part].size()))
          << "kill " << kill << ", part " << part;
      EXPECT_TRUE(!begun || reached_the_end) << "kill " << kill << ", part " << part;
      inside += begun && parts[part] != after[part];
      reached_the_end = reached_the_end && parts[part] == after[part];
    }
    EXPECT_EQ(parts[0].size(), 1);
    if (reached_the_end && moment < 0.5) duration *= 0.7;
    if (parts == before && moment > 0.5) duration *= 1.4;
    // What was left behind is no obstacle.
    if (kill % 10 == 0) {
      Save(Version(2), "Mine");
      EXPECT_EQ(Parts(), after);
    }
  }
  EXPECT_GT(inside, kKills / 4);
}

}  // namespace
}  // namespace zelmar::testing_support
