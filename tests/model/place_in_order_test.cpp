// Where a single event goes among events in order: where sorting would put it if it came last.
#include <gtest/gtest.h>

#include "model/event_order.h"
#include "model/tune.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

std::shared_ptr<Tone> AnyTone(Dice& dice, std::int32_t ref) {
  static const EventType kTypes[] = {MUSIC_NOTE, MUSIC_NOTE_OFF, 7, PITCH_BEND, TEMPO_CHANGE, DUMMY_NOTE};
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(kTypes[dice(6)]);
  tone->SetBar(static_cast<std::int16_t>(1 + dice(3)));
  tone->SetBeat(static_cast<std::int16_t>(1 + dice(3)));
  tone->SetTick(static_cast<std::int16_t>(60 * dice(2)));
  tone->SetNumber(static_cast<std::int16_t>(60 + dice(3)));
  tone->SetChannel(static_cast<std::uint8_t>(1 + dice(2)));
  tone->SetDuration(0.5 + dice(4));
  tone->SetAbsRef(ref);
  return tone;
}

TEST(PlaceOfAnEvent, IsWhereSortingWouldPutIt) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    Dice dice(seed);
    auto tones = std::make_shared<Tones>();
    for (int i = 1; i <= 40; ++i) tones->Add(AnyTone(dice, i));
    const auto sorted = InOrder(tones, 3);
    ASSERT_EQ(sorted->Count(), 40);
    for (int i = 0; i < 20; ++i) {
      const auto tone = AnyTone(dice, 1000);
      const qsizetype place = PlaceInOrder(*sorted, *tone, 3);
      auto with = std::make_shared<Tones>();
      for (const auto& one : *sorted) with->Add(one);
      with->Add(tone);
      EXPECT_EQ(InOrder(with, 3)->Item(place), tone) << seed;
    }
  }
}

TEST(PlaceOfAnEvent, IsFirstAmongNone) {
  Tones tones;
  Tone tone;
  EXPECT_EQ(PlaceInOrder(tones, tone, 4), 1);
}

}  // namespace
}  // namespace zelmar
