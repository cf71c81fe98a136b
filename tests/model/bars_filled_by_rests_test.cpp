// Notes and rests of every bar together are the bar: random melodies against a plain count of pulses.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/tune.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

struct Metre {
  int beats_per_bar;
  int beat_length;
};

class FilledBars : public ::testing::TestWithParam<Metre> {
 protected:
  FilledBars() : tune_(std::make_shared<Tune>()) {
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(GetParam().beats_per_bar));
    tune_->SetBeatLength(static_cast<std::uint8_t>(GetParam().beat_length));
  }

  int PulsesPerBeat() const { return 480 / GetParam().beat_length; }
  int PulsesPerBar() const { return PulsesPerBeat() * GetParam().beats_per_bar; }

  void AddAt(EventType type, int pulse, int length, int track) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetBar(static_cast<std::int16_t>(pulse / PulsesPerBar() + 1));
    tone->SetBeat(static_cast<std::int16_t>(pulse % PulsesPerBar() / PulsesPerBeat() + 1));
    tone->SetTick(static_cast<std::int16_t>(pulse % PulsesPerBeat()));
    tone->SetDuration(length / 120.0);
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tone->SetChannel(static_cast<std::uint8_t>(track));
    tone->SetBeatLength(tune_->BeatLength());
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tune_->Add(tone);
  }

  // A voice whose notes stay within their bars, with gaps of at least `step` pulses or none, and empty bars.
  void AddVoice(Dice& random, int track, int bars, int step) {
    for (int bar = 0; bar < bars; ++bar) {
      if (random(3) == 0) continue;
      int place = 0;
      const int steps = PulsesPerBar() / step;
      while (place < steps) {
        const int length = 1 + static_cast<int>(random(std::min(4, steps - place)));
        if (random(3) != 0) AddAt(MUSIC_NOTE, bar * PulsesPerBar() + place * step, length * step, track);
        place += length;
      }
    }
  }

  void AddTrack(int number) {
    tune_->Tracks()->Add({}, static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number), 0, false,
                         0, 0, QString::number(number));
  }

  // Every pulse of every bar belongs to one note or to one rest.
  void ExpectFull(int track, int bars) {
    std::vector<int> owners(static_cast<std::size_t>(bars * PulsesPerBar()), 0);
    const auto mark = [&](int from, int length) {
      for (int pulse = from; pulse < from + length; ++pulse) {
        ASSERT_GE(pulse, 0);
        ASSERT_LT(pulse, bars * PulsesPerBar());
        ++owners[static_cast<std::size_t>(pulse)];
      }
    };
    for (const auto& tone : *tune_)
      if (tone->EventType() == MUSIC_NOTE && tone->Track() == track)
        mark((tone->Bar() - 1) * PulsesPerBar() + (tone->Beat() - 1) * PulsesPerBeat() + tone->Tick(),
             static_cast<int>(std::lround(tone->Duration() * 120)));
    for (const auto& rest : *tune_->Tracks()->Item(QString::number(track))->Rests()) {
      const int from =
          (rest->Bar() - 1) * PulsesPerBar() + (rest->Beat() - 1) * PulsesPerBeat() + rest->Tick();
      const int length = static_cast<int>(std::lround(rest->Duration() * 120));
      EXPECT_GT(length, 12);
      EXPECT_EQ(from / PulsesPerBar(), (from + length - 1) / PulsesPerBar()) << "a rest passes its bar line";
      mark(from, length);
    }
    for (std::size_t pulse = 0; pulse < owners.size(); ++pulse)
      ASSERT_EQ(owners[pulse], 1) << "track " << track << ", bar "
                                  << pulse / static_cast<std::size_t>(PulsesPerBar()) + 1 << ", pulse "
                                  << pulse % static_cast<std::size_t>(PulsesPerBar());
  }

  std::shared_ptr<Tune> tune_;
};

TEST_P(FilledBars, OfOneVoiceWithoutNoteEnds) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed);
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(GetParam().beats_per_bar));
    tune_->SetBeatLength(static_cast<std::uint8_t>(GetParam().beat_length));
    AddVoice(random, 1, 8, PulsesPerBeat() / 2);
    tune_->SortStartTimes();
    tune_->CalcGaps(1);
    ExpectFull(1, tune_->BarCount());
  }
}

TEST_P(FilledBars, OfThreeVoicesAndAnEmptyTrackWithTheirNoteEnds) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed + 40);
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(GetParam().beats_per_bar));
    tune_->SetBeatLength(static_cast<std::uint8_t>(GetParam().beat_length));
    for (int track = 2; track <= 4; ++track) AddTrack(track);
    for (int track = 1; track <= 3; ++track) AddVoice(random, track, 4 + 2 * track, PulsesPerBeat() / 2);
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
    for (int track = 1; track <= 4; ++track) {
      tune_->CalcGaps(static_cast<std::uint8_t>(track));
      ExpectFull(track, tune_->BarCount());
    }
  }
}

TEST_P(FilledBars, OfAVoiceAmongControllersAndTempoChanges) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice random(seed + 80);
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(static_cast<std::int16_t>(GetParam().beats_per_bar));
    tune_->SetBeatLength(static_cast<std::uint8_t>(GetParam().beat_length));
    AddVoice(random, 1, 6, PulsesPerBeat() / 2);
    static const EventType kTypes[] = {7, 10, TEMPO_CHANGE, PITCH_BEND, DUMMY_NOTE};
    for (int i = 0; i < 10; ++i) AddAt(kTypes[random(5)], random(8 * PulsesPerBar()), 120, 1);
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
    tune_->CalcGaps(1);
    ExpectFull(1, tune_->BarCount());
  }
}

TEST_P(FilledBars, OfATuneOfOneLateNote) {
  AddAt(MUSIC_NOTE, 5 * PulsesPerBar() + PulsesPerBar() / 2 / 15 * 15, 15, 1);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  tune_->CalcGaps(1);
  ExpectFull(1, 6);
}

TEST_P(FilledBars, OfATuneOfADummyAlone) {
  AddAt(DUMMY_NOTE, 2 * PulsesPerBar(), 120, 1);
  tune_->CalcGaps(1);
  ExpectFull(1, 3);
  EXPECT_EQ(tune_->Tracks()->Item(QStringLiteral("1"))->Rests()->Count(), 3);
}

TEST_P(FilledBars, AreTheSameWhenTheyAreReckonedAgain) {
  Dice random(5);
  AddVoice(random, 1, 7, PulsesPerBeat() / 2);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  for (int i = 0; i < 3; ++i) {
    tune_->CalcGaps(1);
    ExpectFull(1, tune_->BarCount());
  }
}

INSTANTIATE_TEST_SUITE_P(Metres, FilledBars,
                         ::testing::Values(Metre{4, 4}, Metre{3, 4}, Metre{6, 8}, Metre{2, 2}, Metre{5, 8},
                                           Metre{9, 8}, Metre{1, 4}));

// --- Single rests ---

class SingleRests : public ::testing::Test {
 protected:
  std::shared_ptr<Tone> Note(int bar, int beat, int tick, double duration, int track = 1) {
    auto tone = std::make_shared<Tone>();
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetBeat(static_cast<std::int16_t>(beat));
    tone->SetTick(static_cast<std::int16_t>(tick));
    tone->SetDuration(duration);
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tone->SetBeatLength(tune_.BeatLength());
    tone->SetAbsRef(tune_.LastAbsRef() + 1);
    return tune_.Add(tone);
  }

  // Each rest as "bar.beat.tick:pulses".
  QStringList RestsOf(int track) {
    tune_.CalcGaps(static_cast<std::uint8_t>(track));
    QStringList texts;
    for (const auto& rest : *tune_.Tracks()->Item(QString::number(track))->Rests())
      texts.append(QStringLiteral("%1.%2.%3:%4")
                       .arg(rest->Bar())
                       .arg(rest->Beat())
                       .arg(rest->Tick())
                       .arg(rest->Duration() * 120));
    return texts;
  }

  Tune tune_;
};

TEST_F(SingleRests, StandBeforeBetweenAndBehindTheNotesOfABar) {
  Note(1, 2, 0, 0.5);
  Note(1, 3, 60, 0.5);
  EXPECT_EQ(RestsOf(1), QStringList({"1.1.0:120", "1.2.60:120", "1.4.0:120"}));
}

TEST_F(SingleRests, FillAnEmptyBarInTheMiddleWhole) {
  Note(1, 1, 0, 4);
  Note(4, 1, 0, 4);
  EXPECT_EQ(RestsOf(1), QStringList({"2.1.0:480", "3.1.0:480"}));
}

TEST_F(SingleRests, FillAnEmptyBarFromItsFirstBeatThoughAControllerStandsBehindTheNoteBefore) {
  Note(1, 1, 0, 1);
  const auto volume = Note(1, 3, 0, 1);
  volume->SetEventType(7);
  Note(3, 1, 0, 4);
  EXPECT_EQ(RestsOf(1), QStringList({"1.2.0:360", "2.1.0:480"}));
}

TEST_F(SingleRests, FillAnEmptyBarFromItsFirstBeatThoughNoteEndsStandInTheTune) {
  Note(1, 1, 0, 1);
  Note(4, 3, 0, 2);
  tune_.CalcNotesOff();
  tune_.SortStartTimes();
  EXPECT_EQ(RestsOf(1), QStringList({"1.2.0:360", "2.1.0:480", "3.1.0:480", "4.1.0:240"}));
}

TEST_F(SingleRests, FillAnEmptyTrackUpToTheLastBar) {
  tune_.Tracks()->Add({}, 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  Note(3, 1, 0, 1);
  EXPECT_EQ(RestsOf(2), QStringList({"1.1.0:480", "2.1.0:480", "3.1.0:480"}));
}

TEST_F(SingleRests, FillATrackThatEndsBeforeTheOthers) {
  tune_.Tracks()->Add({}, 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  Note(1, 1, 0, 2, 2);
  Note(3, 1, 0, 4, 1);
  tune_.CalcNotesOff();
  tune_.SortStartTimes();
  EXPECT_EQ(RestsOf(2), QStringList({"1.3.0:240", "2.1.0:480", "3.1.0:480"}));
}

TEST_F(SingleRests, ArePassedOverUpToATenthOfACrotchet) {
  Note(1, 1, 0, 0.9);
  Note(1, 2, 0, 3.0);
  EXPECT_EQ(RestsOf(1), QStringList());
}

TEST_F(SingleRests, AreMadeFromElevenHundredthsOfACrotchet) {
  Note(1, 1, 0, 0.89);
  Note(1, 2, 0, 3.0);
  tune_.CalcGaps(1);
  const auto rests = tune_.Tracks()->Item(QStringLiteral("1"))->Rests();
  ASSERT_EQ(rests->Count(), 1);
  EXPECT_NEAR(rests->Item(1)->Duration(), 0.11, 1e-9);
  EXPECT_EQ(rests->Item(1)->Bar(), 1);
  EXPECT_EQ(rests->Item(1)->Beat(), 1);
  EXPECT_NEAR(rests->Item(1)->Tick(), 106, 1);
}

TEST_F(SingleRests, DoNotFollowANoteThatPassesItsBarLine) {
  Note(1, 4, 0, 2.0);
  for (const QString& rest : RestsOf(1))
    EXPECT_FALSE(rest.startsWith(QLatin1String("1.4"))) << rest.toStdString();
  EXPECT_EQ(tune_.Tracks()->Item(QStringLiteral("1"))->Rests()->Item(1)->Duration(), 3.0);
}

TEST_F(SingleRests, OfTripletsAddUpToTheBar) {
  Note(1, 1, 0, 1.0 / 3);
  Note(1, 1, 80, 1.0 / 3);
  Note(1, 3, 40, 2.0 / 3);
  tune_.CalcGaps(1);
  double sum = 4.0 / 3;
  for (const auto& rest : *tune_.Tracks()->Item(QStringLiteral("1"))->Rests()) sum += rest->Duration();
  EXPECT_NEAR(sum, 4.0, 1e-6);
}

TEST_F(SingleRests, NeedATrackThatIsThere) {
  Note(1, 1, 0, 1);
  EXPECT_THROW(tune_.CalcGaps(9), SubscriptError);
}

TEST_F(SingleRests, NeedABeatLength) {
  Note(1, 1, 0, 1);
  tune_.SetBeatLength(0);
  EXPECT_THROW(tune_.CalcGaps(1), DivisionError);
}

}  // namespace
}  // namespace zelmar
