// What a screen reader says of read-outs, pages and progress.
#include <QAccessible>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QTreeView>

#include "midi/widgets/play_bar_fixture.h"
#include "model/globals.h"
#include "shell/dialog_wait.h"
#include "shell/frm_help.h"
#include "shell/frm_progress_bar.h"
#include "shell/help.h"
#include "shell/help_window.h"
#include "shell/page_view.h"
#include "support/application_directory.h"
#include "support/help_window.h"

namespace zelmar {
namespace {

using namespace testing_support;

QString Spoken(QWidget& control) {
  return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Name);
}

struct Named {
  const char* control;
  const char* at_first;
  const char* with_a_tune;
};

TEST_F(PlayBarTest, AScreenReaderSaysWhatEachReadOutMeansAndItsValue) {
  Global().MidiMode = QStringLiteral("GS");
  const Named rows[] = {
      {"lblMyBar", "Bar –", "Bar 1"},
      {"lblMyBeat", "Beat –", "Beat 1"},
      {"lblTotalbars", "Bars in all –", "Bars in all 3"},
      {"lblMyTempo", "Tempo –", "Tempo 120"},
      {"lblTimeSig", "Time signature None yet", "Time signature 4/4"},
  };
  for (const Named& row : rows)
    EXPECT_EQ(Spoken(Find<QWidget>(*bar_, row.control)), QString::fromUtf8(row.at_first));
  auto tune = TuneOfBars(3);
  ASSERT_EQ(tune->BarCount(), 3);
  tune->SetTempo(120);
  Attach(tune);
  for (const Named& row : rows)
    EXPECT_EQ(Spoken(Find<QWidget>(*bar_, row.control)), QString::fromUtf8(row.with_a_tune));
  bar_->WakeUp();
  EXPECT_EQ(Spoken(Find<QWidget>(*bar_, "lblMidiMode")), QStringLiteral("MIDI mode GS"));
  EXPECT_EQ(Spoken(Find<QWidget>(*bar_, "lblTitle")), QStringLiteral("Bach - A Title"));
}

TEST_F(PlayBarTest, WhatAScreenReaderSaysFollowsTheTune) {
  Attach(TuneOfBars(3));
  QStringList heard;
  AtBeat(2, 3, [&] {
    heard = {Spoken(Find<QWidget>(*bar_, "lblMyBar")), Spoken(Find<QWidget>(*bar_, "lblMyBeat"))};
  });
  bar_->Play();
  EXPECT_EQ(heard, (QStringList{QStringLiteral("Bar 2"), QStringLiteral("Beat 3")}));
}

TEST(Reader, APageGoesByItsTitle) {
  const ScriptedPlatform platform;
  const TemporaryApplicationDirectory directory;
  Global().HelpPath = directory.Path() + QStringLiteral("\\Help");
  directory.Write(QStringLiteral("Help/One.htm"),
                  "<html><head><title>First page</title></head><body>a</body></html>");
  directory.Write(QStringLiteral("Help/Two.htm"), "<p>b</p>");
  PageView view;
  EXPECT_EQ(Spoken(view), QStringLiteral("Page"));
  view.ShowPage(directory.Path() + QStringLiteral("/Help/One.htm"));
  EXPECT_EQ(Spoken(view), QStringLiteral("First page"));
  view.ShowPage(directory.Path() + QStringLiteral("/Help/Two.htm"));
  EXPECT_EQ(Spoken(view), QStringLiteral("Page"));
}

TEST(Reader, ProgressAndWaitingGoByTheirNames) {
  const ScriptedPlatform platform;
  FrmProgressBar* const progress = FrmProgressBar::Instance();
  EXPECT_EQ(Spoken(*progress->MyProgressBar()), QStringLiteral("Progress"));
  FrmProgressBar::Unload();
  DialogWait* const wait = DialogWait::Instance();
  auto& marquee = Find<QLabel>(*wait, "txtWait");
  EXPECT_EQ(Spoken(marquee), QStringLiteral("Please wait"));
  marquee.setText(QStringLiteral("ase Wa"));
  EXPECT_EQ(Spoken(marquee), QStringLiteral("Please wait"));
  DialogWait::Unload();
  LetClosedWindowsGo();
}

TEST(Reader, TheListsOfTheHelpBookGoByTheirNames) {
  const ScriptedPlatform platform;
  UseBuiltHelp();
  ShowHelpContext(3100);
  QWidget* const book = TheHelpWindow();
  ASSERT_NE(book, nullptr);
  EXPECT_EQ(Spoken(Find<QTreeView>(*book, "tvwContents")), QStringLiteral("Contents"));
  EXPECT_EQ(Spoken(Find<QListView>(*book, "lstIndex")), QStringLiteral("Index"));
  EXPECT_EQ(Spoken(Find<QLineEdit>(*book, "txtFind")), QStringLiteral("Look for a word of the index"));
  EXPECT_EQ(Spoken(Find<QWidget>(*book, "WebHelp")), QStringLiteral("Opening a tune"));
  CloseHelp();
}

}  // namespace
}  // namespace zelmar
