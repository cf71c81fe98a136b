// The small helpers that every window shares, each over all it may be given.
#include <gtest/gtest.h>

#include <algorithm>

#include "model/globals.h"
#include "model/key_tables.h"
#include "model/shell_sort.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

TEST(RecentTunes, MoveDownByOneAndLoseTheSixth) {
  ResetGlobals();
  QStringList wanted;
  for (int i = 1; i <= 9; ++i) {
    const QString name = QStringLiteral("T%1").arg(i == 5 ? 4 : i);  // one of them twice in a row
    AddRecentTune(name, name + QStringLiteral(" caption"));
    wanted.prepend(name);
    for (int place = 0; place < kRecentTuneCount; ++place) {
      const QString there = wanted.value(place);
      EXPECT_EQ(Global().RecentCodeNames[static_cast<std::size_t>(place)], there);
      EXPECT_EQ(Global().RecentCaptions[static_cast<std::size_t>(place)],
                there.isEmpty() ? QString() : there + QStringLiteral(" caption"));
    }
  }
  AddRecentTune(Global().RecentCodeNames[5], Global().RecentCaptions[5]);
  EXPECT_EQ(Global().RecentCodeNames[0], wanted[5]);
  EXPECT_EQ(Global().RecentCaptions[0], wanted[5] + QStringLiteral(" caption"));
  ResetGlobals();
}

TEST(SharedHelpers, GiveTheSmallerOfTwo) {
  for (const int a : {-32768, -1, 0, 7, 32767})
    for (const int b : {-32768, -1, 0, 7, 32767})
      EXPECT_EQ(SmallerOf(static_cast<std::int16_t>(a), static_cast<std::int16_t>(b)), std::min(a, b));
}

TEST(SharedHelpers, CapitaliseTheFirstSignAndKeepTheLast) {
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("a")), QStringLiteral("A"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("bb")), QStringLiteral("Bb"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("f#")), QStringLiteral("F#"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("xyz")), QStringLiteral("Xz"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("eXtraordinary")), QStringLiteral("Ey"));
}

TEST(SharedHelpers, UnderlineTwoBlanksAtMost) {
  EXPECT_EQ(BlanksToUnderscores(QString()), QString());
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("none")), QStringLiteral("none"));
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("a b")), QStringLiteral("a_b"));
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("a b c d")), QStringLiteral("a_b_c d"));
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("   ")), QStringLiteral("__ "));
}

TEST(SharedHelpers, SortColumnsByTheirKeysAndLoseNone) {
  Dice dice(6);
  for (int round = 0; round < 60; ++round) {
    const int count = dice(70), beyond = dice(5);
    std::vector<SortColumn> columns;
    for (int i = 0; i < count + beyond; ++i) columns.push_back({i, dice(20) - 10});
    const auto before = columns;
    ShellSortByKey(columns, count);
    ASSERT_EQ(columns.size(), before.size());
    std::vector<bool> seen(before.size(), false);
    for (int i = 0; i < count + beyond; ++i) {
      const SortColumn& column = columns[static_cast<std::size_t>(i)];
      EXPECT_EQ(column.key, before[static_cast<std::size_t>(column.position)].key);
      EXPECT_FALSE(seen[static_cast<std::size_t>(column.position)]);
      seen[static_cast<std::size_t>(column.position)] = true;
      if (i > 0 && i < count) {
        EXPECT_LE(columns[static_cast<std::size_t>(i - 1)].key, column.key);
      }
      if (i >= count) {
        EXPECT_EQ(column.position, i);
      }
    }
    EXPECT_THROW(ShellSortByKey(columns, count + beyond + 1), SubscriptError);
  }
}

TEST(SharedHelpers, FindTheKeyOfEverySignature) {
  LoadPitchNameTables();
  static const char* const kMajor[] = {"Cb", "Gb", "Db", "Ab", "Eb", "Bb", "F", "C",
                                       "G",  "D",  "A",  "E",  "B",  "F#", "C#"};
  for (int sharps = -7; sharps <= 7; ++sharps) {
    EXPECT_EQ(KeyNameFromSharps(static_cast<std::int16_t>(sharps), 0),
              QString::fromLatin1(kMajor[sharps + 7]));
    // A minor key has the signature of the major key three sharps down the circle.
    const QString minor = KeyNameFromSharps(static_cast<std::int16_t>(sharps), 1);
    const auto place = std::find(MinorKeyNames.begin(), MinorKeyNames.end(), minor) - MinorKeyNames.begin();
    ASSERT_LT(place, kKeyNameCount);
    EXPECT_EQ(MinorKeySharps[static_cast<std::size_t>(place)], sharps);
  }
  for (const int sharps : {-8, 8, 20, 98})
    EXPECT_THROW(KeyNameFromSharps(static_cast<std::int16_t>(sharps), 0), SubscriptError);
}

}  // namespace
}  // namespace zelmar
