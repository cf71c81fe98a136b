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

QByteArray Packed(Tune& tune) {
  return PackTuneHead(tune) + PackTuneEvents(tune);
}

class PackedTune : public ::testing::Test {
 protected:
  ScriptedPlatform platform_;
};

TEST_F(PackedTune, ComesBackWithEveryField) {
  const auto tune = TuneWithEverything();
  const auto back = UnpackTune(Packed(*tune));
  EXPECT_EQ(Everything(*back), Everything(*tune));
  EXPECT_EQ(back->SavedFileName(), QStringLiteral("Ode"));
  EXPECT_NE(back->Changes(), back->ChangesSaved());
  EXPECT_EQ(back->TempoCurrent(), 96);
}

TEST_F(PackedTune, ANewTuneComesBackAsOneThatNeverWasSaved) {
  Tune tune;
  const auto back = UnpackTune(Packed(tune));
  EXPECT_EQ(Everything(*back), Everything(tune));
  EXPECT_TRUE(back->SavedFileName().isNull());
  EXPECT_EQ(back->Count(), 0);
}

TEST_F(PackedTune, AnUnchangedTuneComesBackUnchanged) {
  Tune tune;
  tune.SetFileName(QStringLiteral("Same"));
  tune.SetChangedSinceLastSaved(false);
  const auto back = UnpackTune(Packed(tune));
  EXPECT_FALSE(back->ChangedSinceLastSaved());
  EXPECT_EQ(back->SavedFileName(), QStringLiteral("Same"));
}

TEST_F(PackedTune, ATuneWithoutTracksGetsNoneBack) {
  Tune tune;
  tune.SetTracks(std::make_shared<Tracks>());
  EXPECT_EQ(UnpackTune(Packed(tune))->Tracks()->Count(), 0);
}

TEST_F(PackedTune, AnyTuneComesBackAsItWas) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    const auto tune = RandomTune(seed);
    ASSERT_EQ(Everything(*UnpackTune(Packed(*tune))), Everything(*tune)) << "seed " << seed;
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
  EXPECT_EQ(Everything(*UnpackTune(Packed(tune))), Everything(tune));
}

TEST_F(PackedTune, CutOffAtAnyByteItIsAFailure) {
  const auto tune = TuneWithEverything();
  const QByteArray bytes = Packed(*tune);
  for (qsizetype size = 0; size < bytes.size(); ++size)
    EXPECT_THROW(UnpackTune(bytes.left(size)), Failure) << size;
}

TEST_F(PackedTune, MoreBytesThanATuneAreAFailure) {
  const auto tune = TuneWithEverything();
  EXPECT_THROW(UnpackTune(Packed(*tune) + '\0'), Failure);
}

// Whatever comes of it, it is a tune or a failure, and nobody is shown a box about it.
TEST_F(PackedTune, AnyByteMayBeWrong) {
  const auto tune = TuneWithEverything();
  const QByteArray bytes = Packed(*tune);
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
  QByteArray bytes = Packed(tune);
  const QByteArray second = QByteArray::fromHex("45332211");
  ASSERT_EQ(bytes.count(second), 1);
  EXPECT_NO_THROW(UnpackTune(bytes));
  bytes.replace(second, QByteArray::fromHex("44332211"));
  EXPECT_THROW(UnpackTune(bytes), DuplicateKeyError);
}

}  // namespace
}  // namespace zelmar
