// A tune as bytes and back: every field in its own width, and bytes that are no tune.
#include "store/packed_tune.h"

#include <gtest/gtest.h>

#include "model/tune.h"
#include "platform/failure.h"
#include "support/scripted_services.h"
#include "support/whole_tune.h"

namespace zelmar {
namespace {

using namespace testing_support;

class PackedTune : public ::testing::Test {
 protected:
  ScriptedPlatform platform_;
};

TEST_F(PackedTune, ComesBackWithEveryField) {
  const auto tune = TuneWithEverything();
  const auto back = UnpackTune(PackedWhole(*tune));
  EXPECT_EQ(Everything(*back), Everything(*tune));
  EXPECT_EQ(back->SavedFileName(), QStringLiteral("Ode"));
  EXPECT_NE(back->Changes(), back->ChangesSaved());
  EXPECT_EQ(back->TempoCurrent(), 96);
}

TEST_F(PackedTune, ANewTuneComesBackAsOneThatNeverWasSaved) {
  Tune tune;
  const auto back = UnpackTune(PackedWhole(tune));
  EXPECT_EQ(Everything(*back), Everything(tune));
  EXPECT_TRUE(back->SavedFileName().isNull());
  EXPECT_EQ(back->Count(), 0);
}

TEST_F(PackedTune, AnUnchangedTuneComesBackUnchanged) {
  Tune tune;
  tune.SetFileName(QStringLiteral("Same"));
  tune.SetChangedSinceLastSaved(false);
  const auto back = UnpackTune(PackedWhole(tune));
  EXPECT_FALSE(back->ChangedSinceLastSaved());
  EXPECT_EQ(back->SavedFileName(), QStringLiteral("Same"));
}

TEST_F(PackedTune, ATuneWithoutTracksGetsNoneBack) {
  Tune tune;
  tune.SetTracks(std::make_shared<Tracks>());
  EXPECT_EQ(UnpackTune(PackedWhole(tune))->Tracks()->Count(), 0);
}

TEST_F(PackedTune, AnyTuneComesBackAsItWas) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    const auto tune = RandomTune(seed);
    ASSERT_EQ(Everything(*UnpackTune(PackedWhole(*tune))), Everything(*tune)) << "seed " << seed;
  }
}

TEST_F(PackedTune, TheExtremesOfEveryWidthComeBack) {
  Tune tune;
  for (const bool high : {false, true}) {
    const auto extreme = [high]<typename T>(T) {
      return high ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    };
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(extreme(std::int32_t{}));
    tone->SetBar(extreme(std::int16_t{}));
    tone->SetBeat(extreme(std::int16_t{}));
    tone->SetTick(extreme(std::int16_t{}));
    tone->SetBeatsPerBar(extreme(std::int16_t{}));
    tone->SetOldVolume(extreme(std::int32_t{}));
    tone->SetDuration(high ? std::numeric_limits<double>::infinity()
                           : std::numeric_limits<double>::denorm_min());
    tune.Tones()->Add(std::move(tone));
  }
  EXPECT_EQ(Everything(*UnpackTune(PackedWhole(tune))), Everything(tune));
}

// --- In slices ---

// Packs slice by slice, acting between two of them, and gives the tune that comes of it.
template <typename Act>
QStringList InSlices(const std::shared_ptr<Tune>& tune, qsizetype slice, Act act) {
  TunePacker packer(tune);
  for (int turn = 1; !packer.Advance(slice); ++turn) {
    act(turn);
    if (turn > 1000) throw std::runtime_error("packing does not end");
  }
  return Everything(*UnpackTune(packer.Head() + packer.Events()));
}

TEST_F(PackedTune, InSlicesItIsTheSame) {
  const auto tune = TuneWithEverything();
  for (const qsizetype slice : {1, 2, 3, 1000})
    EXPECT_EQ(InSlices(tune, slice, [](int) {}), Everything(*tune)) << slice;
}

TEST_F(PackedTune, AChangeBetweenTwoSlicesIsInIt) {
  for (int when = 1; when < 6; ++when) {
    const auto tune = TuneWithEverything();
    const auto lines = InSlices(tune, 1, [&](int turn) {
      if (turn != when) return;
      tune->Item(1)->SetVolume(3);
      tune->SetChangedSinceLastSaved(true);
    });
    EXPECT_EQ(lines, Everything(*tune)) << when;
  }
}

TEST_F(PackedTune, WhatMarksNothingIsInItTooWheneverItComes) {
  const auto tune = TuneWithEverything();
  const auto lines = InSlices(tune, 1, [&](int turn) {
    if (turn == 2) tune->SetTempo(222);
    if (turn == 3) tune->CalcNotesOff();
    if (turn == 4) tune->SortStartTimes();
    if (turn == 5) tune->Remove(1);
  });
  EXPECT_EQ(lines, Everything(*tune));
}

TEST_F(PackedTune, ATuneThatChangesAllTheTimeIsPackedAllTheSame) {
  const auto tune = TuneWithEverything();
  const auto lines = InSlices(tune, 1, [&](int turn) { tune->SetTitle(QString::number(turn)); });
  EXPECT_EQ(lines, Everything(*tune));
}

// --- Bytes that are no tune ---

TEST_F(PackedTune, CutOffAtAnyByteItIsAFailure) {
  const auto tune = TuneWithEverything();
  const QByteArray bytes = PackedWhole(*tune);
  for (qsizetype size = 0; size < bytes.size(); ++size)
    EXPECT_THROW(UnpackTune(bytes.left(size)), Failure) << size;
}

TEST_F(PackedTune, MoreBytesThanATuneAreAFailure) {
  const auto tune = TuneWithEverything();
  EXPECT_THROW(UnpackTune(PackedWhole(*tune) + '\0'), Failure);
}

// Whatever comes of it, it is a tune or a failure, and nobody is shown a box about it.
TEST_F(PackedTune, AnyByteMayBeWrong) {
  const auto tune = TuneWithEverything();
  const QByteArray bytes = PackedWhole(*tune);
  int failures = 0;
  for (qsizetype place = 0; place < bytes.size(); ++place) {
    for (const int flip : {0x01, 0x80, 0xFF}) {
      QByteArray wrong = bytes;
      wrong[place] = static_cast<char>(wrong[place] ^ flip);
      try {
        Everything(*UnpackTune(wrong));
      } catch (const Failure&) {
        ++failures;
      }
    }
  }
  EXPECT_GT(failures, 0);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(PackedTune, RandomBytesAreAFailure) {
  quint32 state = 1;
  for (int round = 0; round < 2000; ++round) {
    QByteArray bytes(static_cast<qsizetype>(state % 300), Qt::Uninitialized);
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
    EXPECT_THROW(UnpackTune(bytes), Failure);
  }
}

TEST_F(PackedTune, TwoEventsOfOneNumberAreAFailure) {
  Tune tune;
  for (const std::int32_t abs_ref : {0x11223344, 0x11223345}) {
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(abs_ref);
    tune.Tones()->Add(std::move(tone));
  }
  QByteArray bytes = PackedWhole(tune);
  const QByteArray second = QByteArray::fromHex("45332211");
  ASSERT_EQ(bytes.count(second), 1);
  EXPECT_NO_THROW(UnpackTune(bytes));
  bytes.replace(second, QByteArray::fromHex("44332211"));
  EXPECT_THROW(UnpackTune(bytes), DuplicateKeyError);
}

}  // namespace
}  // namespace zelmar
