// Media player support: one tick, kept or left.
#include "app/options/frm_options_media_player.h"

#include "app/option_windows_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class MediaPlayerSupport : public OptionWindowTest {
 protected:
  MediaPlayerSupport() { Start(); }
  FrmOptionsMediaPlayer& Open() { return Opened<FrmOptionsMediaPlayer>("mnuOptionsMediaPlayer"); }
  static QCheckBox& Box(const QObject& window) { return Find<QCheckBox>(window, "chkMediaPlayerInstalled"); }
};

TEST_F(MediaPlayerSupport, HasItsWordsOneByOne) {
  const auto& window = Open();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Windows Media player support"));
  EXPECT_EQ(Words(Box(window).text()),
            QStringLiteral("Windows media Player 9.0 (or above) and Microsoft DirectX 0.0 installed?"));
  EXPECT_EQ(Words(Find<QPushButton>(window, "cmdSave").text()), QStringLiteral("OK (Save)"));
  EXPECT_EQ(Words(Find<QPushButton>(window, "cmdBack").text()), QStringLiteral("Back  (Cancel)"));
}

TEST_F(MediaPlayerSupport, ShowsWhatIsSet) {
  for (const bool set : {false, true}) {
    Global().MediaPlayerInstalled = set;
    auto& window = Open();
    EXPECT_EQ(Box(window).isChecked(), set);
    window.reject();
    LetClosedWindowsGo();
  }
}

TEST_F(MediaPlayerSupport, ATickChangesNothingBeforeSave) {
  Box(Open()).click();
  EXPECT_FALSE(Global().MediaPlayerInstalled);
}

TEST_F(MediaPlayerSupport, SaveKeepsTheTickAndRewritesThePathFile) {
  auto& window = Open();
  Box(window).click();
  Click(window, "cmdSave");
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_FALSE(IsOpen("frmOptionsMediaPlayer"));
  const auto records = Records();
  ASSERT_EQ(records.size(), 4);
  EXPECT_EQ(records[0], '"' + database_.Path().toUtf8() + "\",#2026-03-04#,#10:20:30#,\"Ann\",\"First one\"");
  EXPECT_EQ(records[1], "\"Midi output device\",0,\"Recorder\"");
  EXPECT_TRUE(records[2].endsWith(",#TRUE#"));
  EXPECT_EQ(records[3], "\"Midi mode\",\"GS\"");
  ResetGlobals();
  ReadPathFileIntoGlobals(PathFile());
  EXPECT_TRUE(Global().MediaPlayerInstalled);
}

TEST_F(MediaPlayerSupport, BackAndEscapeCloseWithoutSaving) {
  const QByteArray before = BytesOf(PathFile());
  for (const bool by_key : {false, true}) {
    auto& window = Open();
    Box(window).click();
    if (by_key)
      QTest::keyClick(&window, Qt::Key_Escape);
    else
      Click(window, "cmdBack");
    EXPECT_FALSE(IsOpen("frmOptionsMediaPlayer"));
    LetClosedWindowsGo();
  }
  EXPECT_FALSE(Global().MediaPlayerInstalled);
  EXPECT_EQ(BytesOf(PathFile()), before);
}

TEST_F(MediaPlayerSupport, ASettingsFileThatCannotBeWrittenIsTold) {
  auto& window = Open();
  Box(window).click();
  QFile::remove(PathFile());
  QDir().mkdir(PathFile());
  Click(window, "cmdSave");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Settings not saved"));
  EXPECT_TRUE(Global().MediaPlayerInstalled);
}

}  // namespace
}  // namespace zelmar
