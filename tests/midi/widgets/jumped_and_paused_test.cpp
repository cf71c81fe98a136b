// The transport bar over random tempo maps: jumps, pauses and what the bar shows, against plain reckonings.
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QSlider>
#include <vector>

#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "support/dice.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class DrivenBar : public ::testing::Test {
 protected:
  DrivenBar() : bar_(std::make_unique<PlayBar>()) {
    bar_->resize(980, 130);
    bar_->show();
    platform_.events->step_microseconds = 0;
  }

  void Attach(int bars, int beats_per_bar = 4, int tempo = 120) {
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(beats_per_bar));
    tune_->SetTempo(static_cast<std::int16_t>(tempo));
    QStringList pitches;
    for (int i = 0; i < bars * beats_per_bar; ++i) pitches.append(QStringLiteral("C4"));
    tune_->CreateMelody(0, 100, 1, pitches);
    Prepare();
  }
  void Prepare() {
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
    bar_->SetTune(tune_);
    bars_ = tune_->BarCount();
  }
  void AddTempo(int bar, int beat, int tempo) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(TEMPO_CHANGE);
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetBeat(static_cast<std::int16_t>(beat));
    tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tune_->Add(tone);
    tempos_.push_back({bar, beat, tempo});
  }

  struct Tempo {
    int bar, beat, tempo;
  };
  // The latest change at or before the beat; of two at one beat the later one counts.
  int TempoAt(int bar, int beat) const {
    int tempo = tune_->Tempo(), best_bar = 0, best_beat = 0;
    for (const Tempo& change : tempos_) {
      if (change.bar > bar || (change.bar == bar && change.beat > beat)) continue;
      if (change.bar < best_bar || (change.bar == best_bar && change.beat < best_beat)) continue;
      tempo = change.tempo;
      best_bar = change.bar;
      best_beat = change.beat;
    }
    return tempo;
  }

  int Shown(const char* label) const { return TextOf(*bar_, label).toInt(); }
  QSlider& PlaySlider() { return Find<QSlider>(*bar_, "PlaySlider"); }

  void ExpectAt(int bar, int beat) {
    EXPECT_EQ(Shown("lblMyBar"), bar);
    EXPECT_EQ(Shown("lblMyBeat"), beat);
    EXPECT_EQ(Shown("lblMyTempo"), TempoAt(bar, beat));
    EXPECT_EQ(bar_->StartBar(), bar);
  }
  void ExpectButtons(bool play, bool pause, bool stop) {
    EXPECT_EQ(IsEnabled(*bar_, "cmdPlay"), play);
    EXPECT_EQ(IsEnabled(*bar_, "cmdPause"), pause);
    EXPECT_EQ(IsEnabled(*bar_, "cmdStop"), stop);
  }

  ScriptedPlatform platform_;
  std::unique_ptr<PlayBar> bar_;
  std::shared_ptr<Tune> tune_;
  std::vector<Tempo> tempos_;
  int bars_ = 0;
};

TEST_F(DrivenBar, PlaysAgainFromTheBarOfThePauseWhateverJumpsAndTemposCameBefore) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    platform_.clock->SetSeconds(36000.0);
    tempos_.clear();
    Attach(9, 2 + dice(3));
    for (int i = 0; i < 5; ++i) {
      const int bar = 2 + dice(8), beat = 1 + dice(tune_->BeatsPerBar());
      bool free = true;
      for (const Tempo& change : tempos_) free = free && (change.bar != bar || change.beat != beat);
      if (free) AddTempo(bar, beat, 40 + dice(300));
    }
    Prepare();
    const int jump_at = 2 + dice(12), pause_at = jump_at + 1 + dice(6);
    const bool forward = dice(2) == 0;
    int ticks = 0, pause_bar = 0;
    QObject context;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
      ++ticks;
      EXPECT_EQ(Shown("lblMyBar"), tune_->BarNumber());
      EXPECT_EQ(Shown("lblMyBeat"), tune_->BeatWithinBar());
      if (ticks == jump_at) {
        forward ? bar_->Forward() : bar_->Back();
      } else if (ticks == pause_at) {
        pause_bar = tune_->BarNumber();
        bar_->Pause();
      }
    });
    bar_->Play();
    if (ticks < pause_at) continue;  // the tune was over before
    EXPECT_FALSE(tune_->Playing());
    ExpectButtons(true, false, true);
    EXPECT_EQ(bar_->StartBar(), pause_bar);
    int first = 0;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
      if (++first > 1) return;
      EXPECT_EQ(tune_->BarNumber(), pause_bar);
      EXPECT_EQ(tune_->BeatWithinBar(), 1);
      EXPECT_EQ(tune_->TempoCurrent(), TempoAt(pause_bar, 1));
      EXPECT_EQ(Shown("lblMyBar"), pause_bar);
      EXPECT_EQ(Shown("lblMyBeat"), 1);
      EXPECT_EQ(Shown("lblMyTempo"), TempoAt(pause_bar, 1));
    });
    bar_->Play();
    EXPECT_GT(first, 0);
  }
}

TEST_F(DrivenBar, JumpsOutOfASlowPassageIntoTheTempoOfTheBarBefore) {
  Attach(6);
  AddTempo(4, 1, 30);
  Prepare();
  bar_->SetStartBar(4);
  std::vector<std::pair<int, int>> places;
  std::vector<int> tempos;
  QObject context;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    places.emplace_back(tune_->BarNumber(), tune_->BeatWithinBar());
    tempos.push_back(Shown("lblMyTempo"));
    if (places.size() == 2) bar_->Back();
    if (places.size() == 5) bar_->Pause();
  });
  bar_->Play();
  ASSERT_EQ(places.size(), 5U);
  EXPECT_EQ(places[0], std::pair(4, 1));
  EXPECT_EQ(tempos[0], 30);
  EXPECT_EQ(places[2], std::pair(3, 1));
  EXPECT_EQ(tempos[2], 120);
  EXPECT_EQ(places[4], std::pair(3, 3));
  EXPECT_EQ(bar_->StartBar(), 3);
}

TEST_F(DrivenBar, GoesOnThroughManyJumpsAndTellsOfEachOnce) {
  Attach(6);
  AddTempo(3, 1, 200);
  Prepare();
  std::vector<int> told, jumped;
  QObject context;
  QObject::connect(bar_.get(), &PlayBar::OtherButtonClicked, &context, [&](std::int16_t bar) {
    told.push_back(bar);
    EXPECT_EQ(bar, bar_->StartBar());
  });
  int finished_while_jumping = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (jumped.size() >= 400) return;
    const int bar = tune_->BarNumber();
    const bool forward = jumped.size() % 2 == 0;
    forward ? bar_->Forward() : bar_->Back();
    jumped.push_back(forward ? bar + 1 : bar - 1);
    finished_while_jumping += !tune_->Playing();
    EXPECT_LE(told.size(), jumped.size());
    EXPECT_GE(told.size() + 1, jumped.size());
  });
  bar_->Play();
  EXPECT_EQ(jumped.size(), 400U);
  EXPECT_EQ(told.size(), jumped.size());
  EXPECT_FALSE(tune_->Playing());
  ExpectButtons(true, false, false);
  EXPECT_EQ(tune_->BarNumber(), 6);
}

TEST_F(DrivenBar, TellsOfAJumpOnlyWhenItsPlayingIsOver) {
  Attach(4);
  QObject context;
  int told = 0, told_while_playing = 0;
  QObject::connect(bar_.get(), &PlayBar::OtherButtonClicked, &context, [&] {
    ++told;
    told_while_playing += tune_->Playing();
  });
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks == 2) bar_->Forward();
    if (ticks > 2) {
      EXPECT_EQ(told, 0);
    }
  });
  bar_->Play();
  EXPECT_GT(ticks, 8);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(told_while_playing, 0);
}

TEST_F(DrivenBar, TellsOfAJumpWhosePlayingIsStopped) {
  Attach(4);
  QObject context;
  QSignalSpy told(bar_.get(), &PlayBar::OtherButtonClicked);
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks == 2) bar_->Forward();
    if (ticks == 5) bar_->StopPlay();
  });
  bar_->Play();
  ASSERT_EQ(told.count(), 1);
  EXPECT_EQ(told[0][0].value<std::int16_t>(), 2);
  ExpectButtons(true, false, false);
  EXPECT_EQ(bar_->StartBar(), 1);
}

TEST_F(DrivenBar, WhileSilentFollowsItsButtonsLikeAPlainCounter) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    tempos_.clear();
    Attach(7, 2 + dice(4));
    for (int i = 0; i < 4; ++i) AddTempo(2 + 1 + i, 1, 40 + dice(300));
    tune_->MakeTempoMap();
    tune_->SortStartTimes();
    tune_->MakeTempoMap();
    Prepare();
    int place = 1, beat = 1;
    bar_->Rewind();
    QSignalSpy told(bar_.get(), &PlayBar::OtherButtonClicked);
    for (int step = 0; step < 60; ++step) {
      told.clear();
      bool tells = true;
      const int button = dice(6);
      SCOPED_TRACE(QStringLiteral("step %1 button %2").arg(step).arg(button).toStdString());
      switch (button) {
        case 0:
          tells = place < 7;
          if (tells) beat = 1;
          place = std::min(place + 1, 7);
          bar_->Forward();
          break;
        case 1:
          tells = place > 1;
          if (tells) beat = 1;
          place = std::max(place - 1, 1);
          bar_->Back();
          break;
        case 2:
          place = beat = 1;
          bar_->Rewind();
          break;
        case 3:
          place = 7;
          beat = 1;
          bar_->GoToEnd();
          break;
        case 4:
          place = 1 + dice(7);
          beat = 1;
          platform_.input->answers = {QString::number(place)};
          bar_->GoToBar();
          break;
        default: {
          const int beats = 1 + dice(7 * tune_->BeatsPerBar());
          place = (beats - 1) / tune_->BeatsPerBar() + 1;
          beat = (beats - 1) % tune_->BeatsPerBar() + 1;
          PlaySlider().setValue(beats);
          tells = false;
        }
      }
      ExpectAt(place, beat);
      ASSERT_EQ(told.count(), tells ? 1 : 0) << step;
      if (tells) {
        EXPECT_EQ(told[0][0].value<std::int16_t>(), place);
      }
    }
  }
}

TEST_F(DrivenBar, TellsTheBarAndBeatOfItsSlider) {
  Attach(5, 3);
  for (int beats = 2; beats <= 15; ++beats) {
    QSignalSpy moved(bar_.get(), &PlayBar::SliderMoved);
    PlaySlider().setValue(beats);
    ASSERT_EQ(moved.count(), 1) << beats;
    EXPECT_EQ(moved[0][0].value<std::int16_t>(), (beats - 1) / 3 + 1);
    EXPECT_EQ(moved[0][1].value<std::int16_t>(), (beats - 1) % 3 + 1);
  }
}

TEST_F(DrivenBar, ShowsWhatATuneIs) {
  Attach(5, 3, 96);
  tune_->SetTitle(QStringLiteral("Air"));
  for (const auto& [composer, title] : {std::pair("Bach", "Bach - Air"), std::pair("Various", "Air")}) {
    tune_->SetComposer(QString::fromLatin1(composer));
    bar_->SetTune(nullptr);
    bar_->SetTune(tune_);
    EXPECT_EQ(TextOf(*bar_, "lblTitle"), QString::fromLatin1(title));
  }
  EXPECT_EQ(TextOf(*bar_, "lblTimeSig"), QStringLiteral("3/4"));
  EXPECT_EQ(Shown("lblTotalbars"), 5);
  EXPECT_EQ(Shown("lblMyTempo"), 96);
  EXPECT_EQ(Find<QSlider>(*bar_, "TempoSlider").value(), 96);
  EXPECT_EQ(PlaySlider().minimum(), 1);
  EXPECT_EQ(PlaySlider().maximum(), 15);
  EXPECT_EQ(PlaySlider().pageStep(), 3);
  ExpectButtons(true, false, false);
}

TEST_F(DrivenBar, ShowsThatThereIsNoTune) {
  EXPECT_EQ(TextOf(*bar_, "lblTitle"), QStringLiteral("No tune loaded."));
  EXPECT_EQ(TextOf(*bar_, "lblTimeSig"), QStringLiteral("None yet"));
  EXPECT_EQ(TextOf(*bar_, "lblFormName"), QStringLiteral("Unknown yet"));
  ExpectButtons(false, false, false);
  bar_->Play();
  EXPECT_TRUE(platform_.midi->sent.empty());
}

TEST_F(DrivenBar, GivesATuneWithoutABeatLengthCrotchets) {
  tune_ = std::make_shared<Tune>();
  tune_->SetBeatLength(0);
  bar_->SetTune(tune_);
  EXPECT_EQ(tune_->BeatLength(), 4);
  EXPECT_EQ(PlaySlider().maximum(), 2);
}

TEST_F(DrivenBar, HasItsButtonsAsTheTunesStateAsks) {
  Attach(3);
  ExpectButtons(true, false, false);
  int ticks = 0;
  QObject context;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    ++ticks;
    ExpectButtons(false, true, true);
    if (ticks == 3) {
      bar_->Pause();
      EXPECT_TRUE(IsEnabled(*bar_, "cmdPlay"));
      EXPECT_FALSE(IsEnabled(*bar_, "cmdPause"));
    }
  });
  bar_->Play();
  EXPECT_EQ(ticks, 3);
  EXPECT_TRUE(IsEnabled(*bar_, "cmdPlay"));
  bar_->StopPlay();
  ExpectButtons(true, false, false);
  ExpectAt(1, 1);
  EXPECT_EQ(PlaySlider().value(), 1);
}

TEST_F(DrivenBar, KeepsTheTunesOwnTempoThroughStopAndRewindOutOfAnother) {
  Attach(4, 4, 100);
  AddTempo(3, 1, 44);
  Prepare();
  QObject context;
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks == 10) bar_->StopPlay();
  });
  bar_->Play();
  EXPECT_EQ(Shown("lblMyTempo"), 100);
  bar_->Play();
  EXPECT_EQ(tune_->Tempo(), 100);
  bar_->Rewind();
  EXPECT_EQ(Shown("lblMyTempo"), 100);
  bar_->Play();
  EXPECT_EQ(tune_->Tempo(), 100);
}

TEST_F(DrivenBar, TakesTheSlidersTempoForAPlayFromTheTop) {
  Attach(2);
  Find<QSlider>(*bar_, "TempoSlider").setValue(240);
  EXPECT_EQ(Shown("lblMyTempo"), 240);
  EXPECT_EQ(tune_->Tempo(), 240);
  const double start = platform_.clock->SecondsSinceMidnight();
  bar_->Play();
  EXPECT_NEAR(platform_.clock->SecondsSinceMidnight() - start, 8 * 0.25, 0.05);
}

TEST_F(DrivenBar, RefusesBarsThatThereAreNot) {
  Attach(5);
  bar_->GoToEnd();
  for (const char* const answer : {"0", "6", "-1", "99999"}) {
    platform_.messages->shown.clear();
    platform_.input->answers = {QString::fromLatin1(answer)};
    bar_->GoToBar();
    ASSERT_EQ(platform_.messages->shown.size(), 1) << answer;
    EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("Bar number must be between 1 and 5"));
    EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(bar_->StartBar(), 5);
  }
  platform_.messages->shown.clear();
  platform_.input->answers = {QStringLiteral("two")};
  bar_->GoToBar();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text,
            QStringLiteral("Please use only numerical digits for bar numbers"));
  EXPECT_EQ(platform_.messages->shown[0].title, QStringLiteral("New bar must be a numeric"));
  platform_.messages->shown.clear();
  platform_.input->answers = {QString()};
  bar_->GoToBar();
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  EXPECT_EQ(platform_.input->shown.last().prompt, QStringLiteral("Jump to a new bar"));
  EXPECT_EQ(platform_.input->shown.last().title, QStringLiteral("Which Bar?"));
}

TEST_F(DrivenBar, PlaysOnWhenThereIsNoBarToGoForwardOrBackTo) {
  Attach(3);
  QObject context;
  int ticks = 0;
  QSignalSpy told(bar_.get(), &PlayBar::OtherButtonClicked);
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks > 12) return;  // the last notes die away
    if (tune_->BarNumber() == 1) bar_->Back();
    if (tune_->BarNumber() == 3) bar_->Forward();
    EXPECT_EQ(tune_->BarNumber(), (ticks - 1) / 4 + 1);
    EXPECT_EQ(tune_->BeatWithinBar(), (ticks - 1) % 4 + 1);
    EXPECT_TRUE(tune_->Playing());
  });
  bar_->Play();
  EXPECT_GE(ticks, 12);
  EXPECT_EQ(told.count(), 0);
}

TEST_F(DrivenBar, SharesATuneWithAnotherBarThatJumps) {
  Attach(5);
  PlayBar other;
  other.show();
  other.SetTune(tune_);
  QSignalSpy told(bar_.get(), &PlayBar::OtherButtonClicked),
      told_by_other(&other, &PlayBar::OtherButtonClicked);
  QObject context;
  int ticks = 0;
  std::vector<int> bars;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    ++ticks;
    EXPECT_EQ(Shown("lblMyBar"), tune_->BarNumber());
    EXPECT_EQ(TextOf(other, "lblMyBar").toInt(), tune_->BarNumber());
    EXPECT_EQ(PlaySlider().value(), Find<QSlider>(other, "PlaySlider").value());
    if (ticks == 2 || ticks == 5) other.Forward();
    if (ticks == 7) bar_->Back();
    bars.push_back(tune_->BarNumber());
  });
  bar_->Play();
  ASSERT_GE(bars.size(), 8U);
  EXPECT_EQ(bars[2], 2);
  EXPECT_EQ(bars[5], 3);
  EXPECT_EQ(bars[7], 2);
  EXPECT_EQ(tune_->BarNumber(), 5);
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(told_by_other.count(), 2);
  for (const PlayBar* one : {bar_.get(), static_cast<PlayBar*>(&other)}) {
    EXPECT_TRUE(IsEnabled(*one, "cmdPlay"));
    EXPECT_FALSE(IsEnabled(*one, "cmdPause"));
    EXPECT_FALSE(IsEnabled(*one, "cmdStop"));
  }
}

TEST_F(DrivenBar, IsPausedAndJumpsWithoutPlayingOn) {
  Attach(6);
  AddTempo(3, 1, 60);
  AddTempo(5, 1, 200);
  Prepare();
  QObject context;
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks == 6) bar_->Pause();
  });
  bar_->Play();
  EXPECT_EQ(bar_->StartBar(), 2);
  for (const int bar : {3, 4, 5}) {
    bar_->Forward();
    EXPECT_FALSE(tune_->Playing());
    ExpectAt(bar, 1);
  }
  bar_->Back();
  ExpectAt(4, 1);
  ticks = 100;
  std::vector<int> bars;
  QObject::connect(tune_.get(), &Tune::Ticked, &context,
                   [&] { bars.push_back(Shown("lblMyBar") * 1000 + Shown("lblMyTempo")); });
  bar_->Play();
  ASSERT_FALSE(bars.empty());
  EXPECT_EQ(bars[0], 4060);
}

TEST_F(DrivenBar, GoesToABarWhilePlayingAndStopsThere) {
  Attach(6);
  QObject context;
  int ticks = 0;
  QSignalSpy told(bar_.get(), &PlayBar::OtherButtonClicked);
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks != 3) return;
    platform_.input->answers = {QStringLiteral("5")};
    bar_->GoToBar();
  });
  bar_->Play();
  EXPECT_EQ(ticks, 3);
  EXPECT_FALSE(tune_->Playing());
  ExpectAt(5, 1);
  ASSERT_EQ(told.count(), 1);
  EXPECT_EQ(told[0][0].value<std::int16_t>(), 5);
  EXPECT_EQ(platform_.input->shown[0].default_text, QStringLiteral("1"));
}

TEST_F(DrivenBar, TurnsTheMetronomeOnWithFullVolume) {
  Attach(2);
  Find<QCheckBox>(*bar_, "chkMetronome").click();
  EXPECT_NE(tune_->HearTick(), 0);
  EXPECT_EQ(tune_->MetroVolume(), 127);
  Find<QCheckBox>(*bar_, "chkMetronome").click();
  EXPECT_EQ(tune_->HearTick(), 0);
}

TEST_F(DrivenBar, RepeatsTheModeAtTheEndButNotInGM2) {
  const std::pair<const char*, int> kModes[] = {{"GS", 1}, {"XG", 1}, {"GM", 1}, {"GM2", 0}};
  for (const auto& [mode, count] : kModes) {
    Attach(1);
    Global().MidiMode = QString::fromLatin1(mode);
    platform_.midi->sent.clear();
    bar_->Play();
    EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), count) << mode;
  }
}

}  // namespace
}  // namespace zelmar
