// The order of the events of a tune, above all of those at one time.
#include "model/event_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "model/note_ends.h"
#include "model/tones_of_a_tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using namespace testing_support;

void Prepare(Tune& tune) {
  tune.CalcNotesOff();
  tune.SortStartTimes();
}

TEST(EventOrder, ARepeatedNoteBeginsBehindTheEndOfTheOneBefore) {
  Tune tune;
  for (std::int16_t beat = 1; beat <= 4; ++beat) AddNote(tune, 1, beat, 1.0);
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 -C4 C4 -C4 C4 -C4 C4 -C4"));
}

TEST(EventOrder, AtOneTimeEndsComeFirstThenControlsThenNotes) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 2));
  tune.Add(EventAt(TEMPO_CHANGE, 2, 2));
  tune.Add(EventAt(MUSIC_NOTE_OFF, 3, 2));
  tune.Add(EventAt(7, 4, 2));
  tune.Add(EventAt(MUSIC_NOTE, 5, 2));
  tune.Add(EventAt(PITCH_BEND, 6, 2));
  tune.Add(EventAt(MUSIC_NOTE_OFF, 7, 2));
  tune.Add(EventAt(CHANNEL_PRESSURE, 8, 2));
  tune.Add(EventAt(DUMMY_NOTE, 9, 2));
  tune.Add(EventAt(MUSIC_NOTE, 10, 1));
  tune.SortStartTimes();
  EXPECT_EQ(NumbersOf(*tune.Tones()), QStringLiteral("10 3 7 2 4 6 8 9 1 5"));
}

TEST(EventOrder, WhatIsSortedStaysAsItIs) {
  Tune tune;
  std::int32_t abs_ref = 0;
  for (const EventType type :
       {MUSIC_NOTE, EventType{7}, MUSIC_NOTE_OFF, MUSIC_NOTE, EventType{10}, MUSIC_NOTE_OFF})
    for (const std::int16_t bar : std::initializer_list<std::int16_t>{2, 1})
      tune.Add(EventAt(type, ++abs_ref, bar));
  tune.SortStartTimes();
  const QString once = NumbersOf(*tune.Tones());
  EXPECT_EQ(once, QStringLiteral("6 12 4 10 2 8 5 11 3 9 1 7"));
  tune.SortStartTimes();
  EXPECT_EQ(NumbersOf(*tune.Tones()), once);
}

TEST(EventOrder, EndsOfAllTracksComeBeforeTheNotesOfAll) {
  Tune tune;
  AddNote(tune, 1, 2, 1.0, "C4", 2);
  AddNote(tune, 1, 1, 1.0, "C4", 1);
  Prepare(tune);
  EXPECT_EQ(tune.Item(2)->EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(tune.Item(2)->Track(), 1);
  EXPECT_EQ(tune.Item(3)->Track(), 2);
}

TEST(EventOrder, AnEndThatIsRoundedToTheNextNoteComesBeforeIt) {
  Tune tune;
  // A third of a crotchet is 39.996 pulses, and the next note stands at 40.
  AddNote(tune, 1, 1, 0.3333);
  tune.Add(EventAt(MUSIC_NOTE, 5, 1, 1, 40, 0.3333));
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 -C4 C4 -C4"));
}

TEST(EventOrder, TimesBelowZeroComeFirst) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1));
  tune.Add(EventAt(MUSIC_NOTE, 2, -3));
  tune.Add(EventAt(MUSIC_NOTE_OFF, 3, -3));
  tune.Add(EventAt(7, 4, -4, 3));
  tune.SortStartTimes();
  EXPECT_EQ(NumbersOf(*tune.Tones()), QStringLiteral("4 3 2 1"));
}

// --- Notes without length ---

TEST(NotesWithoutLength, EndBehindTheirOwnStart) {
  Tune tune;
  AddNote(tune, 1, 1, 1.0);
  AddNote(tune, 1, 2, 0.0);
  AddNote(tune, 1, 2, 1.0, "E4");
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 -C4 C4 -C4 E4 -E4"));
  // The end of the note that began before stands in front, its own one behind.
  EXPECT_LT(tune.Item(2)->AbsRef(), tune.Item(4)->AbsRef());
  const QString once = NumbersOf(*tune.Tones());
  tune.SortStartTimes();
  EXPECT_EQ(NumbersOf(*tune.Tones()), once);
}

TEST(NotesWithoutLength, StandInTheOldOrderAmongOtherNotes) {
  Tune tune;
  AddNote(tune, 1, 1, 1.0, "G4");
  AddNote(tune, 1, 1, 0.0, "C4");
  AddNote(tune, 1, 1, 1.0, "E4");
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("G4 C4 -C4 E4 -G4 -E4"));
}

TEST(NotesWithoutLength, LeaveAllEndsOfOtherNotesInTheTune) {
  Tune tune;
  for (const char* pitch : {"C4", "E4", "G4"}) AddNote(tune, 1, 1, 1.0, pitch);
  AddNote(tune, 1, 2, 0.0, "A4");
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 E4 G4 -C4 -E4 -G4 A4 -A4"));
}

TEST(NotesWithoutLength, EndNoUnisonOfAnotherTrackOnTheirChannel) {
  Tune tune;
  AddNote(tune, 1, 1, 1.0, "C4", 1);
  AddNote(tune, 1, 1, 0.0, "C4", 2);
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 -C4 C4 -C4"));
  EXPECT_EQ(tune.Item(1)->Track(), 2);
  EXPECT_EQ(tune.Item(2)->Track(), 2);
  EXPECT_EQ(tune.Item(3)->Track(), 1);
  // On a channel of its own the unison is another sound, and the old order stands.
  Tune apart;
  AddNote(apart, 1, 1, 1.0, "C4", 1);
  AddNote(apart, 1, 1, 0.0, "C4", 2)->SetChannel(2);
  Prepare(apart);
  EXPECT_EQ(apart.Item(1)->Track(), 1);
}

TEST(NotesWithoutLength, EachOfSeveralHasItsOwnEnd) {
  Tune tune;
  AddNote(tune, 1, 1, 1.0);
  for (int i = 0; i < 3; ++i) AddNote(tune, 1, 2, 0.0);
  AddNote(tune, 1, 2, 0.0, "E4");
  Prepare(tune);
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 -C4 C4 -C4 C4 -C4 C4 -C4 E4 -E4"));
}

TEST(NotesWithoutLength, AreToldByTheRoundedEnd) {
  auto note = EventAt(MUSIC_NOTE, 1, 1, 1, 0, 0.5 / 120.0);
  EXPECT_TRUE(HasNoLength(*note));  // half a pulse goes to the even neighbour, which is 0
  note->SetTick(1);
  EXPECT_FALSE(HasNoLength(*note));  // and 2 from an odd start
  note->SetDuration(0.4 / 120.0);
  EXPECT_TRUE(HasNoLength(*note));
  note->SetDuration(-0.4 / 120.0);
  EXPECT_TRUE(HasNoLength(*note));
  note->SetDuration(0.6 / 120.0);
  EXPECT_FALSE(HasNoLength(*note));
  note->SetDuration(0.0);
  note->SetBeatLength(0);
  EXPECT_FALSE(HasNoLength(*note));
}

TEST(NotesWithoutLength, MayHaveNoEndYet) {
  Tune tune;
  AddNote(tune, 1, 1, 0.0);
  AddNote(tune, 1, 1, 0.0);
  tune.Add(EventAt(MUSIC_NOTE_OFF, 9, 1));
  tune.SortStartTimes();
  EXPECT_EQ(EventsOf(tune), QStringLiteral("C4 C4 -C4"));
}

// --- The place of one event ---

// Events of all kinds at few times.
std::vector<std::shared_ptr<Tone>> RandomEvents(int count, unsigned seed) {
  std::mt19937 random(seed);
  const EventType types[] = {MUSIC_NOTE, MUSIC_NOTE_OFF, 7, TEMPO_CHANGE, DUMMY_NOTE};
  std::vector<std::shared_ptr<Tone>> events;
  for (int i = 0; i < count; ++i)
    events.push_back(EventAt(types[random() % 5], i + 1, static_cast<std::int16_t>(1 + random() % 4),
                             static_cast<std::int16_t>(1 + random() % 4),
                             static_cast<std::int16_t>(60 * (random() % 2))));
  return events;
}

int Rank(const Tone& tone) {
  return tone.EventType() == MUSIC_NOTE_OFF ? 0 : tone.EventType() == MUSIC_NOTE ? 2 : 1;
}

TEST(EventOrder, IsThatOfTheDefinitionForAnyEvents) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    auto events = RandomEvents(static_cast<int>(seed * seed), seed);
    Tune tune;
    for (const auto& event : events) tune.Add(event);
    tune.SortStartTimes();
    std::stable_sort(events.begin(), events.end(), [](const auto& a, const auto& b) {
      return std::tuple(a->Bar(), a->Beat(), a->Tick(), Rank(*a)) <
             std::tuple(b->Bar(), b->Beat(), b->Tick(), Rank(*b));
    });
    ASSERT_EQ(tune.Count(), static_cast<qsizetype>(events.size()));
    for (std::size_t i = 0; i < events.size(); ++i)
      ASSERT_EQ(tune.Item(static_cast<qsizetype>(i) + 1), events[i]) << "seed " << seed << ", event " << i;
  }
}

TEST(PlaceInOrder, IsWhereASortPutsAnEventThatIsAdded) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    const auto events = RandomEvents(41, seed);
    Tune tune;
    for (std::size_t i = 0; i + 1 < events.size(); ++i) tune.Add(events[i]);
    tune.SortStartTimes();
    const qsizetype place = PlaceInOrder(*tune.Tones(), *events.back(), tune.BeatsPerBar());
    tune.Add(events.back());
    tune.SortStartTimes();
    ASSERT_GE(place, 1);
    ASSERT_LE(place, tune.Count());
    ASSERT_EQ(tune.Item(place), events.back()) << "seed " << seed;
  }
}

TEST(PlaceInOrder, OfAnEndIsNotBehindANoteWithoutLength) {
  Tune tune;
  AddNote(tune, 1, 2, 0.0);
  Prepare(tune);
  EXPECT_EQ(PlaceInOrder(*tune.Tones(), *EventAt(MUSIC_NOTE_OFF, 9, 1, 2), 4), 1);
  EXPECT_EQ(PlaceInOrder(*tune.Tones(), *EventAt(7, 9, 1, 2), 4), 1);
  EXPECT_EQ(PlaceInOrder(*tune.Tones(), *EventAt(MUSIC_NOTE, 9, 1, 2), 4), 3);
}

TEST(PlaceInOrder, InNoEventsIsTheFirst) {
  EXPECT_EQ(PlaceInOrder(Tones(), *EventAt(MUSIC_NOTE, 1, 5), 4), 1);
  EXPECT_THROW(PlaceInOrder(Tones(), *EventAt(MUSIC_NOTE, 1, 32767), 32767), OverflowError);
}

}  // namespace
}  // namespace zelmar
