// Where the beats of a playing come, and what it begins with in a later bar.
#include <algorithm>
#include <map>

#include "midi/playback_fixture.h"
#include "midi/played_events.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

struct Beat {
  double milliseconds;
  int bar;
  int beat;
  int tempo;
  int tempo_after = 0;
};

class BeatsOfAPlaying : public Playback {
 protected:
  std::shared_ptr<Tone> AddTempo(int bar, int beat, int tempo, int tick = 0) {
    const auto tone = Add(TEMPO_CHANGE, static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat),
                          static_cast<std::int16_t>(tick));
    tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
    return tone;
  }

  void AddBars(int bars) {
    for (int bar = 1; bar <= bars; ++bar)
      for (int beat = 1; beat <= tune_->BeatsPerBar(); ++beat)
        Add(MUSIC_NOTE, static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat), 0, "C4",
            4.0 / tune_->BeatLength());
  }

  void Listen() {
    QObject::connect(tune_.get(), &Tune::Ticked, &context_, [this] {
      beats_.push_back({(SecondsSinceMidnight() - start_) * 1000.0, tune_->BarNumber(),
                        tune_->BeatWithinBar(), tune_->TempoCurrent()});
    });
    // The tempo of a change comes into force right after its beat.
    QObject::connect(tune_.get(), &Tune::MelodyTested, &context_, [this] {
      if (!beats_.empty()) beats_.back().tempo_after = tune_->TempoCurrent();
    });
  }

  double TimeOf(int bar, int beat) {
    return tune_->TimeFromPulse(static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat), 0,
                                tune_->BeatsPerBar(), tune_->BeatLength());
  }

  // The last change at or before the beat.
  int TempoAt(int bar, int beat) {
    int tempo = tune_->Tempo();
    for (const auto& change : *tune_->TempoChanges())
      if (change->Bar() < bar || (change->Bar() == bar && change->Beat() <= beat)) tempo = change->NewTempo();
    return tempo;
  }

  // Every beat from the start bar to the end of the tune, each in its place and in its time.
  void ExpectBeats(int start_bar, int bars) {
    const auto wanted = static_cast<std::size_t>((bars - start_bar + 1) * tune_->BeatsPerBar());
    ASSERT_GE(beats_.size(), wanted);
    EXPECT_EQ(beats_[0].tempo, TempoAt(start_bar, 1));
    for (std::size_t i = 0; i < wanted; ++i) {
      const int bar = start_bar + static_cast<int>(i) / tune_->BeatsPerBar();
      const int beat = 1 + static_cast<int>(i) % tune_->BeatsPerBar();
      EXPECT_EQ(beats_[i].bar, bar) << i;
      EXPECT_EQ(beats_[i].beat, beat) << i;
      EXPECT_EQ(beats_[i].tempo_after, TempoAt(bar, beat)) << bar << '.' << beat;
      EXPECT_NEAR(beats_[i].milliseconds, TimeOf(bar, beat) - TimeOf(start_bar, 1), 0.01)
          << bar << '.' << beat;
    }
  }

  QObject context_;
  std::vector<Beat> beats_;
};

TEST_F(BeatsOfAPlaying, ComeWhereTheTimesAreThoughABeatIsNoWholeNumberOfMilliseconds) {
  tune_->SetBeatLength(16);
  tune_->SetTempo(123);  // a crotchet of 488 ms, a beat of 122
  AddBars(6);
  Prepare();
  Listen();
  PlayFrom();
  ExpectBeats(1, 6);
}

TEST_F(BeatsOfAPlaying, FollowARitardando) {
  AddBars(5);
  for (int beat = 1; beat <= 4; ++beat) AddTempo(3, beat, 120 - 15 * beat);
  for (int beat = 1; beat <= 4; ++beat) AddTempo(4, beat, 60 - 10 * beat);
  Prepare();
  Listen();
  PlayFrom();
  ExpectBeats(1, 5);
}

TEST_F(BeatsOfAPlaying, FollowChangesInTheMiddleOfABeat) {
  AddBars(4);
  AddTempo(2, 2, 60, 60);
  AddTempo(3, 1, 200, 30);
  Prepare();
  Listen();
  PlayFrom();
  ASSERT_GE(beats_.size(), 16U);
  for (std::size_t i = 0; i < 16; ++i)
    EXPECT_NEAR(beats_[i].milliseconds, TimeOf(1 + static_cast<int>(i) / 4, 1 + static_cast<int>(i) % 4),
                0.01)
        << i;
}

TEST_F(BeatsOfAPlaying, BeginInTheTempoOfALaterStartBar) {
  AddBars(8);
  AddTempo(2, 1, 40);
  AddTempo(6, 1, 240);
  Prepare();
  Listen();
  PlayFrom(4);
  ExpectBeats(4, 8);
}

TEST_F(BeatsOfAPlaying, BeginInTheTempoOfAChangeAtTheHeadOfTheStartBar) {
  AddBars(6);
  AddTempo(3, 1, 55);
  Prepare();
  Listen();
  PlayFrom(3);
  ExpectBeats(3, 6);
  EXPECT_EQ(beats_.at(0).tempo, 55);
}

TEST_F(BeatsOfAPlaying, BeginInTheTunesTempoBeforeTheFirstChange) {
  tune_->SetTempo(75);
  AddBars(6);
  AddTempo(4, 1, 200);
  Prepare();
  Listen();
  PlayFrom(4);
  beats_.clear();
  platform_.clock->SetSeconds(40000.0);
  PlayFrom(2);
  ExpectBeats(2, 6);
  EXPECT_EQ(beats_.at(0).tempo, 75);
}

TEST_F(BeatsOfAPlaying, OfRandomTunesAreThoseOfTheTimeModel) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed);
    platform_.clock->SetSeconds(36000.0);
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(2 + random(5)));
    tune_->SetBeatLength(static_cast<std::uint8_t>(2 << (random(3))));
    tune_->SetTempo(static_cast<std::int16_t>(40 + random(200)));
    AddBars(6);
    for (int i = 0; i < 6; ++i) AddTempo(1 + random(6), 1 + random(tune_->BeatsPerBar()), 30 + random(300));
    Prepare();
    beats_.clear();
    Listen();
    const int start_bar = 1 + random(4);
    PlayFrom(static_cast<std::int16_t>(start_bar));
    ExpectBeats(start_bar, 6);
  }
}

TEST_F(BeatsOfAPlaying, StandStillOnTheLastBeatWhileTheNotesRingOn) {
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 4.0);
  Prepare();
  Listen();
  // Nobody but the note's end is in bar 2, and that does not count.
  EXPECT_EQ(tune_->BarCount(), 1);
  PlayFrom();
  for (const Beat& beat : beats_) EXPECT_EQ(beat.bar, 1);
  ASSERT_GE(beats_.size(), 4U);
  EXPECT_EQ(beats_.back().beat, 4);
}

TEST_F(BeatsOfAPlaying, ClickOnceEachWithTheMetronomesSound) {
  AddBars(3);
  tune_->SetHearTick(1);
  tune_->SetTickSound(76);
  tune_->SetMetroVolume(99);
  Prepare();
  Listen();
  PlayFrom();
  std::vector<double> clicks;
  for (const Timed& sent : Sent())
    if (sent.word == NoteOn(76, 10, 99)) clicks.push_back(sent.milliseconds);
  ASSERT_EQ(clicks.size(), beats_.size());
  for (std::size_t i = 0; i < clicks.size(); ++i) EXPECT_NEAR(clicks[i], beats_[i].milliseconds, 0.01);
}

TEST_F(BeatsOfAPlaying, OfThreeInABarReadAsTheyAreCounted) {
  tune_->SetBeatsPerBar(3);
  AddBars(2);
  Prepare();
  Listen();
  PlayFrom();
  ASSERT_GE(beats_.size(), 4U);
  const int wanted[4][2] = {{1, 1}, {1, 2}, {1, 3}, {2, 1}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(beats_[i].bar, wanted[i][0]);
    EXPECT_EQ(beats_[i].beat, wanted[i][1]);
  }
}

// --- What a later start finds set ---

class LaterStarts : public Playback {
 protected:
  std::shared_ptr<Tone> AddControl(EventType type, int channel, int bar, int beat, int value, int lsb = 0) {
    const auto tone = Add(type, static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat));
    tone->SetChannel(static_cast<std::uint8_t>(channel));
    tone->SetVolume(static_cast<std::uint8_t>(value));
    tone->SetInstrument(static_cast<std::uint8_t>(lsb));
    return tone;
  }
  static std::uint32_t Control(int controller, int channel, int value) {
    return static_cast<std::uint32_t>(175 + channel + controller * 256 + value * 65536);
  }
  static std::uint32_t Bend(int channel, int lsb, int msb) {
    return static_cast<std::uint32_t>(223 + channel + lsb * 256 + msb * 65536);
  }

  // Status byte and, for a controller, its number: what a message sets, against the value it sets.
  static void Take(std::map<std::uint32_t, std::uint32_t>& set, std::uint32_t word) {
    const std::uint32_t status = word & 0xF0;
    if (status == 0xB0) set[word & 0xFFFF] = word >> 16;
    if (status == 0xE0) set[word & 0xFF] = word >> 8;
  }

  // What all messages before the first note have set.
  std::map<std::uint32_t, std::uint32_t> SetBeforeTheFirstNote() const {
    std::map<std::uint32_t, std::uint32_t> set;
    for (const Timed& sent : Sent(0)) {
      if ((sent.word & 0xF0) == 0xC0 || (sent.word & 0xF0) == 0x90) break;
      Take(set, sent.word);
    }
    return set;
  }
};

TEST_F(LaterStarts, FindTheLastControllersAndBendBeforeThem) {
  AddControl(7, 1, 1, 1, 50);
  AddControl(7, 1, 2, 1, 60);
  AddControl(10, 1, 2, 2, 20);
  AddControl(PITCH_BEND, 1, 2, 3, 70, 5);
  AddControl(7, 2, 1, 1, 33);
  Add(MUSIC_NOTE, 1, 1, 0, "C4", 12.0);
  Add(MUSIC_NOTE, 4, 1, 0, "D4");
  Prepare();
  PlayFrom(4);
  auto set = SetBeforeTheFirstNote();
  EXPECT_EQ(set[0x07B0], 60U);
  EXPECT_EQ(set[0x0AB0], 20U);
  EXPECT_EQ(set[0x00E0], 70U * 256 + 5);
  EXPECT_EQ(set[0x07B1], 33U);
  const auto sent = Sent();
  EXPECT_EQ(
      std::count_if(sent.begin(), sent.end(), [](const Timed& one) { return one.word == Control(7, 1, 50); }),
      0);
}

TEST_F(LaterStarts, FindABankOfTheMiddleAndNotThatOfTheTrack) {
  tune_->Tracks()->Item(1)->SetBankMSB0(9);
  AddControl(0, 1, 1, 1, 4);
  AddControl(32, 1, 1, 1, 3);
  Add(MUSIC_NOTE, 1, 1);
  Add(MUSIC_NOTE, 2, 1);
  Prepare();
  PlayFrom(2);
  auto set = SetBeforeTheFirstNote();
  EXPECT_EQ(set[0x00B0], 4U);
  EXPECT_EQ(set[0x20B0], 3U);
}

TEST_F(LaterStarts, LeaveOutControllersThatPlayingDoesNotSend) {
  AddControl(2, 1, 1, 1, 44);
  AddControl(74, 1, 1, 1, 45);
  Add(MUSIC_NOTE, 1, 1);
  Add(MUSIC_NOTE, 2, 1);
  Prepare();
  PlayFrom(2);
  for (const Timed& sent : Sent(0)) {
    EXPECT_NE(sent.word, Control(2, 1, 44));
    EXPECT_NE(sent.word, Control(74, 1, 45));
  }
}

TEST_F(LaterStarts, AreNotMadeByPlayingFromTheFirstBar) {
  AddControl(7, 1, 1, 1, 50);
  Add(MUSIC_NOTE, 1, 1);
  Prepare();
  PlayFrom(1);
  const auto sent = Sent();
  EXPECT_EQ(
      std::count_if(sent.begin(), sent.end(), [](const Timed& one) { return one.word == Control(7, 1, 50); }),
      1);
}

TEST_F(LaterStarts, OfRandomTunesFindWhatPlayingUpToThereHadSet) {
  for (unsigned seed = 1; seed <= 15; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed);
    platform_.clock->SetSeconds(36000.0);
    tune_ = std::make_shared<Tune>();
    static const EventType kTypes[] = {0, 1, 5, 7, 10, 11, 32, 64, 65, 84, 91, 92, 93, PITCH_BEND, 2, 99};
    for (int i = 0; i < 60; ++i)
      AddControl(kTypes[random(static_cast<int>(std::size(kTypes)))], 1 + random(4), 1 + random(6),
                 1 + random(4), random(128), random(128));
    for (int bar = 1; bar <= 7; ++bar) Add(MUSIC_NOTE, static_cast<std::int16_t>(bar), 4, 60, "C4", 0.25);
    Prepare();
    const int start_bar = 2 + random(5);
    std::map<std::uint32_t, std::uint32_t> wanted;
    for (const auto& tone : *tune_) {
      if (tone->Bar() >= start_bar) break;
      if (tone->EventType() == PITCH_BEND)
        Take(wanted, Bend(tone->Channel(), tone->Instrument(), tone->Volume()));
      if (IsPlayedController(tone->EventType()))
        Take(wanted, Control(tone->EventType(), tone->Channel(), tone->Volume()));
    }
    // Up to the first event of the bar itself nothing else may be set.
    PlayFrom(static_cast<std::int16_t>(start_bar));
    std::map<std::uint32_t, std::uint32_t> found;
    std::size_t in_bar = 0;
    for (const auto& tone : *tune_)
      in_bar += tone->Bar() >= start_bar &&
                (tone->EventType() == PITCH_BEND || IsPlayedController(tone->EventType()));
    std::vector<std::uint32_t> words;
    for (const Timed& sent : Sent())
      if ((sent.word & 0xF0) == 0xB0 || (sent.word & 0xF0) == 0xE0) words.push_back(sent.word);
    ASSERT_EQ(words.size(), wanted.size() + in_bar);
    for (std::size_t i = 0; i < wanted.size(); ++i) Take(found, words[i]);
    EXPECT_EQ(found, wanted);
  }
}

}  // namespace
}  // namespace zelmar
