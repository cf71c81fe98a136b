// The time model: pulses, note-offs, the sort, the tempo and expression maps.
#include <gtest/gtest.h>

#include <QList>

#include "model/pulses.h"
#include "model/shell_sort.h"
#include "model/tones_of_a_tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using testing_support::EventAt;

std::shared_ptr<Tone> TempoEvent(std::int32_t abs_ref, std::int16_t bar, std::int16_t beat, int tempo) {
  auto tone = EventAt(TEMPO_CHANGE, abs_ref, bar, beat);
  tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
  tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
  return tone;
}

TEST(Pulses, AreCountedFromTheStart) {
  EXPECT_EQ(PulseFromBarBeatTick(1, 1, 0, 4, 4), 0);
  EXPECT_EQ(PulseFromBarBeatTick(2, 1, 0, 3, 8), 180);
  EXPECT_EQ(PulseFromBarBeatTick(1, 2, 30, 4, 4), 150);
  EXPECT_EQ(PulseFromBarBeatTick(2, 1, 0, 6, 8), 360);
  EXPECT_EQ(PulseFromBarBeatTick(1, 2, 0, 4, 2), 240);
}

TEST(Pulses, BarsAndBeatsAreEachRoundedToTheEvenNeighbour) {
  // A beat of 480 / 64 = 7.5 pulses: one beat is 8, three are 22; a bar of one beat and one beat more is 8
  // + 8.
  EXPECT_EQ(PulseFromBarBeatTick(1, 2, 0, 1, 64), 8);
  EXPECT_EQ(PulseFromBarBeatTick(1, 4, 0, 1, 64), 22);
  EXPECT_EQ(PulseFromBarBeatTick(2, 2, 0, 1, 64), 16);
}

TEST(Pulses, OverflowIsAFailureNotAWrap) {
  EXPECT_EQ(PulseFromBarBeatTick(8192, 1, 0, 4, 4), 8191 * 480);
  EXPECT_THROW(PulseFromBarBeatTick(8193, 1, 0, 4, 4), OverflowError);
  EXPECT_THROW(PulseFromBarBeatTick(-32768, 1, 0, 1, 4), OverflowError);
  EXPECT_EQ(PulseFromBarBeatTick(32767, 32767, 32767, 1, 1), 32766 * 480 * 2 + 32767);
}

TEST(Pulses, ABeatLengthOfZeroIsADivisionFailure) {
  EXPECT_THROW(PulseFromBarBeatTick(1, 1, 0, 4, 0), DivisionError);
}

TEST(CalcNotesOff, EndsANoteOnTheNextBar) {
  Tune tune;
  auto note = EventAt(MUSIC_NOTE, 10, 1, 4);
  note->SetPitch(QStringLiteral("Ab5"));
  note->SetChannel(3);
  note->SetTrack(2);
  note->SetInstrument(40);
  note->SetEnHarmonic(QStringLiteral("#"));
  tune.Add(note);
  tune.SetChangedSinceLastSaved(false);
  tune.CalcNotesOff();
  ASSERT_EQ(tune.Count(), 2);
  const Tone& off = *tune.Item(2);
  EXPECT_EQ(off.EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(off.Bar(), 2);
  EXPECT_EQ(off.Beat(), 1);
  EXPECT_EQ(off.Tick(), 0);
  EXPECT_EQ(off.Pitch(), QStringLiteral("Ab5"));
  EXPECT_EQ(off.Channel(), 3);
  EXPECT_EQ(off.Track(), 2);
  EXPECT_EQ(off.Volume(), 0);
  EXPECT_EQ(off.OldVolume(), 0);
  EXPECT_EQ(off.Instrument(), 0);
  EXPECT_EQ(off.EnHarmonic(), QStringLiteral(" "));
  EXPECT_DOUBLE_EQ(off.Duration(), 1.0);
  EXPECT_EQ(off.AbsRef(), 11);
  EXPECT_EQ(tune.LastAbsRef(), 11);
  EXPECT_FALSE(tune.ChangedSinceLastSaved());
  EXPECT_EQ(tune.Item(QStringLiteral("11")), tune.Item(2));
}

TEST(CalcNotesOff, RunTwiceLeavesOneNoteOffPerNote) {
  Tune tune;
  for (std::int32_t i = 1; i <= 3; ++i) tune.Add(EventAt(MUSIC_NOTE, i, 1, static_cast<std::int16_t>(i)));
  tune.Add(EventAt(7, 4, 1, 1));
  tune.CalcNotesOff();
  tune.CalcNotesOff();
  int offs = 0;
  for (const auto& tone : tune) offs += tone->EventType() == MUSIC_NOTE_OFF;
  EXPECT_EQ(offs, 3);
  EXPECT_EQ(tune.Count(), 7);
  EXPECT_EQ(tune.LastAbsRef(), 10);
}

TEST(CalcNotesOff, UsesTheNotesOwnMetre) {
  Tune tune;
  tune.SetBeatsPerBar(6);
  auto note = EventAt(MUSIC_NOTE, 1, 1, 6, 30, 1.5);
  note->SetBeatLength(8);
  tune.Add(note);
  tune.SetBeatsPerBar(4);
  tune.CalcNotesOff();
  const Tone& off = *tune.Item(2);
  // Start 5 x 60 + 30 = 330, end 510: eight beats of 60 and 30 more.
  EXPECT_EQ(off.Bar(), 2);
  EXPECT_EQ(off.Beat(), 3);
  EXPECT_EQ(off.Tick(), 30);
  EXPECT_EQ(off.BeatsPerBar(), 6);
  EXPECT_EQ(off.BeatLength(), 8);
}

TEST(CalcNotesOff, RoundsTheStartOnceAtItsEnd) {
  Tune tune;
  tune.SetBeatsPerBar(1);
  // Beats of 7.5 pulses: two of them are 15, not 8 and 8. A note of 15 / 120 ends at 30: 30 / 8 beats.
  auto note = EventAt(MUSIC_NOTE, 1, 2, 2, 0, 0.125);
  note->SetBeatLength(64);
  tune.Add(note);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.Item(2)->Bar(), 4);
  EXPECT_EQ(tune.Item(2)->Beat(), 1);
  EXPECT_EQ(tune.Item(2)->Tick(), 6);
}

TEST(CalcNotesOff, RoundsTheEndToTheEvenNeighbour) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 1, 0, 2.5 / 120.0));
  tune.Add(EventAt(MUSIC_NOTE, 2, 1, 1, 0, 3.5 / 120.0));
  tune.CalcNotesOff();
  EXPECT_EQ(tune.Item(3)->Tick(), 2);
  EXPECT_EQ(tune.Item(4)->Tick(), 4);
}

TEST(CalcNotesOff, OnlyNotesGetANoteOff) {
  Tune tune;
  tune.Add(EventAt(DUMMY_NOTE, 1, 1, 1));
  tune.Add(EventAt(TEMPO_CHANGE, 2, 1, 1));
  tune.CalcNotesOff();
  EXPECT_EQ(tune.Count(), 2);
}

TEST(CalcNotesOff, ANoteOfAMissingTrackGetsItsNoteOff) {
  Tune tune;
  auto note = EventAt(MUSIC_NOTE, 1, 1, 1);
  note->SetTrack(99);
  tune.Add(note);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.Item(2)->Track(), 99);
}

TEST(CalcNotesOff, OverflowIsAFailure) {
  Tune far;
  far.Add(EventAt(MUSIC_NOTE, 1, 32767, 1));
  EXPECT_THROW(far.CalcNotesOff(), OverflowError);
  Tune at_the_end;
  at_the_end.SetBeatsPerBar(1);
  at_the_end.Add(EventAt(MUSIC_NOTE, 1, 32767, 1));
  EXPECT_THROW(at_the_end.CalcNotesOff(), OverflowError);
  Tune huge;
  huge.Add(EventAt(MUSIC_NOTE, 1, 1, 1, 0, 1e12));
  EXPECT_THROW(huge.CalcNotesOff(), OverflowError);
}

TEST(CalcNotesOff, AMetreOfZeroIsADivisionFailure) {
  Tune tune;
  auto note = EventAt(MUSIC_NOTE, 1, 1, 1);
  note->SetBeatLength(0);
  tune.Add(note);
  EXPECT_THROW(tune.CalcNotesOff(), DivisionError);
  note->SetBeatLength(4);
  note->SetBeatsPerBar(0);
  EXPECT_THROW(tune.CalcNotesOff(), DivisionError);
}

TEST(SortStartTimes, PutsEventsInTimeOrder) {
  Tune tune;
  const int places[][3] = {{2, 1, 0}, {1, 1, 60}, {1, 4, 0}, {1, 1, 0}, {3, 2, 10}, {1, 2, 0}};
  std::int32_t abs_ref = 1;
  for (const auto& place : places)
    tune.Add(EventAt(MUSIC_NOTE, abs_ref++, static_cast<std::int16_t>(place[0]),
                     static_cast<std::int16_t>(place[1]), static_cast<std::int16_t>(place[2])));
  tune.SortStartTimes();
  QList<int> order;
  for (const auto& tone : tune) order.append(tone->AbsRef());
  EXPECT_EQ(order, (QList<int>{4, 2, 6, 3, 1, 5}));
  EXPECT_TRUE(tune.Sorted());
  EXPECT_EQ(tune.Item(QStringLiteral("4")), tune.Item(1));
}

TEST(SortStartTimes, AnEmptyTuneIsSorted) {
  Tune tune;
  tune.SortStartTimes();
  EXPECT_EQ(tune.Count(), 0);
  EXPECT_TRUE(tune.Sorted());
}

TEST(SortStartTimes, DoesNotMarkTheTuneChanged) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 1));
  tune.SetChangedSinceLastSaved(false);
  tune.SortStartTimes();
  EXPECT_FALSE(tune.ChangedSinceLastSaved());
}

TEST(SortStartTimes, KeysTheEventsByTheirPresentAbsRef) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 2));
  tune.Add(EventAt(MUSIC_NOTE, 5, 1, 1));
  tune.Item(2)->SetAbsRef(77);
  tune.SortStartTimes();
  EXPECT_EQ(tune.Item(QStringLiteral("77")), tune.Item(1));
  EXPECT_THROW(tune.Item(QStringLiteral("5")), SubscriptError);
}

TEST(SortStartTimes, AnAbsRefThatStandsTwiceLeavesTheTuneAsItWas) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 2));
  tune.Add(EventAt(MUSIC_NOTE, 2, 1, 1));
  tune.Item(2)->SetAbsRef(1);
  EXPECT_THROW(tune.SortStartTimes(), DuplicateKeyError);
  EXPECT_EQ(tune.Count(), 2);
  EXPECT_EQ(tune.Item(1)->Beat(), 2);
  EXPECT_FALSE(tune.Sorted());
}

TEST(SortStartTimes, TheOldOrderStandsUntilNinetyNine) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 2));
  tune.Add(EventAt(MUSIC_NOTE, 2, 1, 1));
  std::int32_t first = 0;
  QObject::connect(&tune, &Tune::SortPercent, [&](std::int16_t percent) {
    if (percent == 99) first = tune.Item(1)->AbsRef();
  });
  tune.SortStartTimes();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(tune.Item(1)->AbsRef(), 2);
}

TEST(SortStartTimes, ATickOfTwoHundredAndFortyOverrunsItsBeat) {
  Tune tune;
  tune.SetBeatLength(8);
  tune.Add(EventAt(MUSIC_NOTE, 1, 1, 1, 250));
  tune.Add(EventAt(MUSIC_NOTE, 2, 1, 2, 0));
  tune.SortStartTimes();
  EXPECT_EQ(tune.Item(1)->AbsRef(), 2);
}

TEST(SortStartTimes, AKeyThatDoesNotFitIsAnOverflow) {
  Tune tune;
  tune.SetBeatsPerBar(32767);
  tune.Add(EventAt(MUSIC_NOTE, 1, 32767, 1));
  EXPECT_THROW(tune.SortStartTimes(), OverflowError);
}

TEST(SortStartTimes, TellsOfItsProgress) {
  Tune tune;
  for (std::int32_t i = 1; i <= 121; ++i) tune.Add(EventAt(MUSIC_NOTE, i, 1, 1));
  QList<int> percents;
  int started = 0;
  QObject::connect(&tune, &Tune::SortPercent,
                   [&percents](std::int16_t percent) { percents.append(percent); });
  QObject::connect(&tune, &Tune::SortStarted, [&started] { ++started; });
  tune.SortStartTimes();
  EXPECT_EQ(started, 1);
  // 0 first; one step for every 121 / 60 = 2 events; 80 after the sort, 99 at the end.
  ASSERT_EQ(percents.size(), 63);
  EXPECT_EQ(percents.first(), 0);
  for (int i = 1; i <= 60; ++i) EXPECT_EQ(percents[i], i);
  EXPECT_EQ(percents[61], 80);
  EXPECT_EQ(percents[62], 99);
}

TEST(SortStartTimes, UpToSixtyEventsGiveNoCountedProgress) {
  Tune tune;
  for (std::int32_t i = 1; i <= 60; ++i) tune.Add(EventAt(MUSIC_NOTE, i, 1, 1));
  QList<int> percents;
  QObject::connect(&tune, &Tune::SortPercent,
                   [&percents](std::int16_t percent) { percents.append(percent); });
  tune.SortStartTimes();
  EXPECT_EQ(percents, (QList<int>{0, 80, 99}));
}

TEST(SortStartTimes, CountedProgressIsCappedAtAHundred) {
  Tune tune;
  for (std::int32_t i = 1; i <= 119; ++i) tune.Add(EventAt(MUSIC_NOTE, i, 1, 1));
  int highest = 0;
  QObject::connect(&tune, &Tune::SortPercent,
                   [&highest](std::int16_t p) { highest = std::max<int>(highest, p); });
  tune.SortStartTimes();
  EXPECT_EQ(highest, 100);
}

TEST(ShellSort, CarriesThePositionsAlong) {
  std::vector<SortColumn> columns = {{1, 30}, {2, 10}, {3, 20}, {4, -5}, {5, 99}};
  ShellSortByKey(columns, 4);
  EXPECT_EQ(columns[0].position, 4);
  EXPECT_EQ(columns[1].position, 2);
  EXPECT_EQ(columns[2].position, 3);
  EXPECT_EQ(columns[3].position, 1);
  EXPECT_EQ(columns[4].position, 5);
  EXPECT_THROW(ShellSortByKey(columns, 6), SubscriptError);
  ShellSortByKey(columns, 0);
  EXPECT_EQ(columns[0].key, -5);
}

TEST(TempoMap, CumulatesTheTimeOfEachChange) {
  Tune tune;
  tune.Add(TempoEvent(1, 2, 1, 60));
  tune.Add(TempoEvent(2, 3, 3, 240));
  tune.MakeTempoMap();
  ASSERT_EQ(tune.TempoChanges()->Count(), 2);
  EXPECT_EQ(tune.TempoChanges()->Item(1)->NewTempo(), 60);
  EXPECT_EQ(tune.TempoChanges()->Item(1)->MillesecondCumTime(), 2000);
  EXPECT_EQ(tune.TempoChanges()->Item(2)->NewTempo(), 240);
  // Six crotchets at 1000 ms.
  EXPECT_EQ(tune.TempoChanges()->Item(2)->MillesecondCumTime(), 8000);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TempoChanges()->Count(), 2);
}

TEST(TempoMap, AVolumeOfOneMeansATempoOf128) {
  Tune tune;
  auto change = EventAt(TEMPO_CHANGE, 1, 1, 1);
  change->SetVolume(1);
  change->SetInstrument(0);
  tune.Add(change);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TempoChanges()->Item(1)->NewTempo(), 128);
}

TEST(TempoMap, ATempoOfZeroIsADivisionFailure) {
  Tune tune;
  tune.Add(TempoEvent(1, 1, 1, 0));
  EXPECT_THROW(tune.MakeTempoMap(), DivisionError);
}

TEST(TempoMap, CrotchetsAreWholeMilliseconds) {
  Tune tune;
  tune.SetTempo(90);  // 666.67 ms, counted as 667
  EXPECT_EQ(tune.TimeFromPulse(2, 1, 0, 4, 4), 4 * 667);
  tune.Add(TempoEvent(1, 2, 1, 70));  // 857.14 ms, counted as 857
  tune.Add(TempoEvent(2, 3, 1, 120));
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TempoChanges()->Item(1)->MillesecondCumTime(), 4 * 667);
  EXPECT_EQ(tune.TempoChanges()->Item(2)->MillesecondCumTime(), 4 * 667 + 4 * 857);
  EXPECT_EQ(tune.TimeFromPulse(2, 2, 0, 4, 4), 4 * 667 + 857);
}

TEST(TempoMap, CountsFromTheTickOfTheChangeBefore) {
  Tune tune;
  auto change = TempoEvent(1, 1, 1, 60);
  change->SetTick(60);
  tune.Add(change);
  tune.Add(TempoEvent(2, 1, 2, 60));
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TempoChanges()->Item(1)->MillesecondCumTime(), 250);
  EXPECT_EQ(tune.TempoChanges()->Item(2)->MillesecondCumTime(), 750);
}

TEST(TempoMap, ATempoBeyondItsFieldIsAnOverflow) {
  Tune tune;
  auto change = EventAt(TEMPO_CHANGE, 1, 1, 1);
  change->SetVolume(255);
  change->SetInstrument(128);
  tune.Add(change);
  EXPECT_THROW(tune.MakeTempoMap(), OverflowError);
}

TEST(TempoMap, AMapWithoutChangesCountsWithTheTunesTempo) {
  Tune tune;
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TimeFromPulse(1, 2, 0, 4, 4), 500);
}

TEST(TimeFromPulse, ANewTempoOfZeroIsADivisionFailure) {
  Tune tune;
  tune.TempoChanges()->Add(1, 1, 0, 0, 0);
  EXPECT_THROW(tune.TimeFromPulse(1, 2, 0, 4, 4), DivisionError);
}

TEST(TimeFromPulse, AtAChangeIsTheChangesOwnTime) {
  Tune tune;
  tune.Add(TempoEvent(1, 2, 1, 60));
  tune.Add(TempoEvent(2, 3, 3, 240));
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TimeFromPulse(2, 1, 0, 4, 4), 2000);
  EXPECT_EQ(tune.TimeFromPulse(3, 3, 0, 4, 4), 8000);
  EXPECT_EQ(tune.TimeFromPulse(1, 3, 0, 4, 4), 1000);
  EXPECT_EQ(tune.TimeFromPulse(2, 2, 0, 4, 4), 3000);
  EXPECT_EQ(tune.TimeFromPulse(3, 3, 60, 4, 4), 8125);
}

TEST(TimeFromPulse, CountsWithTheTunesTempoBeforeAnyMap) {
  Tune tune;
  EXPECT_EQ(tune.TimeFromPulse(1, 2, 60, 4, 4), 750);
  tune.SetTempo(60);
  EXPECT_EQ(tune.TimeFromPulse(1, 2, 60, 4, 4), 1500);
}

TEST(TimeFromPulse, RoundsTheResult) {
  Tune tune;
  tune.SetTempo(100);  // 600 ms: a pulse is 5 ms
  EXPECT_EQ(tune.TimeFromPulse(1, 1, 7, 4, 4), 35);
  tune.SetTempo(120);  // a pulse is 4.1667 ms
  EXPECT_EQ(tune.TimeFromPulse(1, 1, 1, 4, 4), 4);
  EXPECT_EQ(tune.TimeFromPulse(1, 1, 3, 4, 4), 12);  // 12.5 to the even neighbour
}

TEST(ExpressionMap, HoldsTheExpressionControllers) {
  Tune tune;
  auto all = EventAt(EXPRESS_CONTROLLER, 1, 1, 2, 5);
  all->SetInstrument(99);
  all->SetVolume(80);
  all->SetTrack(3);
  tune.Add(all);
  auto one = EventAt(EXPRESS_CONTROLLER, 2, 2, 1);
  one->SetInstrument(98);
  tune.Add(one);
  tune.Add(EventAt(7, 3, 2, 1));
  tune.MakeExpressionMap();
  tune.MakeExpressionMap();
  ASSERT_EQ(tune.ExpressionChanges()->Count(), 2);
  const ExpressionChange& first = *tune.ExpressionChanges()->Item(1);
  EXPECT_EQ(first.Bar(), 1);
  EXPECT_EQ(first.Beat(), 2);
  EXPECT_EQ(first.Tick(), 5);
  EXPECT_EQ(first.Track(), 3);
  EXPECT_EQ(first.Volume(), 80);
  EXPECT_TRUE(first.AllTracks());
  EXPECT_FALSE(tune.ExpressionChanges()->Item(2)->AllTracks());
}

}  // namespace
}  // namespace zelmar
