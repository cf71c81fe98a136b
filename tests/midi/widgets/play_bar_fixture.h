// A transport bar with scripted services, and a tune that it drives.
#pragma once

#include <QPointer>
#include <QSignalSpy>
#include <QSlider>

#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {

class PlayBarTest : public ::testing::Test {
 protected:
  PlayBarTest() : bar_(std::make_unique<PlayBar>()) {
    bar_->resize(980, 130);
    bar_->show();
  }

  void Attach(std::shared_ptr<Tune> tune) {
    tune_ = std::move(tune);
    bar_->SetTune(tune_);
  }

  // Runs `act` once, when the bar's tune has reached the bar and beat.
  template <typename Act>
  void AtBeat(int bar, int beat, Act act) {
    QObject::connect(tune_.get(), &Tune::Ticked, &context_, [this, bar, beat, act, done = false]() mutable {
      if (done || tune_->BarNumber() != bar || tune_->BeatWithinBar() != beat) return;
      done = true;
      act();
    });
  }

  void ExpectButtons(bool play, bool pause, bool stop) {
    EXPECT_EQ(testing_support::IsEnabled(*bar_, "cmdPlay"), play);
    EXPECT_EQ(testing_support::IsEnabled(*bar_, "cmdPause"), pause);
    EXPECT_EQ(testing_support::IsEnabled(*bar_, "cmdStop"), stop);
  }

  int LongMessages() const { return platform_.midi->CountOf(testing_support::SentMessage::Kind::kLong); }
  QSlider& PlaySlider() { return testing_support::Find<QSlider>(*bar_, "PlaySlider"); }
  QSlider& TempoSlider() { return testing_support::Find<QSlider>(*bar_, "TempoSlider"); }

  testing_support::ScriptedPlatform platform_;
  std::unique_ptr<PlayBar> bar_;
  std::shared_ptr<Tune> tune_;
  QObject context_;
};

}  // namespace zelmar
