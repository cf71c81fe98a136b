// Random tunes that are packed and unpacked, and packed bytes that are damaged.
#include <gtest/gtest.h>

#include "platform/failure.h"
#include "store/packed_tune.h"
#include "support/dice.h"
#include "support/whole_tune.h"

namespace zelmar::testing_support {
namespace {

TEST(KeptTunes, ComeBackWholeWhateverTheSliceThatWasPacked) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    const auto tune = RandomTune(seed);
    const auto before = Everything(*tune);
    TunePacker packer(tune);
    int slices = 0;
    while (!packer.Advance(1 + static_cast<qsizetype>(seed % 5))) ASSERT_LT(++slices, 100000);
    const auto again = UnpackTune(packer.Head() + packer.Events());
    EXPECT_EQ(Everything(*again), before) << seed;
    EXPECT_EQ(Everything(*tune), before) << seed;
  }
}

TEST(KeptTunes, AreTheTuneAsItIsThoughItChangesBetweenTwoSlices) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    const auto tune = TuneWithEverything();
    TunePacker packer(tune);
    packer.Advance(1);
    if (seed % 2 == 0)
      tune->SetTitle(QStringLiteral("Changed %1").arg(seed));
    else {
      auto tone = std::make_shared<Tone>();
      tone->SetAbsRef(tune->LastAbsRef() + 1);
      tune->Add(tone);
    }
    for (int slices = 0; !packer.Advance(1); ++slices) ASSERT_LT(slices, 100000);
    EXPECT_EQ(Everything(*UnpackTune(packer.Head() + packer.Events())), Everything(*tune)) << seed;
  }
}

TEST(KeptTunes, ThatAreCutShortAreRefused) {
  const auto tune = TuneWithEverything();
  const QByteArray bytes = PackedWhole(*tune);
  for (qsizetype length = 0; length < bytes.size(); length += 1 + length / 16)
    EXPECT_THROW(UnpackTune(bytes.left(length)), Failure) << length;
  EXPECT_THROW(UnpackTune(bytes + 'x'), Failure);
}

TEST(KeptTunes, ThatAreDamagedAreRefusedOrReadAndNeverHarm) {
  Dice dice(8);
  const auto tune = TuneWithEverything();
  const QByteArray bytes = PackedWhole(*tune);
  int refused = 0, read = 0;
  for (int i = 0; i < 3000; ++i) {
    QByteArray damaged = bytes;
    for (int hits = 1 + dice(4); hits > 0; --hits)
      damaged[dice(static_cast<int>(bytes.size()))] = static_cast<char>(dice(256));
    try {
      EXPECT_NE(UnpackTune(damaged), nullptr);
      ++read;
    } catch (const Failure&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
  EXPECT_EQ(refused + read, 3000);
}

}  // namespace
}  // namespace zelmar::testing_support
