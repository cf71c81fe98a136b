// A playing sends every event of a random tune, in its time and in order, after what a start sends.
#include <algorithm>

#include "midi/playback_fixture.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

TEST_F(Playback, OfARandomTuneSendsEveryNoteInItsTimeAndInOrder) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed);
    platform_.clock->SetSeconds(36000.0);
    tune_ = std::make_shared<Tune>();
    tune_->SetTempo(static_cast<std::int16_t>(60 + random(100)));
    for (int i = 0; i < 60; ++i) {
      const auto note =
          Add(MUSIC_NOTE, static_cast<std::int16_t>(1 + random(5)), static_cast<std::int16_t>(1 + random(4)),
              static_cast<std::int16_t>(30 * (random(4))), "C4", (1 + random(8)) * 0.25);
      note->SetNumber(static_cast<std::int16_t>(40 + random(40)));
      note->SetChannel(static_cast<std::uint8_t>(1 + random(16)));
      note->SetVolume(static_cast<std::uint8_t>(1 + random(127)));
      note->SetOldVolume(note->Volume());
      note->SetInstrument(static_cast<std::uint8_t>(random(128)));
    }
    const auto slow = Add(TEMPO_CHANGE, 3, 2);
    slow->SetVolume(0);
    slow->SetInstrument(50);
    Prepare();
    PlayFrom();
    std::vector<std::uint32_t> wanted;
    std::vector<double> due;
    for (const auto& tone : *tune_) {
      const double time = tune_->TimeFromPulse(tone->Bar(), tone->Beat(), tone->Tick(), 4, 4);
      if (tone->EventType() == MUSIC_NOTE) {
        wanted.push_back(Patch(tone->Instrument(), tone->Channel()));
        due.push_back(time);
      }
      if (tone->EventType() == MUSIC_NOTE || tone->EventType() == MUSIC_NOTE_OFF) {
        wanted.push_back(NoteOn(tone->Number(), tone->Channel(), tone->Volume()));
        due.push_back(time);
      }
    }
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), wanted.size());
    for (std::size_t i = 0; i < sent.size(); ++i) {
      EXPECT_EQ(sent[i].word, wanted[i]) << i;
      EXPECT_GE(sent[i].milliseconds, due[i] - 0.01) << i;
      const auto level = static_cast<double>(std::count(due.begin(), due.end(), due[i]));
      EXPECT_LE(sent[i].milliseconds, due[i] + 2.0 * (level + 4.0)) << i;
    }
  }
}

TEST_F(Playback, OfEventsAtOneTimeSendsEndsThenControllersThenNotes) {
  Add(MUSIC_NOTE, 1, 2, 0, "C4");
  Add(7, 1, 2)->SetVolume(12);
  Add(MUSIC_NOTE, 1, 1, 0, "C4");
  Prepare();
  PlayFrom();
  std::vector<std::uint32_t> words;
  for (const Timed& sent : Sent())
    if ((sent.word & 0xF0) != 0xC0) words.push_back(sent.word);
  const std::vector<std::uint32_t> wanted = {NoteOn(60, 1, 127), NoteOn(60, 1, 0), 0x000C07B0,
                                             NoteOn(60, 1, 127), NoteOn(60, 1, 0)};
  EXPECT_EQ(words, wanted);
}

TEST_F(Playback, OfNoEventsReturnsAtOnceAndSendsNothing) {
  PlayFrom();
  EXPECT_FALSE(tune_->Playing());
  EXPECT_TRUE(platform_.midi->sent.empty());
}

TEST_F(Playback, FromBarZeroIsFromBarOne) {
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  std::int16_t bar = 0;
  tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune_->Play(bar);
  EXPECT_EQ(bar, 1);
  EXPECT_EQ(tune_->PlayStartBar(), 1);
}

TEST_F(Playback, EndsWithTheVolumesThatWereStored) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) {
    const auto note = Add(MUSIC_NOTE, 1, beat);
    note->SetOldVolume(40 + beat);
    note->SetVolume(0);
  }
  Prepare();
  PlayFrom();
  for (const auto& tone : *tune_) {
    if (tone->EventType() == MUSIC_NOTE) {
      EXPECT_EQ(tone->Volume(), 40 + tone->Beat());
    }
  }
}

TEST_F(Playback, ThatIsStoppedLeavesTheVolumesAsTheyAre) {
  for (std::int16_t beat = 1; beat <= 4; ++beat) {
    const auto note = Add(MUSIC_NOTE, 1, beat);
    note->SetOldVolume(40);
    note->SetVolume(20);
  }
  Prepare();
  QObject context;
  int finished = 0;
  QObject::connect(tune_.get(), &Tune::Finished, &context, [&] {
    EXPECT_FALSE(tune_->Playing());
    ++finished;
  });
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context, [&](Tone&) { tune_->Stopit(); });
  PlayFrom();
  EXPECT_EQ(finished, 1);
  for (const auto& tone : *tune_) {
    if (tone->EventType() == MUSIC_NOTE) {
      EXPECT_EQ(tone->Volume(), 20);
    }
  }
}

TEST_F(Playback, PutsTheDeviceIntoTheTunesModeButNotIntoPlainGM) {
  const std::pair<const char*, QByteArray> kModes[] = {{"GM", {}},
                                                       {"GM2", QByteArray::fromHex("F07E7F0901F7")},
                                                       {"GS", QByteArray::fromHex("F04110421240007F0041F7")},
                                                       {"XG", QByteArray::fromHex("F043104C00007E00F7")}};
  for (const auto& [mode, bytes] : kModes) {
    tune_ = std::make_shared<Tune>();
    tune_->SetMIDIMode(QString::fromLatin1(mode));
    Add(MUSIC_NOTE, 1, 1);
    Prepare();
    Global().MidiMode = QStringLiteral("before");
    PlayFrom();
    std::vector<QByteArray> sent;
    for (const auto& message : platform_.midi->sent)
      if (message.kind == testing_support::SentMessage::Kind::kLong) sent.push_back(message.bytes);
    if (bytes.isEmpty()) {
      EXPECT_TRUE(sent.empty());
      EXPECT_EQ(Global().MidiMode, QStringLiteral("before"));
    } else {
      ASSERT_EQ(sent.size(), 1U);
      EXPECT_EQ(sent[0], bytes);
      EXPECT_EQ(Global().MidiMode, QString::fromLatin1(mode));
    }
  }
}

TEST_F(Playback, SetsVolumesAndExpressionsAndThenTheBanksOfTheTracks) {
  tune_->Tracks()->Item(1)->SetBankMSB0(5);
  tune_->Tracks()->Item(1)->SetBankLSB32(6);
  tune_->Tracks()->Add({}, 2, 11, 0, false, 7, 8, QStringLiteral("2"));
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  PlayFrom();
  std::vector<std::uint32_t> wanted;
  for (int channel = 0; channel < 16; ++channel)
    for (const int controller : {7, 11})
      wanted.push_back(static_cast<std::uint32_t>(0xB0 + channel + controller * 256 + 127 * 65536));
  for (const std::uint32_t bank : {0x000500B0U, 0x000620B0U, 0x000700BAU, 0x000820BAU})
    wanted.push_back(bank);
  const auto sent = Sent(0);
  ASSERT_GE(sent.size(), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_EQ(sent[i].word, wanted[i]) << i;
}

}  // namespace
}  // namespace zelmar
