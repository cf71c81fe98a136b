// A tune that plays, on the virtual clock: what goes out, when, and what is told.
#include "midi/playback_fixture.h"

namespace zelmar {
namespace {

using testing_support::SentMessage;

TEST_F(Playback, ATuneWithoutEventsReturnsAtOnce) {
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&finished] { ++finished; });
  std::int16_t bar = 0;
  tune_->Play(bar);
  EXPECT_EQ(bar, 0);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_EQ(finished, 0);
}

TEST_F(Playback, BarZeroMeansBarOneAndIsWrittenBack) {
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  std::int16_t bar = 0;
  tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune_->Play(bar);
  EXPECT_EQ(bar, 1);
  EXPECT_EQ(tune_->PlayStartBar(), 1);
}

TEST_F(Playback, StartsWithVolumeExpressionAndBanks) {
  tune_->Tracks()->Item(1)->SetChannel(3);
  tune_->Tracks()->Item(1)->SetBankMSB0(5);
  tune_->Tracks()->Item(1)->SetBankLSB32(6);
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  PlayFrom();
  const auto sent = Sent(0);
  for (std::uint32_t channel = 0; channel < 16; ++channel) {
    EXPECT_EQ(sent[2 * channel].word, 0xB0 + channel + 7 * 256 + 127 * 65536);
    EXPECT_EQ(sent[2 * channel + 1].word, 0xB0 + channel + 11 * 256 + 127 * 65536);
  }
  EXPECT_EQ(sent[32].word, 0xB2U + 0 * 256 + 5 * 65536);
  EXPECT_EQ(sent[33].word, 0xB2U + 32 * 256 + 6 * 65536);
}

TEST_F(Playback, NotesComeAtTheirTimesEachWithItsProgramChange) {
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 1.0)->SetInstrument(40);
  Add(MUSIC_NOTE, 1, 2, 60, "E4", 0.5)->SetVolume(80);
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 6U);
  EXPECT_EQ(sent[0].word, Patch(40, 1));
  EXPECT_EQ(sent[1].word, NoteOn(60, 1, 127));
  EXPECT_NEAR(sent[1].milliseconds, 0.0, 0.1);
  EXPECT_EQ(sent[2].word, NoteOn(60, 1, 0));
  EXPECT_NEAR(sent[2].milliseconds, 500.0, 2.1);
  EXPECT_EQ(sent[3].word, Patch(0, 1));
  EXPECT_EQ(sent[4].word, NoteOn(64, 1, 80));
  EXPECT_NEAR(sent[4].milliseconds, 750.0, 2.1);
  EXPECT_EQ(sent[5].word, NoteOn(64, 1, 0));
  EXPECT_NEAR(sent[5].milliseconds, 1000.0, 2.1);
}

TEST_F(Playback, TheEndOfANoteThatAsksForItsPatchSendsNone) {
  const auto note = Add(MUSIC_NOTE, 1, 1);
  note->SetInstrument(40);
  note->SetSendPatch(true);
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[0].word, Patch(40, 1));
  EXPECT_EQ(sent[1].word, NoteOn(60, 1, 127));
  EXPECT_EQ(sent[2].word, NoteOn(60, 1, 0));
}

TEST_F(Playback, AChordGoesOutOverSuccessiveBangs) {
  for (const char* pitch : {"C4", "E4", "G4"}) Add(MUSIC_NOTE, 1, 1, 0, pitch);
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  ASSERT_GE(sent.size(), 6U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(sent[2 * i].word, Patch(0, 1));
    EXPECT_EQ(sent[2 * i + 1].word & 0xFFU, 0x90U);
    EXPECT_NEAR(sent[2 * i + 1].milliseconds, 2.0 * static_cast<double>(i), 0.1);
  }
}

TEST_F(Playback, ANoteOfVolumeZeroStillGoesOut) {
  Add(MUSIC_NOTE, 1, 1)->SetVolume(0);
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  EXPECT_EQ(sent[0].word, Patch(0, 1));
  EXPECT_EQ(sent[1].word, NoteOn(60, 1, 0));
}

TEST_F(Playback, AnInstrumentOf255HasNoProgramChange) {
  Add(MUSIC_NOTE, 1, 1)->SetInstrument(255);
  Prepare();
  PlayFrom();
  EXPECT_EQ(Sent()[0].word, NoteOn(60, 1, 127));
}

TEST_F(Playback, EveryListedControllerIsSentAndTold) {
  const std::vector<EventType> listed = {0, 1, 5, 7, 10, 11, 32, 64, 65, 84, 91, 92, 93, 120, 121, 123};
  std::int16_t beat = 1;
  for (const EventType type : listed) {
    const auto tone = Add(type, static_cast<std::int16_t>(1 + (beat - 1) / 4),
                          static_cast<std::int16_t>(1 + (beat - 1) % 4));
    tone->SetChannel(5);
    tone->SetVolume(33);
    ++beat;
  }
  int told = 0;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&told](Tone&) { ++told; });
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), listed.size());
  for (std::size_t i = 0; i < listed.size(); ++i) {
    EXPECT_EQ(sent[i].word, 0xB4U + listed[i] * 256U + 33U * 65536U);
    EXPECT_NEAR(sent[i].milliseconds, 500.0 * static_cast<double>(i), 2.1);
  }
  EXPECT_EQ(told, 16);
}

TEST_F(Playback, EveryOtherTypeIsPassedOverAtOnce) {
  std::vector<EventType> others = {DUMMY_NOTE, TEMPO_CHANGE, POLY_KEY_PRESSURE, 2, 4, 8, 66, 67, 69, 127,
                                   135,        255};
  for (const EventType type : others) {
    const auto tone = Add(type, 3, 1);
    tone->SetVolume(0);
    tone->SetInstrument(120);
  }
  int told = 0;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&told](Tone&) { ++told; });
  Prepare();
  PlayFrom();
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(told, 0);
  // One bang each, none of them waiting for bar 3 at four seconds.
  EXPECT_NEAR((SecondsSinceMidnight() - start_) * 1000.0, 2.0 * static_cast<double>(others.size() - 1), 0.1);
}

TEST_F(Playback, BendAndPressureAreSentAndNotTold) {
  auto bend = Add(PITCH_BEND, 1, 1);
  bend->SetInstrument(12);
  bend->SetVolume(70);
  auto pressure = Add(CHANNEL_PRESSURE, 1, 2);
  pressure->SetVolume(99);
  pressure->SetChannel(16);
  int told = 0;
  QObject::connect(tune_.get(), &Tune::ControlEvent, [&told](Tone&) { ++told; });
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&told](Tone&) { ++told; });
  Prepare();
  PlayFrom();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(sent[0].word, 0xE0U + 12 * 256 + 70 * 65536);
  EXPECT_EQ(sent[1].word, 0xDFU + 99 * 256);
  EXPECT_EQ(told, 0);
}

TEST_F(Playback, NotesTellOfTheirStartAndEnd) {
  const auto note = Add(MUSIC_NOTE, 1, 1);
  std::vector<Tone*> started;
  std::vector<EventType> stopped;
  int tested = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&started](Tone& tone) { started.push_back(&tone); });
  QObject::connect(tune_.get(), &Tune::NoteStopped,
                   [&stopped](Tone& tone) { stopped.push_back(tone.EventType()); });
  QObject::connect(tune_.get(), &Tune::MelodyTested, [&tested] { ++tested; });
  Prepare();
  PlayFrom();
  EXPECT_EQ(started, (std::vector<Tone*>{note.get()}));
  EXPECT_EQ(stopped, (std::vector<EventType>{MUSIC_NOTE_OFF}));
  EXPECT_NEAR(tested, 251, 1);
}

// A note that was added by hand, and each that has sounded, sends its program change from then on.
TEST_F(Playback, NoNoteOffSendsAProgramChangeWhateverItsNoteDoes) {
  for (std::int16_t beat = 1; beat <= 2; ++beat) {
    const auto note = Add(MUSIC_NOTE, 1, beat);
    note->SetInstrument(40);
    note->SetSendPatch(true);
  }
  for (int time = 1; time <= 2; ++time) {
    Prepare();
    PlayFrom();
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), 6U) << time;
    for (std::size_t i = 0; i < sent.size(); i += 3) {
      EXPECT_EQ(sent[i].word, Patch(40, 1));
      EXPECT_EQ(sent[i + 1].word, NoteOn(60, 1, 127));
      EXPECT_EQ(sent[i + 2].word, NoteOn(60, 1, 0));
    }
  }
}

TEST_F(Playback, StartsFromABarAsTimeZero) {
  for (std::int16_t bar = 1; bar <= 4; ++bar) Add(MUSIC_NOTE, bar, 1, 0, bar == 3 ? "A4" : "C4");
  Prepare();
  PlayFrom(3);
  const auto sent = Sent();
  EXPECT_EQ(sent[1].word, NoteOn(69, 1, 127));
  EXPECT_NEAR(sent[1].milliseconds, 0.0, 0.1);
  EXPECT_EQ(sent.size(), 6U);
}

TEST_F(Playback, CountersReadBarAndBeatOfTheMetre) {
  tune_->SetBeatsPerBar(3);
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 6.0);
  Prepare();
  std::vector<std::pair<int, int>> positions;
  QObject::connect(tune_.get(), &Tune::Ticked,
                   [&] { positions.emplace_back(tune_->BarNumber(), tune_->BeatWithinBar()); });
  PlayFrom();
  // The note ends at the head of a third bar, which is none for that: there the counters stand still.
  const std::vector<std::pair<int, int>> expected = {{1, 1}, {1, 2}, {1, 3}, {2, 1}, {2, 2}, {2, 3}, {2, 3}};
  ASSERT_GE(positions.size(), 6U);
  for (std::size_t i = 0; i < positions.size(); ++i) EXPECT_EQ(positions[i], expected[i]) << i;
}

TEST_F(Playback, TheMetronomeClicksOnTheBeatsWithoutNoteOff) {
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 3.0);
  Prepare();
  tune_->SetHearTick(1);
  tune_->SetMetroVolume(90);
  PlayFrom();
  int clicks = 0;
  for (const Timed& message : Sent()) {
    if (message.word != NoteOn(60, 10, 90)) continue;
    EXPECT_NEAR(message.milliseconds, 500.0 * clicks++, 2.1);
  }
  EXPECT_EQ(clicks, 4);
}

TEST_F(Playback, TempoChangesMoveNotesAndBeats) {
  auto change = Add(TEMPO_CHANGE, 2, 1);
  change->SetVolume(0);
  change->SetInstrument(60);
  for (std::int16_t bar = 1; bar <= 2; ++bar)
    for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, bar, beat);
  Prepare();
  std::vector<double> beats;
  std::vector<int> tempos;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    beats.push_back((SecondsSinceMidnight() - start_) * 1000.0);
    tempos.push_back(tune_->TempoCurrent());
  });
  PlayFrom();
  std::vector<double> notes;
  for (const Timed& message : Sent())
    if (message.word == NoteOn(60, 1, 127)) notes.push_back(message.milliseconds);
  ASSERT_EQ(notes.size(), 8U);
  const double expected[] = {0, 500, 1000, 1500, 2000, 3000, 4000, 5000};
  for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(notes[i], expected[i], 8.0) << i;
  ASSERT_GE(beats.size(), 8U);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(beats[i], expected[i], 2.1) << i;
  // The tempo in force is adopted behind the tick of its beat.
  EXPECT_EQ(tempos[4], 120);
  EXPECT_EQ(tempos[5], 60);
  EXPECT_EQ(tune_->Tempo(), 120);
}

TEST_F(Playback, ATempoWrittenInTheMiddleWaitsForTheNextPlay) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, 1, beat);
  Prepare();
  int notes = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, [&](Tone&) {
    if (++notes == 2) tune_->SetTempo(240);
  });
  PlayFrom();
  EXPECT_NEAR((SecondsSinceMidnight() - start_) * 1000.0, 2000.0, 4.1);
  PlayFrom();
  EXPECT_NEAR((SecondsSinceMidnight() - start_) * 1000.0, 1000.0, 4.1);
}

TEST_F(Playback, ModesSendTheirMessageExceptGM) {
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  Global().MidiMode = QStringLiteral("GS");
  PlayFrom();
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 0);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GS"));
  const struct {
    const char* mode;
    QByteArray bytes;
  } rows[] = {{"GM2", QByteArray::fromHex("F07E7F0901F7")},
              {"GS", QByteArray::fromHex("F04110421240007F0041F7")},
              {"XG", QByteArray::fromHex("F043104C00007E00F7")}};
  for (const auto& row : rows) {
    tune_->SetMIDIMode(QString::fromLatin1(row.mode));
    PlayFrom();
    ASSERT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 1);
    EXPECT_EQ(platform_.midi->sent[32].bytes, row.bytes);
    // Each time, also when the device is in that mode already.
    PlayFrom();
    EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 1);
    EXPECT_EQ(Global().MidiMode, QString::fromLatin1(row.mode));
  }
}

}  // namespace
}  // namespace zelmar
