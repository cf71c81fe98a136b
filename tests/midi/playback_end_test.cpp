// How playback ends: by itself, by a stop, by another start, by a failure.
#include "midi/playback_fixture.h"

#include "midi/quil_timer.h"

namespace zelmar {
namespace {

using testing_support::SentMessage;

TEST_F(Playback, ABarBehindTheEndLeavesTheCursor) {
  Add(MUSIC_NOTE, 1, 1);
  Add(MUSIC_NOTE, 2, 1);
  Prepare();
  std::int16_t bar = 2;
  tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  // Stopped at its first note, the third event, the cursor has gone on to the fourth.
  const auto connection = QObject::connect(tune_.get(), &Tune::NoteStarted, [this] { tune_->Stopit(); });
  tune_->Play(bar);
  QObject::disconnect(connection);
  EXPECT_EQ(tune_->PlayIndex(), 4);
  // Nothing lies at or behind bar 9, so the first event to be looked at is the one that the cursor stood on.
  bar = 9;
  std::int32_t first_index = 0;
  QObject::connect(tune_.get(), &Tune::MelodyTested, [&] {
    if (first_index == 0) first_index = tune_->PlayIndex();
  });
  tune_->Play(bar);
  EXPECT_EQ(first_index, 4);
  EXPECT_EQ(tune_->PlayStartBar(), 9);
}

TEST_F(Playback, ABarBehindTheEndOfATuneThatNeverPlayedIsAFailure) {
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  std::int16_t bar = 9;
  EXPECT_THROW(tune_->Play(bar), SubscriptError);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(tune_->PlayIndex(), 0);
}

TEST_F(Playback, TheNaturalEndRestoresVolumes) {
  const auto note = Add(MUSIC_NOTE, 1, 1);
  note->SetOldVolume(90);
  note->SetVolume(20);
  bool playing_when_finished = true;
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&] {
    ++finished;
    playing_when_finished = tune_->Playing();
  });
  Prepare();
  PlayFrom();
  EXPECT_EQ(note->Volume(), 90);
  EXPECT_EQ(finished, 1);
  EXPECT_FALSE(playing_when_finished);
  EXPECT_EQ(tune_->CurrentTone(), nullptr);
  EXPECT_EQ(tune_->PlayIndex(), 3);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 0);
}

TEST_F(Playback, StopitLeavesVolumesAndCursorAndResetsTheDevice) {
  const auto note = Add(MUSIC_NOTE, 1, 1);
  note->SetOldVolume(90);
  note->SetVolume(20);
  Add(MUSIC_NOTE, 2, 1);
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] { ++finished; });
  Prepare();
  platform_.events->on_serve = [this](int) {
    if (tune_->Playing() && SecondsSinceMidnight() > start_ + 0.1) tune_->Stopit();
  };
  PlayFrom();
  EXPECT_EQ(note->Volume(), 20);
  EXPECT_EQ(finished, 1);
  EXPECT_NE(tune_->CurrentTone(), nullptr);
  EXPECT_EQ(tune_->PlayIndex(), 2);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
  EXPECT_LT(SecondsSinceMidnight(), start_ + 0.2);
}

TEST_F(Playback, StopitWithNothingPlayingOnlyTellsOfTheEnd) {
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] { ++finished; });
  tune_->Stopit();
  EXPECT_EQ(finished, 1);
  EXPECT_TRUE(platform_.midi->sent.empty());
  Add(MUSIC_NOTE, 1, 1);
  tune_->Stopit();
  EXPECT_EQ(finished, 2);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
}

TEST_F(Playback, CountersStandStillOnTheLastBeatWhileBeatsGoOn) {
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 12.0);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  tune_->Item(2)->SetBar(4);
  // The last read of the bar count knew of one bar only.
  auto two_bars = tune_->Item(2);
  tune_->Remove(2);
  EXPECT_EQ(tune_->BarCount(), 1);
  tune_->Tones()->Add(two_bars);
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    ++ticks;
    EXPECT_LE(tune_->BarNumber(), 1);
    if (ticks >= 4) {
      EXPECT_EQ(tune_->BeatWithinBar(), 4);
    }
  });
  PlayFrom();
  // A beat at each half second from 0 to 6, the last just before the note ends.
  EXPECT_EQ(ticks, 13);
  EXPECT_EQ(tune_->BeatNumber(), 4);
}

TEST_F(Playback, AnUnsortedTuneIsSortedFirst) {
  Add(MUSIC_NOTE, 2, 1);
  Add(MUSIC_NOTE, 1, 1, 0, "A4");
  tune_->CalcNotesOff();
  PlayFrom();
  EXPECT_TRUE(tune_->Sorted());
  EXPECT_EQ(Sent()[1].word, NoteOn(69, 1, 127));
}

TEST_F(Playback, AChannelOutsideOneToSixteenFailsAndLeavesNothingSounding) {
  Add(MUSIC_NOTE, 1, 1);
  auto bad = Add(MUSIC_NOTE, 1, 2);
  bad->SetChannel(17);
  Prepare();
  EXPECT_THROW(PlayFrom(), SubscriptError);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
}

TEST_F(Playback, AHandlerMayStopPlayAgainAndLetGoOfTheTune) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  int notes = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&](Tone&) {
    if (++notes != 2) return;
    tune_->Stopit();
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    Tune* const held = tune_.get();
    tune_.reset();  // the playing tune holds itself
    held->Play();
  });
  PlayFrom();
  EXPECT_EQ(notes, 6);
}

TEST_F(Playback, PlayingATuneThatPlaysEndsTheOuterRun) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  int notes = 0;
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] { ++finished; });
  bool nested = false;
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&notes] { ++notes; });
  platform_.events->on_serve = [&](int) {
    if (nested || notes < 1) return;
    nested = true;
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune_->Play();
  };
  PlayFrom();
  EXPECT_EQ(notes, 5);
  EXPECT_EQ(finished, 1);
}

TEST_F(Playback, ALateNoteIsNotSkipped) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  bool stalled = false;
  platform_.events->on_serve = [&](int) {
    if (!stalled && SecondsSinceMidnight() > start_ + 0.3) {
      stalled = true;
      platform_.clock->AdvanceMicroseconds(1500000);
    }
  };
  PlayFrom();
  EXPECT_EQ(Sent().size(), 12U);
}

TEST_F(Playback, ATonePlaysByItself) {
  Tone tone;
  tone.SetPitch(QStringLiteral("A4"));
  tone.SetChannel(2);
  tone.SetVolume(64);
  tone.SetInstrument(12);
  tone.Play();
  tone.SetSendPatch(true);
  tone.Play();
  EXPECT_TRUE(tone.SendPatch());
  EXPECT_EQ(platform_.midi->ShortMessages(),
            (std::vector<std::uint32_t>{NoteOn(69, 2, 64), Patch(12, 2), NoteOn(69, 2, 64)}));
}

TEST_F(Playback, ANestedPlayThatFailsToStartEndsBothRunsCleanly) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] { ++finished; });
  bool nested = false;
  platform_.events->on_serve = [&](int) {
    if (nested || !tune_->Playing() || SecondsSinceMidnight() < start_ + 0.1) return;
    nested = true;
    // A tempo of 0 cannot be mapped.
    auto change = Add(TEMPO_CHANGE, 1, 1);
    change->SetVolume(0);
    change->SetInstrument(0);
    EXPECT_THROW(tune_->Play(), DivisionError);
  };
  PlayFrom();
  EXPECT_TRUE(nested);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(finished, 1);
  EXPECT_GE(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
}

TEST_F(Playback, AListenerThatFailsAtTheEndTakesNothingFromTheTune) {
  const auto note = Add(MUSIC_NOTE, 1, 1);
  note->SetOldVolume(90);
  note->SetVolume(20);
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] {
    ++finished;
    throw OverflowError();
  });
  Prepare();
  EXPECT_THROW(PlayFrom(), OverflowError);
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(note->Volume(), 90);
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(Playback, APlayInTheMiddleOfAnotherEndsTheNotesOfThatOne) {
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 4.0);
  Prepare();
  bool nested = false;
  platform_.events->on_serve = [&](int) {
    if (nested || SecondsSinceMidnight() < start_ + 0.1) return;
    nested = true;
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune_->Play();
  };
  PlayFrom();
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
}

TEST_F(Playback, AListenerOfEachStepThatStopsTheTuneSilencesTheNextNote) {
  Add(MUSIC_NOTE, 1, 1);
  Add(MUSIC_NOTE, 1, 2);
  Prepare();
  QObject::connect(tune_.get(), &Tune::MelodyTested, [this] {
    if (SecondsSinceMidnight() >= start_ + 0.4999 && tune_->Playing()) tune_->Stopit();
  });
  PlayFrom();
  EXPECT_EQ(platform_.midi->sent.back().kind, SentMessage::Kind::kReset);
}

TEST_F(Playback, TooManyBeatsBeforeTheFirstBarAreAnOverflow) {
  tune_->SetBeatsPerBar(12);
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  std::int16_t bar = 4000;
  EXPECT_THROW(tune_->Play(bar), OverflowError);
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(Playback, ThePulseIsTheLengthOfABeat) {
  tune_->SetBeatLength(8);
  tune_->SetTempo(90);
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  PlayFrom();
  EXPECT_EQ(tune_->TuneQuilTimer()->Pulse(), 333);  // 666.67 ms to the crotchet
  EXPECT_EQ(tune_->TuneQuilTimer()->Interval(), 2);
}

TEST_F(Playback, SuppressedBankMessagesStayAway) {
  Global().SuppressBankMessages = true;
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  PlayFrom();
  EXPECT_EQ(Sent(32)[0].word, Patch(0, 1));
}

TEST_F(Playback, PassingMidnightStallsUntilItIsStopped) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  platform_.clock->SetSeconds(86399.0);
  int rounds = 0;
  platform_.events->on_serve = [&](int) {
    if (SecondsSinceMidnight() >= 86400.0) platform_.clock->SetSeconds(0.001);
    if (SecondsSinceMidnight() < 1000.0 && ++rounds == 100) tune_->Stopit();
  };
  PlayFrom();
  int notes = 0;
  for (const Timed& message : Sent()) notes += message.word == NoteOn(60, 1, 127);
  EXPECT_EQ(notes, 2);
}

}  // namespace
}  // namespace zelmar
