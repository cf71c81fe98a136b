#include "model/tune.h"

#include <gtest/gtest.h>

#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;

std::shared_ptr<Tone> Note(std::int32_t abs_ref, std::int16_t bar = 1, std::int16_t beat = 1) {
  auto tone = std::make_shared<Tone>();
  tone->SetAbsRef(abs_ref);
  tone->SetBar(bar);
  tone->SetBeat(beat);
  return tone;
}

TEST(Tune, StartsWithItsDefaults) {
  Tune tune;
  EXPECT_EQ(tune.Title(), QStringLiteral("No Title Yet"));
  EXPECT_EQ(tune.FileName(), QStringLiteral("Temp"));
  EXPECT_TRUE(tune.Description().isEmpty());
  EXPECT_TRUE(tune.Composer().isEmpty() && tune.Category().isEmpty() && tune.SoloInstrument().isEmpty() &&
              tune.Ensemble().isEmpty() && tune.Style().isEmpty() && tune.Country().isEmpty() &&
              tune.Length().isEmpty());
  EXPECT_EQ(tune.Rank(), 9999);
  EXPECT_EQ(tune.Tempo(), 120);
  EXPECT_EQ(tune.TempoCurrent(), 120);
  EXPECT_FLOAT_EQ(tune.MsPerCrotchet(), 500.0F);
  EXPECT_EQ(tune.BeatsPerBar(), 4);
  EXPECT_EQ(tune.BeatLength(), 4);
  EXPECT_EQ(tune.PulsesPerBeat(), 120);
  EXPECT_EQ(tune.KeySignature(), 0);
  EXPECT_EQ(tune.KeyMode(), 0);
  EXPECT_EQ(tune.MIDIMode(), QStringLiteral("GM"));
  EXPECT_EQ(tune.MelodyTrack(), 1);
  EXPECT_EQ(tune.AccompPattern(), 255);
  EXPECT_EQ(tune.LastAbsRef(), 1);
  EXPECT_EQ(tune.MetroVolume(), 0);
  EXPECT_EQ(tune.HearTick(), 0);
  EXPECT_EQ(tune.TickSound(), 60);
  EXPECT_EQ(tune.TimerInterval(), 2);
  EXPECT_FALSE(tune.TrackFilterOn());
  EXPECT_FALSE(tune.Playing());
  EXPECT_FALSE(tune.Sorted());
  EXPECT_FLOAT_EQ(tune.MelodyStartTime(), 0.0F);
  EXPECT_EQ(tune.BarNumber(), 0);
  EXPECT_EQ(tune.BeatWithinBar(), 0);
  EXPECT_EQ(tune.BeatNumber(), 0);
  EXPECT_TRUE(tune.ChangedSinceLastSaved());
}

TEST(Tune, StartsWithOneDefaultTrack) {
  Tune tune;
  ASSERT_EQ(tune.Tracks()->Count(), 1);
  const Track& track = *tune.Tracks()->Item(QStringLiteral("1"));
  EXPECT_EQ(track.Description(), QStringLiteral("Default Track"));
  EXPECT_EQ(track.TrackNumber(), 1);
  EXPECT_EQ(track.Channel(), 1);
  EXPECT_EQ(track.Instrument(), 0);
  EXPECT_FALSE(track.Muted());
  EXPECT_EQ(track.BankMSB0(), 0);
  EXPECT_EQ(track.BankLSB32(), 0);
}

TEST(Tune, CountsItsChangesAndKnowsWhatOfThemIsSaved) {
  Tune tune;
  EXPECT_TRUE(tune.SavedFileName().isNull());
  tune.SetFileName(QStringLiteral("One"));
  const auto before = tune.Changes();
  tune.SetTitle(QStringLiteral("x"));
  tune.Add(Note(9));
  EXPECT_GE(tune.Changes(), before + 2);
  tune.SetChangedSinceLastSaved(false);
  EXPECT_EQ(tune.ChangesSaved(), tune.Changes());
  EXPECT_EQ(tune.SavedFileName(), QStringLiteral("One"));
  tune.SetFileName(QStringLiteral("Two"));
  EXPECT_NE(tune.ChangesSaved(), tune.Changes());
  EXPECT_EQ(tune.SavedFileName(), QStringLiteral("One"));
}

TEST(Tune, TheMetronomeMarksItAndIsNoChange) {
  Tune tune;
  tune.SetChangedSinceLastSaved(false);
  tune.SetHearTick(1);
  EXPECT_FALSE(tune.ChangedSinceLastSaved());
  tune.SetMetroVolume(127);
  EXPECT_TRUE(tune.ChangedSinceLastSaved());
  EXPECT_EQ(tune.ChangesSaved(), tune.Changes());
}

TEST(Tune, OnlyTheMarkedWritesMarkItChanged) {
  Tune tune;
  const auto marks = [&tune](auto write) {
    tune.SetChangedSinceLastSaved(false);
    write();
    return tune.ChangedSinceLastSaved();
  };
  const QString text = QStringLiteral("x");
  EXPECT_TRUE(marks([&] { tune.SetTitle(text); }));
  EXPECT_TRUE(marks([&] { tune.SetFileName(text); }));
  EXPECT_TRUE(marks([&] { tune.SetComposer(text); }));
  EXPECT_TRUE(marks([&] { tune.SetCategory(text); }));
  EXPECT_TRUE(marks([&] { tune.SetSoloInstrument(text); }));
  EXPECT_TRUE(marks([&] { tune.SetEnsemble(text); }));
  EXPECT_TRUE(marks([&] { tune.SetStyle(text); }));
  EXPECT_TRUE(marks([&] { tune.SetCountry(text); }));
  EXPECT_TRUE(marks([&] { tune.SetLength(text); }));
  EXPECT_TRUE(marks([&] { tune.SetBeatsPerBar(3); }));
  EXPECT_TRUE(marks([&] { tune.SetBeatLength(8); }));
  EXPECT_TRUE(marks([&] { tune.SetKeySignature(1); }));
  EXPECT_TRUE(marks([&] { tune.SetKeyMode(1); }));
  EXPECT_TRUE(marks([&] { tune.SetMelodyTrack(2); }));
  EXPECT_TRUE(marks([&] { tune.SetAccompPattern(2); }));
  EXPECT_TRUE(marks([&] { tune.SetLastAbsRef(2); }));
  EXPECT_TRUE(marks([&] { tune.SetMetroVolume(2); }));
  EXPECT_TRUE(marks([&] { tune.SetTones(std::make_shared<Tones>()); }));
  EXPECT_TRUE(marks([&] { tune.SetWords(std::make_shared<Words>()); }));
  EXPECT_TRUE(marks([&] { tune.SetTempoChanges(std::make_shared<TempoChanges>()); }));
  EXPECT_TRUE(marks([&] { tune.Add(Note(5)); }));

  EXPECT_FALSE(marks([&] { tune.SetDescription(text); }));
  EXPECT_FALSE(marks([&] { tune.SetRank(1); }));
  EXPECT_FALSE(marks([&] { tune.SetTempo(90); }));
  EXPECT_FALSE(marks([&] { tune.SetMIDIMode(QStringLiteral("XG")); }));
  EXPECT_FALSE(marks([&] { tune.SetHearTick(1); }));
  EXPECT_FALSE(marks([&] { tune.SetTickSound(1); }));
  EXPECT_FALSE(marks([&] { tune.SetTimerInterval(3); }));
  EXPECT_FALSE(marks([&] { tune.SetTrackFilterOn(true); }));
  EXPECT_FALSE(marks([&] { tune.SetPlaying(true); }));
  EXPECT_FALSE(marks([&] { tune.SetSorted(true); }));
  EXPECT_FALSE(marks([&] { tune.SetMelodyStartTime(1.0F); }));
  EXPECT_FALSE(marks([&] { tune.SetBarNumber(1); }));
  EXPECT_FALSE(marks([&] { tune.SetBeatWithinBar(1); }));
  EXPECT_FALSE(marks([&] { tune.SetTracks(std::make_shared<Tracks>()); }));
  EXPECT_FALSE(marks([&] { tune.SetExpressionChanges(std::make_shared<ExpressionChanges>()); }));
  EXPECT_FALSE(marks([&] { tune.SetThemes(std::make_shared<Themes>()); }));
  EXPECT_FALSE(marks([&] { tune.Remove(QStringLiteral("5")); }));
}

TEST(Tune, WritingTempoSetsTheCurrentTempoAndTheCrotchet) {
  Tune tune;
  tune.SetBeatLength(8);
  tune.SetTempo(90);
  EXPECT_EQ(tune.TempoCurrent(), 90);
  EXPECT_FLOAT_EQ(tune.MsPerCrotchet(), 60000.0F / 90.0F);
  EXPECT_EQ(tune.PulsesPerBeat(), 60);
}

TEST(Tune, ATempoOfZeroIsADivisionFailure) {
  Tune tune;
  EXPECT_THROW(tune.SetTempo(0), DivisionError);
  EXPECT_EQ(tune.Tempo(), 120);
}

TEST(Tune, ABeatLengthOfZeroIsKeptForTheTransportBarToMend) {
  Tune tune;
  tune.SetBeatLength(0);
  EXPECT_EQ(tune.BeatLength(), 0);
  EXPECT_EQ(tune.PulsesPerBeat(), 0);
}

TEST(Tune, MidiModeTakesTheFourModesAndWarnsOfOthers) {
  ScriptedPlatform platform;
  Tune tune;
  for (const char* mode : {"GM", "GM2", "GS", "XG"}) {
    tune.SetMIDIMode(QString::fromLatin1(mode));
    EXPECT_EQ(tune.MIDIMode(), QString::fromLatin1(mode));
  }
  EXPECT_TRUE(platform.messages->shown.isEmpty());
  tune.SetMIDIMode(QStringLiteral("gm"));
  EXPECT_EQ(tune.MIDIMode(), QStringLiteral("GM"));
  ASSERT_EQ(platform.messages->shown.size(), 1);
  EXPECT_EQ(platform.messages->shown[0].title, QStringLiteral("Invalid MIDI mode"));
  EXPECT_EQ(platform.messages->shown[0].text, QStringLiteral("MIDI mode can only be GM, GM2, GS or XG"));
  EXPECT_EQ(platform.messages->shown[0].icon, MessageIcon::kExclamation);
}

TEST(Tune, AddCopiesTheMetreAndRaisesLastAbsRef) {
  Tune tune;
  tune.SetBeatsPerBar(3);
  tune.SetChangedSinceLastSaved(false);
  const auto tone = tune.Add(Note(5));
  EXPECT_EQ(tone->BeatsPerBar(), 3);
  EXPECT_EQ(tune.LastAbsRef(), 5);
  EXPECT_TRUE(tune.ChangedSinceLastSaved());
  tune.Add(Note(2));
  EXPECT_EQ(tune.LastAbsRef(), 5);
  EXPECT_EQ(tune.Count(), 2);
  EXPECT_EQ(tune.Item(QStringLiteral("2")), tune.Item(2));
  EXPECT_THROW(tune.Add(Note(2)), DuplicateKeyError);
}

TEST(Tune, BarCountIsTheHighestBar) {
  Tune tune;
  EXPECT_EQ(tune.BarCount(), 0);
  tune.Add(Note(1, 7));
  tune.Add(Note(2, 3));
  EXPECT_EQ(tune.BarCount(), 7);
  EXPECT_EQ(tune.TrackCount(), 1);
}

TEST(Tune, ABarAtWhoseHeadANoteEndsIsNoBarForThat) {
  Tune tune;
  auto last = Note(1, 16);
  last->SetDuration(4.0);
  tune.Add(last);
  tune.CalcNotesOff();
  ASSERT_EQ(tune.Item(2)->Bar(), 17);
  EXPECT_EQ(tune.BarCount(), 16);
  // What rings on into the bar, or begins in it, counts.
  last->SetDuration(4.25);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.BarCount(), 17);
  // A last note of two bars fills both.
  last->SetDuration(8.0);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.BarCount(), 17);
  last->SetDuration(4.0);
  tune.CalcNotesOff();
  tune.Add(Note(9, 17));
  EXPECT_EQ(tune.BarCount(), 17);
}

TEST(Tune, RewindStandsAtTheFirstBeatAndTells) {
  Tune tune;
  tune.SetBarNumber(7);
  tune.SetBeatWithinBar(3);
  QList<int> told;
  QObject::connect(&tune, &Tune::Rewound, [&] {
    told = {tune.BarNumber(), tune.BeatWithinBar(), static_cast<int>(tune.BeatNumber())};
  });
  tune.SetChangedSinceLastSaved(false);
  tune.Rewind();
  EXPECT_EQ(told, (QList<int>{1, 1, 1}));
  EXPECT_FALSE(tune.ChangedSinceLastSaved());
}

TEST(Tune, SideListsAppearOnFirstRead) {
  Tune tune;
  EXPECT_EQ(tune.ExpressionChanges(), nullptr);
  EXPECT_EQ(tune.Words()->Count(), 0);
  EXPECT_EQ(tune.Themes()->Count(), 0);
  EXPECT_EQ(tune.TempoChanges()->Count(), 0);
  EXPECT_EQ(tune.Words(), tune.Words());
}

TEST(CreateMelody, PutsSevenPitchesOnTheBeatsOfTwoBars) {
  Tune tune;
  tune.CreateMelody(40, 127, 1,
                    {QStringLiteral("E5"), QStringLiteral("D5"), QStringLiteral("C5"), QStringLiteral("E5"),
                     QStringLiteral("G5"), QStringLiteral("A5"), QStringLiteral("G5")});
  ASSERT_EQ(tune.Count(), 7);
  const int bars[] = {1, 1, 1, 1, 2, 2, 2};
  const int beats[] = {1, 2, 3, 4, 1, 2, 3};
  for (int i = 0; i < 7; ++i) {
    const Tone& tone = *tune.Item(i + 1);
    EXPECT_EQ(tone.Bar(), bars[i]);
    EXPECT_EQ(tone.Beat(), beats[i]);
    EXPECT_EQ(tone.Tick(), 0);
    EXPECT_EQ(tone.AbsRef(), 2 * i + 1);
    EXPECT_DOUBLE_EQ(tone.Duration(), 1.0);
    EXPECT_EQ(tone.Instrument(), 40);
    EXPECT_EQ(tone.Volume(), 127);
    EXPECT_EQ(tone.Track(), 1);
  }
  EXPECT_EQ(tune.Item(6)->Pitch(), QStringLiteral("A5"));
  ASSERT_EQ(tune.Tracks()->Count(), 2);
  EXPECT_EQ(tune.Tracks()->Item(2)->Description(), QStringLiteral("One Only Track"));
  EXPECT_EQ(tune.Tracks()->Item(2)->TrackNumber(), 1);
}

TEST(CreateMelody, NotesAreOneBeatLong) {
  Tune tune;
  tune.SetBeatLength(8);
  tune.SetBeatsPerBar(6);
  tune.CreateMelody(0, 100, 2, {QStringLiteral("C4"), QStringLiteral("D4")});
  EXPECT_DOUBLE_EQ(tune.Item(1)->Duration(), 0.5);
  EXPECT_EQ(tune.Item(2)->Beat(), 2);
  EXPECT_EQ(tune.Item(2)->Channel(), 2);
}

TEST(CreateMelody, AMetreOfZeroIsADivisionFailure) {
  Tune tune;
  tune.SetBeatLength(0);
  EXPECT_THROW(tune.CreateMelody(0, 100, 1, {QStringLiteral("C4")}), DivisionError);
  tune.SetBeatLength(4);
  tune.SetBeatsPerBar(0);
  EXPECT_THROW(tune.CreateMelody(0, 100, 1, {QStringLiteral("C4")}), DivisionError);
}

TEST(NoteDigest, HoldsTheFirstTenNotesOfTheMelodyTrackInC) {
  Tune tune;
  tune.SetKeySignature(1);
  std::int32_t abs_ref = 1;
  // A G major scale, with a controller and a note of another track between.
  for (const char* pitch : {"G4", "A4", "B4", "C5", "D5", "E5", "F#5", "G5", "A5", "B5", "C6", "D6"}) {
    auto tone = Note(abs_ref++);
    tone->SetPitch(QString::fromLatin1(pitch));
    tune.Add(tone);
    auto other = Note(abs_ref++);
    other->SetTrack(2);
    tune.Add(other);
    auto control = Note(abs_ref++);
    control->SetEventType(7);
    tune.Add(control);
  }
  EXPECT_EQ(GetFirstTenNotes(tune), QStringLiteral("C D E F G A B C D E "));
  EXPECT_EQ(tune.KeySignature(), 0);
  EXPECT_EQ(tune.Item(1)->Pitch(), QStringLiteral("G4"));
}

TEST(NoteDigest, TheShiftTakesTheSignOfTheSignature) {
  Tune tune;
  auto tone = Note(1);
  tone->SetPitch(QStringLiteral("F4"));
  tune.Add(tone);
  tune.SetKeySignature(-1);
  EXPECT_EQ(GetFirstTenNotes(tune), QStringLiteral("C "));
  tone->SetPitch(QStringLiteral("B3"));
  tune.SetKeySignature(5);
  EXPECT_EQ(GetFirstTenNotes(tune), QStringLiteral("C "));
  tone->SetPitch(QStringLiteral("Bb3"));
  EXPECT_EQ(GetFirstTenNotes(tune), QStringLiteral("Bb"));
}

TEST(NoteDigest, OfATuneWithoutMelodyIsEmpty) {
  Tune tune;
  EXPECT_EQ(GetFirstTenNotes(tune), QString());
}

}  // namespace
}  // namespace zelmar
