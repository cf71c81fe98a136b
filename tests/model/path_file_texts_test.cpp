// Settings that outlive a run come back as they were, whatever signs their texts hold.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "model/globals.h"
#include "model/path_file.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

class PathFileTexts : public ::testing::Test {
 protected:
  PathFileTexts() { ResetGlobals(); }
  ~PathFileTexts() override { ResetGlobals(); }

  QString Path() const { return folder_.filePath(QStringLiteral("frmPath.txt")); }
  static QString AnyText(Dice& dice) {
    const QString signs = QStringLiteral("ab \",#'\\/:.;=\u00e9\u97f3|-");
    QString text;
    for (int length = dice(12); length > 0; --length)
      text.append(signs[dice(static_cast<int>(signs.size()))]);
    return text;
  }

  QTemporaryDir folder_;
};

TEST_F(PathFileTexts, ComeBackAsTheyWereWhicheverWindowWroteThem) {
  Dice dice(12);
  for (int i = 0; i < 200; ++i) {
    Global().DatabasePath = AnyText(dice);
    Global().DatabaseChangePerson = AnyText(dice);
    Global().DatabaseChangeComment = AnyText(dice);
    Global().DatabaseChangeDate = QDate(1990 + dice(60), 1 + dice(12), 1 + dice(28));
    Global().DatabaseChangeTime = QTime(dice(24), dice(60), dice(60));
    Global().MidiDeviceNumber = static_cast<std::int16_t>(dice(40000) - 7000);
    Global().MidiDeviceName = AnyText(dice);
    Global().MidiMode = dice(2) ? QStringLiteral("XG") : QStringLiteral("GM2");
    Global().MediaPlayerInstalled = dice(2) == 0;
    const Globals before = Global();
    static const PathFileWriter kWriters[] = {PathFileWriter::kMidiSetup, PathFileWriter::kCreateDatabase,
                                              PathFileWriter::kConnectDatabase, PathFileWriter::kMediaPlayer};
    WritePathFile(Path(), kWriters[dice(4)]);
    ResetGlobals();
    ReadPathFileIntoGlobals(Path());
    EXPECT_EQ(Global().DatabasePath, before.DatabasePath);
    EXPECT_EQ(Global().DatabaseChangePerson, before.DatabaseChangePerson);
    EXPECT_EQ(Global().DatabaseChangeComment, before.DatabaseChangeComment);
    EXPECT_EQ(Global().DatabaseChangeDate, before.DatabaseChangeDate);
    EXPECT_EQ(Global().DatabaseChangeTime, before.DatabaseChangeTime);
    EXPECT_EQ(Global().MidiDeviceNumber, before.MidiDeviceNumber);
    EXPECT_EQ(Global().MidiDeviceName, before.MidiDeviceName);
    EXPECT_EQ(Global().MidiMode, before.MidiMode);
    EXPECT_EQ(Global().MediaPlayerInstalled, before.MediaPlayerInstalled);
  }
}

TEST_F(PathFileTexts, OfAFileThatIsCutShortAreReadOrLeftButNeverMixed) {
  Global().DatabasePath = QStringLiteral("/a/b.mdb");
  Global().MidiDeviceNumber = 3;
  Global().MidiDeviceName = QStringLiteral("Device");
  Global().MidiMode = QStringLiteral("GS");
  Global().MediaPlayerInstalled = true;
  WritePathFile(Path(), PathFileWriter::kMidiSetup);
  QFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray bytes = file.readAll();
  file.close();
  for (qsizetype length = 0; length < bytes.size(); ++length) {
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes.left(length));
    file.close();
    ResetGlobals();
    Global().DatabasePath = QStringLiteral("before");
    try {
      ReadPathFileIntoGlobals(Path());
      EXPECT_EQ(Global().DatabasePath, QStringLiteral("/a/b.mdb")) << length;
    } catch (const Failure&) {
      EXPECT_EQ(Global().DatabasePath, QStringLiteral("before")) << length;
      EXPECT_EQ(Global().MidiMode, QString()) << length;
      EXPECT_EQ(Global().MidiDeviceNumber, 0) << length;
    }
  }
}

TEST_F(PathFileTexts, OfAMissingFileAreAFailureThatLeavesAll) {
  Global().DatabasePath = QStringLiteral("before");
  EXPECT_THROW(ReadPathFileIntoGlobals(folder_.filePath(QStringLiteral("none.txt"))), Failure);
  EXPECT_EQ(Global().DatabasePath, QStringLiteral("before"));
}

}  // namespace
}  // namespace zelmar
