#include "model/collection.h"

#include <gtest/gtest.h>

#include <random>

#include "model/companions.h"
#include "model/tones.h"

namespace zelmar {
namespace {

std::shared_ptr<Tone> ToneWith(std::int32_t abs_ref, EventType type = MUSIC_NOTE) {
  auto tone = std::make_shared<Tone>();
  tone->SetAbsRef(abs_ref);
  tone->SetEventType(type);
  return tone;
}

std::vector<std::int32_t> Order(const Tones& tones) {
  std::vector<std::int32_t> order;
  for (const auto& tone : tones) order.push_back(tone->AbsRef());
  return order;
}

TEST(Collection, CountsFromOne) {
  Words words;
  const auto first = words.Add(0, 1, 1, QStringLiteral("la"));
  words.Add(60, 2, 3, QStringLiteral("lu"));
  EXPECT_EQ(words.Count(), 2);
  EXPECT_EQ(words.Item(1), first);
  EXPECT_EQ(words.Item(2)->Bar(), 3);
  EXPECT_EQ(words.Item(2)->Beat(), 2);
  EXPECT_EQ(words.Item(2)->Tick(), 60);
  EXPECT_THROW(words.Item(0), SubscriptError);
  EXPECT_THROW(words.Item(3), SubscriptError);
}

TEST(Collection, FindsByKeyAndAddsWithoutOne) {
  Tracks tracks;
  tracks.Add(QStringLiteral("a"), 1, 1, 0, false, 0, 0, QStringLiteral("1"));
  tracks.Add(QStringLiteral("b"), 1, 1, 0, false, 0, 0);
  tracks.Add(QStringLiteral("c"), 1, 1, 0, false, 0, 0);
  EXPECT_EQ(tracks.Count(), 3);
  EXPECT_EQ(tracks.Item(QStringLiteral("1"))->Description(), QStringLiteral("a"));
  EXPECT_THROW(tracks.Item(QStringLiteral("2")), SubscriptError);
  EXPECT_THROW(tracks.Item(QString()), SubscriptError);
  EXPECT_THROW(tracks.Add({}, 1, 1, 0, false, 0, 0, QStringLiteral("1")), DuplicateKeyError);
  EXPECT_EQ(tracks.Count(), 3);
}

TEST(Collection, ARemovedKeyIsFreeAgain) {
  Tracks tracks;
  tracks.Add(QStringLiteral("a"), 1, 1, 0, false, 0, 0, QStringLiteral("1"));
  tracks.Remove(QStringLiteral("1"));
  EXPECT_EQ(tracks.Count(), 0);
  EXPECT_THROW(tracks.Remove(QStringLiteral("1")), SubscriptError);
  tracks.Add(QStringLiteral("b"), 1, 1, 0, false, 0, 0, QStringLiteral("1"));
  EXPECT_EQ(tracks.Item(QStringLiteral("1"))->Description(), QStringLiteral("b"));
}

TEST(Tones, AreKeyedByTheirAbsRef) {
  Tones tones;
  tones.Add(ToneWith(7));
  tones.Add(ToneWith(3));
  EXPECT_EQ(tones.Item(QStringLiteral("3"))->AbsRef(), 3);
  EXPECT_EQ(tones.Item(1)->AbsRef(), 7);
  EXPECT_THROW(tones.Item(QStringLiteral("03")), SubscriptError);
  EXPECT_THROW(tones.Item(QStringLiteral("x")), SubscriptError);
  EXPECT_THROW(tones.Add(ToneWith(7)), DuplicateKeyError);
  EXPECT_EQ(tones.Count(), 2);
}

TEST(Tones, TakeAnyAbsRefAsKey) {
  Tones tones;
  for (const std::int32_t key : {0, -1, 2147483647, -2147483647 - 1, 5, 4000, 100000})
    tones.Add(ToneWith(key));
  for (const std::int32_t key : {0, -1, 2147483647, -2147483647 - 1, 5, 4000, 100000})
    EXPECT_EQ(tones.Item(QString::number(key))->AbsRef(), key);
  EXPECT_THROW(tones.Add(ToneWith(2147483647)), DuplicateKeyError);
}

TEST(Tones, AKeyFarAheadIsFoundAfterTheNumbersHaveReachedIt) {
  Tones tones;
  tones.Add(ToneWith(9000));
  for (std::int32_t key = 1; key < 9000; ++key) tones.Add(ToneWith(key));
  tones.Add(ToneWith(9001));
  EXPECT_EQ(tones.Item(QStringLiteral("9000")), tones.Item(1));
  EXPECT_THROW(tones.Add(ToneWith(9000)), DuplicateKeyError);
}

TEST(Tones, PositionsCloseUpBehindARemoval) {
  Tones tones;
  for (std::int32_t i = 1; i <= 5; ++i) tones.Add(ToneWith(i));
  tones.Remove(2);
  tones.Remove(QStringLiteral("4"));
  EXPECT_EQ(Order(tones), (std::vector<std::int32_t>{1, 3, 5}));
  EXPECT_EQ(tones.Item(2)->AbsRef(), 3);
  EXPECT_EQ(tones.Item(3)->AbsRef(), 5);
  EXPECT_THROW(tones.Item(4), SubscriptError);
  tones.Remove(3);
  EXPECT_EQ(tones.Item(2)->AbsRef(), 3);
}

TEST(Tones, BearRemovalWhileTheyAreEnumerated) {
  Tones tones;
  for (std::int32_t i = 1; i <= 1000; ++i) tones.Add(ToneWith(i, i % 2 == 0 ? MUSIC_NOTE_OFF : MUSIC_NOTE));
  int visited = 0;
  for (const auto& tone : tones) {
    ++visited;
    if (tone->EventType() == MUSIC_NOTE_OFF) tones.Remove(QString::number(tone->AbsRef()));
  }
  EXPECT_EQ(visited, 1000);
  EXPECT_EQ(tones.Count(), 500);
  EXPECT_EQ(tones.Item(500)->AbsRef(), 999);
}

TEST(Tones, AnEnumerationPassesOverWhatWasRemovedBeforeItsTurn) {
  Tones tones;
  for (std::int32_t i = 1; i <= 6; ++i) tones.Add(ToneWith(i));
  std::vector<std::int32_t> met;
  for (const auto& tone : tones) {
    met.push_back(tone->AbsRef());
    if (tone->AbsRef() == 2) {
      tones.Remove(QStringLiteral("1"));
      tones.Remove(QStringLiteral("4"));
    }
  }
  EXPECT_EQ(met, (std::vector<std::int32_t>{1, 2, 3, 5, 6}));
}

TEST(Tones, AnEnumerationMeetsWhatIsAddedBehindIt) {
  Tones tones;
  tones.Add(ToneWith(1));
  tones.Add(ToneWith(2));
  std::vector<std::int32_t> met;
  for (const auto& tone : tones) {
    met.push_back(tone->AbsRef());
    if (tone->AbsRef() <= 2) tones.Add(ToneWith(tone->AbsRef() + 10));
  }
  EXPECT_EQ(met, (std::vector<std::int32_t>{1, 2, 11, 12}));
}

TEST(Tones, ClearingUnderAnEnumerationEndsIt) {
  Tones tones;
  for (std::int32_t i = 1; i <= 10; ++i) tones.Add(ToneWith(i));
  int visited = 0;
  for (const auto& tone : tones) {
    EXPECT_EQ(tone->AbsRef(), 1);
    ++visited;
    tones.Clear();
  }
  EXPECT_EQ(visited, 1);
  EXPECT_EQ(tones.Count(), 0);
  tones.Add(ToneWith(3));
  EXPECT_EQ(Order(tones), (std::vector<std::int32_t>{3}));
}

TEST(Tones, RemoveAWholeClassInOnePass) {
  Tones tones;
  for (std::int32_t i = 1; i <= 10; ++i) tones.Add(ToneWith(i, i % 3 == 0 ? MUSIC_NOTE_OFF : MUSIC_NOTE));
  tones.RemoveWhere([](const Tone& tone) { return tone.EventType() == MUSIC_NOTE_OFF; });
  EXPECT_EQ(Order(tones), (std::vector<std::int32_t>{1, 2, 4, 5, 7, 8, 10}));
  EXPECT_THROW(tones.Item(QStringLiteral("3")), SubscriptError);
  EXPECT_EQ(tones.Item(QStringLiteral("10")), tones.Item(7));
}

// A plain list beside the collection, through thousands of random steps.
TEST(Tones, AgreeWithAPlainListThroughRandomSteps) {
  std::mt19937 random(20);
  Tones tones;
  std::vector<std::int32_t> list;
  std::int32_t next = 1;
  for (int step = 0; step < 20000; ++step) {
    const auto choice = random() % 10;
    if (choice < 5 || list.empty()) {
      tones.Add(ToneWith(next));
      list.push_back(next++);
    } else if (choice < 7) {
      const auto place = random() % list.size();
      tones.Remove(static_cast<qsizetype>(place) + 1);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
    } else if (choice < 9) {
      const auto place = random() % list.size();
      tones.Remove(QString::number(list[place]));
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
    } else {
      const auto place = random() % list.size();
      ASSERT_EQ(tones.Item(static_cast<qsizetype>(place) + 1)->AbsRef(), list[place]);
      ASSERT_EQ(tones.Item(QString::number(list[place]))->AbsRef(), list[place]);
    }
    ASSERT_EQ(tones.Count(), static_cast<qsizetype>(list.size()));
  }
  EXPECT_EQ(Order(tones), list);
}

TEST(Collection, TellsByItsRevisionThatItemsCameOrWent) {
  Words words;
  std::uint64_t last = words.Revision();
  const auto changed = [&] {
    const bool is_new = words.Revision() != last;
    last = words.Revision();
    return is_new;
  };
  words.Add(0, 1, 1, QStringLiteral("la"), QStringLiteral("a"));
  EXPECT_TRUE(changed());
  EXPECT_THROW(words.Add(0, 1, 1, QStringLiteral("lu"), QStringLiteral("a")), DuplicateKeyError);
  words.Item(1)->SetBar(2);
  EXPECT_FALSE(changed());
  words.Remove(1);
  EXPECT_TRUE(changed());
  words.Clear();
  EXPECT_FALSE(changed());
  words.Add(0, 1, 1, QStringLiteral("la"));
  words.Add(0, 1, 1, QStringLiteral("lu"));
  EXPECT_TRUE(changed());
  // One more and one less are no way back.
  words.Remove(2);
  words.Add(0, 1, 1, QStringLiteral("li"));
  EXPECT_TRUE(changed());
  words.Clear();
  EXPECT_TRUE(changed());
}

}  // namespace
}  // namespace zelmar
