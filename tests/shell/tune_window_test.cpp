// What every window with a tune and a transport bar does of itself.
#include "shell/tune_window.h"

#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

// A page with one button; it keeps what it was shown, and may close itself over it.
class Sheet : public TuneWindow {
 public:
  Sheet() : TuneWindow(QStringLiteral("frmSheet")) {
    auto* page = new QVBoxLayout;
    auto* button = new QPushButton(this);
    button->setObjectName(QStringLiteral("cmdOnPage"));
    page->addWidget(button);
    SetPage(page);
    setWindowTitle(Sheet::CaptionFor(nullptr));
  }
  using TuneWindow::FetchTune;

  QList<std::shared_ptr<Tune>> shown;
  bool closes = false;

 protected:
  QString CaptionFor(const Tune* tune) const override {
    return tune == nullptr ? QStringLiteral("Sheet") : QStringLiteral("Sheet of ") + tune->Title();
  }
  void ShowTune(const std::shared_ptr<Tune>& tune) override {
    shown.append(tune);
    if (closes) delete this;
  }
};

class ATuneWindow : public ::testing::Test {
 protected:
  ATuneWindow() { window_->show(); }
  ~ATuneWindow() override { delete window_; }

  static std::shared_ptr<Tune> PutIntoMemory() {
    auto tune = TuneOfBars(3);
    TheMainWindow().SetMyTune(tune);
    Global().TuneLoadedFlag = true;
    return tune;
  }
  PlayBar& Bar() { return *window_->MyPlayBar(); }

  ScriptedPlatform platform_;
  QPointer<Sheet> window_ = new Sheet;
};

TEST_F(ATuneWindow, HasItsBarBelowThePageAndBehindItInTheWayOfTheKeyboard) {
  QCoreApplication::processEvents();
  const auto& button = Find<QPushButton>(*window_, "cmdOnPage");
  EXPECT_GT(Bar().y(), button.geometry().bottom());
  EXPECT_EQ(Bar().width(), window_->width());
  QList<QString> way;
  for (const QWidget* next = window_->nextInFocusChain(); next != window_; next = next->nextInFocusChain())
    way.append(next->objectName());
  EXPECT_LT(way.indexOf(QStringLiteral("cmdOnPage")), way.indexOf(QStringLiteral("PlaySlider")));
}

TEST_F(ATuneWindow, WithoutATuneOnlyItsBarIsMadeReady) {
  Global().MidiDeviceNumber = 4;
  window_->Activate();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Sheet"));
  EXPECT_TRUE(window_->shown.isEmpty());
  EXPECT_EQ(Bar().Tune(), nullptr);
  EXPECT_EQ(Bar().FormName(), QStringLiteral("frmSheet"));
  EXPECT_EQ(Bar().DeviceID(), 4);
  EXPECT_TRUE(Bar().NewTuneButtonStatus());
}

TEST_F(ATuneWindow, ComingToTheFrontShowsTheTuneInMemoryEverywhere) {
  const auto tune = PutIntoMemory();
  window_->Activate();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Sheet of A Title"));
  EXPECT_EQ(window_->shown, QList{tune});
  EXPECT_EQ(Bar().Tune(), tune);
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(ATuneWindow, ATuneThatPlaysIsShownAsPlaying) {
  const auto tune = PutIntoMemory();
  tune->SetPlaying(true);
  window_->Activate();
  EXPECT_FALSE(IsEnabled(Bar(), "cmdPlay"));
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPause"));
  tune->SetPlaying(false);
}

TEST_F(ATuneWindow, WhatTheBarIsAskedToLoadIsFetched) {
  const auto tune = PutIntoMemory();
  Bar().LoadNewTune(QStringLiteral("XX"), QStringLiteral("Loaded"));
  EXPECT_EQ(window_->shown, QList{tune});
  EXPECT_EQ(Bar().Tune(), tune);
}

TEST_F(ATuneWindow, AnotherTitleOfTheTuneStandsInCaptionAndBar) {
  const auto tune = PutIntoMemory();
  window_->Activate();
  tune->SetTitle(QStringLiteral("Another"));
  window_->ShowTitleOfTune();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Sheet of Another"));
  EXPECT_TRUE(TextOf(Bar(), "lblTitle").contains(QStringLiteral("Another")));
  EXPECT_EQ(window_->shown.size(), 1) << "the page is not made anew for a title";
}

TEST_F(ATuneWindow, MayBeClosedByWhatItShows) {
  PutIntoMemory();
  window_->closes = true;
  window_->FetchTune();
  EXPECT_EQ(window_, nullptr);
}

TEST_F(ATuneWindow, ItsBarTakesTheColoursOfTheWindow) {
  window_->Activate();
  QPalette dark = window_->palette();
  dark.setColor(QPalette::Base, QColor(20, 30, 40));
  window_->setPalette(dark);
  EXPECT_EQ(Bar().BackGround(), QColor(20, 30, 40));
}

}  // namespace
}  // namespace zelmar
