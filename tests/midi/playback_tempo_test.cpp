// Tempo, beats and settings of a playing: from its first bar on they are those of that place in the tune.
#include <gtest/gtest.h>

#include <algorithm>

#include "midi/playback_fixture.h"
#include "midi/quil_timer.h"

namespace zelmar {
namespace {

class PlaybackTempo : public Playback {
 protected:
  void AddTempo(int tempo, std::int16_t bar, std::int16_t beat = 1, std::int16_t tick = 0) {
    auto change = Add(TEMPO_CHANGE, bar, beat, tick);
    change->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    change->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
  }

  // A short note on each beat.
  void AddBars(int bars) {
    for (int bar = 1; bar <= bars; ++bar)
      for (int beat = 1; beat <= tune_->BeatsPerBar(); ++beat)
        Add(MUSIC_NOTE, static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat), 0, "C4", 0.1);
  }

  struct ReadOut {
    int bar, beat, tempo;
    double milliseconds;
  };

  // What the read-outs say at each beat of a playing from `bar`.
  std::vector<ReadOut> ReadOuts(std::int16_t bar) {
    std::vector<ReadOut> all;
    const QObject context;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
      all.push_back({tune_->BarNumber(), tune_->BeatWithinBar(), tune_->TempoCurrent(),
                     (SecondsSinceMidnight() - start_) * 1000.0});
    });
    PlayFrom(bar);
    return all;
  }

  // Milliseconds at which notes of the tune, which is not on channel 10, begin, and at which the clicks come.
  std::vector<double> Notes() const { return Moments(NoteOn(60, 1, 127)); }
  std::vector<double> Clicks() const { return Moments(NoteOn(60, 10, 90)); }

 private:
  std::vector<double> Moments(std::uint32_t word) const {
    std::vector<double> moments;
    for (const Timed& message : Sent(0))
      if (message.word == word) moments.push_back(message.milliseconds);
    return moments;
  }
};

TEST_F(PlaybackTempo, BeginsWithTheTempoInForceAtItsFirstBar) {
  AddBars(8);
  AddTempo(60, 3);
  AddTempo(240, 5, 3);
  Prepare();
  for (const auto& [bar, tempo] : {std::pair{1, 120}, {2, 120}, {3, 60}, {4, 60}, {5, 60}, {6, 240}}) {
    const auto read = ReadOuts(static_cast<std::int16_t>(bar));
    ASSERT_GE(read.size(), 5U);
    EXPECT_EQ(read[0].tempo, tempo) << "from bar " << bar;
    EXPECT_EQ(read[0].bar, bar);
    EXPECT_EQ(read[0].beat, 1);
    EXPECT_EQ(read[4].bar, bar + 1) << "from bar " << bar;
    EXPECT_EQ(read[4].beat, 1);
  }
  EXPECT_EQ(tune_->Tempo(), 120);
}

TEST_F(PlaybackTempo, AChangeBehindTheHeadOfTheFirstBarIsNotInForceThereYet) {
  AddBars(3);
  AddTempo(60, 2, 1, 60);
  Prepare();
  const auto read = ReadOuts(2);
  EXPECT_EQ(read[0].tempo, 120);
  EXPECT_EQ(read[1].tempo, 60);
  EXPECT_NEAR(read[1].milliseconds, 250.0 + 500.0, 0.1);
}

TEST_F(PlaybackTempo, LeavesNothingOfTheTempoOfAPlayingBefore) {
  AddBars(8);
  AddTempo(30, 5);
  Prepare();
  // A jump out of the slow bars: in them the beat is two seconds long, before them half a second.
  bool jumped = false;
  std::vector<ReadOut> after;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (jumped) {
      after.push_back({tune_->BarNumber(), tune_->BeatWithinBar(), tune_->TempoCurrent(),
                       (SecondsSinceMidnight() - tune_->MelodyStartTime()) * 1000.0});
      return;
    }
    if (tune_->BarNumber() != 5 || tune_->BeatWithinBar() != 3) return;
    jumped = true;
    tune_->Stopit();
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    std::int16_t bar = 2;
    tune_->Play(bar);
  });
  PlayFrom();
  ASSERT_GT(after.size(), 12U);
  for (std::size_t i = 0; i < 12; ++i) {
    EXPECT_EQ(after[i].bar, 2 + static_cast<int>(i) / 4) << i;
    EXPECT_EQ(after[i].beat, 1 + static_cast<int>(i) % 4) << i;
    EXPECT_EQ(after[i].tempo, 120) << i;
    EXPECT_NEAR(after[i].milliseconds, 500.0 * static_cast<double>(i), 0.1) << i;
  }
  PlayFrom();
  EXPECT_EQ(ReadOuts(1)[0].tempo, 120);
}

TEST_F(PlaybackTempo, IsThatOfTheTuneAgainWhenItsChangesAreTakenAway) {
  AddBars(2);
  AddTempo(60, 1, 2);
  Prepare();
  std::vector<int> tempos;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    tempos.push_back(tune_->TempoCurrent());
    if (tempos.size() == 4) tune_->SetTempoChanges(std::make_shared<TempoChanges>());
  });
  PlayFrom();
  ASSERT_GE(tempos.size(), 6U);
  EXPECT_EQ(tempos[3], 60);
  EXPECT_EQ(tempos[4], 120);
  EXPECT_EQ(tempos[5], 120);
}

TEST_F(PlaybackTempo, PulseIsTheRoundedBeatOfTheTempoInForce) {
  tune_->SetTempo(140);
  AddBars(4);
  AddTempo(90, 3);
  Prepare();
  std::vector<std::pair<int, int>> pulses;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (tune_->BeatWithinBar() == 4) pulses.emplace_back(tune_->BarNumber(), tune_->TuneQuilTimer()->Pulse());
  });
  PlayFrom();
  EXPECT_EQ(pulses, (std::vector<std::pair<int, int>>{{1, 429}, {2, 429}, {3, 667}, {4, 667}}));
}

TEST_F(PlaybackTempo, ClicksStayBesideTheNotesOfTheirBeats) {
  struct Metre {
    std::int16_t beats_per_bar;
    std::uint8_t beat_length;
  };
  for (const Metre metre : {Metre{4, 4}, {6, 8}, {2, 2}, {3, 4}}) {
    SCOPED_TRACE(::testing::Message() << metre.beats_per_bar << '/' << int{metre.beat_length});
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(metre.beats_per_bar);
    tune_->SetBeatLength(metre.beat_length);
    tune_->SetTempo(140);
    AddBars(60);
    // A ritardando, with changes also between the beats.
    for (std::int16_t bar = 30; bar < 60; ++bar) {
      AddTempo(170 - bar, bar);
      AddTempo(169 - bar, bar, 2, 17);
    }
    Prepare();
    tune_->SetHearTick(1);
    tune_->SetMetroVolume(90);
    // At a moment that MelodyStartTime, a single, does not hold exactly.
    platform_.clock->SetSeconds(45000.1237);
    PlayFrom();
    const auto notes = Notes(), clicks = Clicks();
    ASSERT_EQ(notes.size(), 60U * static_cast<std::size_t>(metre.beats_per_bar));
    ASSERT_GE(clicks.size(), notes.size());
    for (std::size_t i = 0; i < notes.size(); ++i)
      ASSERT_NEAR(clicks[i], notes[i], 2.001) << "beat " << i + 1;
  }
}

TEST_F(PlaybackTempo, BeatsBehindOnesThatCameLateAreWhereTheTimeModelHasThem) {
  AddBars(4);
  Prepare();
  tune_->SetHearTick(1);
  tune_->SetMetroVolume(90);
  // Each third beat is held up by a fifth of a second.
  int beats = 0;
  platform_.events->on_serve = [&](int) {
    const double next = 500.0 * 3.0 * (beats + 1);
    if ((SecondsSinceMidnight() - start_) * 1000.0 < next - 10.0 || beats == 4) return;
    ++beats;
    platform_.clock->AdvanceMicroseconds(200000);
  };
  PlayFrom();
  const auto clicks = Clicks();
  ASSERT_GE(clicks.size(), 16U);
  for (std::size_t i = 0; i < 16; ++i) {
    const double time = 500.0 * static_cast<double>(i);
    if (i > 0 && i % 3 == 0 && i <= 12)
      EXPECT_NEAR(clicks[i], time + 190.0, 3.0) << i;
    else
      EXPECT_NEAR(clicks[i], time, 0.1) << i;
  }
}

TEST_F(PlaybackTempo, BeatsOfALateStartCatchUpWithTheNotes) {
  AddBars(8);
  Prepare();
  tune_->SetHearTick(1);
  tune_->SetMetroVolume(90);
  // The tune was to begin 0.8 seconds ago.
  start_ = SecondsSinceMidnight();
  tune_->SetMelodyStartTime(static_cast<float>(start_ - 0.75));
  platform_.midi->sent.clear();
  tune_->Play();
  const auto clicks = Clicks();
  ASSERT_GT(clicks.size(), 4U);
  EXPECT_NEAR(clicks[0], 0.0, 0.1);
  EXPECT_NEAR(clicks[1], 0.0, 0.1);
  EXPECT_NEAR(clicks[2], 250.0, 0.1);
  EXPECT_NEAR(clicks[3], 750.0, 0.1);
}

TEST_F(PlaybackTempo, WithoutAStartTimeBeatsFollowByPulse) {
  // Notes that are all overdue go out one to a step: 2400 events last 4.8 seconds.
  AddBars(300);
  Prepare();
  start_ = SecondsSinceMidnight();
  std::vector<double> beats;
  QObject::connect(tune_.get(), &Tune::Ticked,
                   [&] { beats.push_back((SecondsSinceMidnight() - start_) * 1000.0); });
  tune_->SetMelodyStartTime(0.0F);
  tune_->Play();
  ASSERT_EQ(beats.size(), 10U);
  for (std::size_t i = 0; i < beats.size(); ++i) EXPECT_NEAR(beats[i], 500.0 * static_cast<double>(i), 2.1);
}

TEST_F(PlaybackTempo, BehindTheLastBarBeatsGoOnAtTheLastTempo) {
  AddBars(2);
  AddTempo(60, 2);
  Add(MUSIC_NOTE, 2, 4, 0, "G4", 6.0);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  // The count of bars is of before the long note was there.
  tune_->Item(tune_->Count())->SetBar(1);
  ASSERT_EQ(tune_->BarCount(), 2);
  tune_->Item(tune_->Count())->SetBar(4);
  const auto read = ReadOuts(1);
  ASSERT_GE(read.size(), 12U);
  for (std::size_t i = 5; i < 12; ++i) {
    EXPECT_NEAR(read[i].milliseconds - read[i - 1].milliseconds, 1000.0, 0.1) << i;
    EXPECT_EQ(read[i].bar, 2) << i;
  }
  EXPECT_EQ(read[11].beat, 4);
}

TEST_F(PlaybackTempo, NoBeatFollowsAStopInTheFirstStep) {
  AddBars(1);
  Prepare();
  int beats = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, [&beats] { ++beats; });
  QObject::connect(tune_.get(), &Tune::NoteStarted, [this] { tune_->Stopit(); });
  PlayFrom();
  EXPECT_EQ(beats, 0);
}

// --- Controllers and bends before the first bar ---

class PriorSettings : public PlaybackTempo {
 protected:
  void Control(EventType type, std::int16_t bar, int value, std::uint8_t channel = 1, std::int16_t beat = 1) {
    auto control = Add(type, bar, beat);
    control->SetVolume(static_cast<std::uint8_t>(value));
    control->SetChannel(channel);
  }
  static std::uint32_t ControllerWord(std::uint32_t type, int value, int channel = 1) {
    return 0xB0U + static_cast<std::uint32_t>(channel - 1) + type * 256U +
           static_cast<std::uint32_t>(value) * 65536U;
  }
  // What goes out before the first note's program change of a playing from `bar`.
  std::vector<std::uint32_t> Settings(std::int16_t bar) {
    PlayFrom(bar);
    std::vector<std::uint32_t> words;
    for (const Timed& message : Sent()) {
      if ((message.word & 0xF0U) == 0xC0U) break;
      words.push_back(message.word);
    }
    return words;
  }
};

TEST_F(PriorSettings, AreSentForAPlayingFromALaterBar) {
  AddBars(6);
  Control(7, 1, 0, 2);
  Control(7, 1, 60, 1);
  Control(7, 3, 80, 1);
  Control(10, 2, 20, 1);
  auto bend = Add(PITCH_BEND, 2, 2);
  bend->SetInstrument(5);
  bend->SetVolume(70);
  Control(7, 4, 99, 1);
  Prepare();
  EXPECT_EQ(Settings(4), (std::vector<std::uint32_t>{ControllerWord(7, 0, 2), ControllerWord(10, 20),
                                                     0xE0U + 5U * 256U + 70U * 65536U, ControllerWord(7, 80),
                                                     ControllerWord(7, 99)}));
  EXPECT_EQ(Settings(2), (std::vector<std::uint32_t>{ControllerWord(7, 0, 2), ControllerWord(7, 60),
                                                     ControllerWord(10, 20)}));
}

TEST_F(PriorSettings, OfTheFirstBarAreItsOwnEvents) {
  AddBars(1);
  Control(7, 1, 0, 2);
  Prepare();
  EXPECT_EQ(Settings(1), (std::vector<std::uint32_t>{ControllerWord(7, 0, 2)}));
}

TEST_F(PriorSettings, KeepTheirOrderSoThatAResetComesWhereItStood) {
  AddBars(4);
  Control(1, 1, 50);
  Control(64, 2, 127);
  Control(121, 2, 0, 1, 2);
  Control(1, 2, 30, 1, 3);
  Prepare();
  EXPECT_EQ(Settings(3), (std::vector<std::uint32_t>{ControllerWord(64, 127), ControllerWord(121, 0),
                                                     ControllerWord(1, 30)}));
}

TEST_F(PriorSettings, AreOnlyThoseThatPlaybackSends) {
  AddBars(3);
  Control(2, 1, 50);
  Control(CHANNEL_PRESSURE, 1, 50);
  Control(DUMMY_NOTE, 1, 50);
  Control(7, 1, 50, 0);
  Control(7, 1, 50, 17);
  Prepare();
  EXPECT_TRUE(Settings(2).empty());
}

TEST_F(PriorSettings, ComeAfterTheBanksAndAreTold) {
  AddBars(3);
  Control(7, 1, 33, 5);
  Control(PITCH_BEND, 1, 64);
  Prepare();
  std::vector<int> told;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&](Tone& tone) {
    told.push_back(tone.Volume());
    EXPECT_TRUE(tune_->Playing());
  });
  PlayFrom(2);
  const auto sent = Sent(32);
  EXPECT_EQ(sent[0].word & 0xFF00U, 0U);
  EXPECT_EQ(sent[1].word & 0xFF00U, 32U * 256U);
  EXPECT_EQ(sent[2].word, ControllerWord(7, 33, 5));
  EXPECT_NEAR(sent[2].milliseconds, 0.0, 0.1);
  EXPECT_EQ(told, (std::vector<int>{33}));
}

TEST_F(PriorSettings, AListenerMayStopOrStartThePlayingAnew) {
  AddBars(3);
  Control(7, 1, 33);
  Control(10, 1, 44);
  Prepare();
  int told = 0;
  const auto stop = QObject::connect(tune_.get(), &Tune::ControlEvent, [&] {
    ++told;
    tune_->Stopit();
  });
  PlayFrom(2);
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(tune_->Playing());
  QObject::disconnect(stop);
  int notes = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&notes] { ++notes; });
  told = 0;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&] {
    if (++told > 1) return;
    std::int16_t bar = 3;
    tune_->Play(bar);
  });
  PlayFrom(2);
  EXPECT_EQ(notes, 4);
  EXPECT_EQ(told, 3);
}

}  // namespace
}  // namespace zelmar
