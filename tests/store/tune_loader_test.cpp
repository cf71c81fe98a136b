// Loading a tune: what it holds afterwards, what the windows hear meanwhile, where it goes.
#include "store/tune_loader.h"

#include "model/main_window_link.h"
#include "store/loading_fixture.h"

namespace zelmar::testing_support {
namespace {

using Loading = LoadingTest;

SampleTune FullTune() {
  SampleTune tune;
  tune.code_name = QStringLiteral("Moonlight");
  tune.title = QStringLiteral("Moonlight Sonata");
  tune.composer = QStringLiteral("Beethoven");
  tune.beat_length = 8;
  tune.beats_per_bar = 6;
  tune.key_mode = 1;
  tune.key_signature = -3;
  tune.tempo = 90;
  tune.midi_mode = QStringLiteral("XG");
  tune.accomp_pattern = 7;
  tune.melody_track = 2;
  tune.rank = 44;
  tune.tracks = {{2, QStringLiteral("Left"), 3, 32, true, 8, 9},
                 {1, QStringLiteral("Right"), 2, 5, true, 1, 2}};
  tune.words = {{2, 1, 0, QStringLiteral("two")},
                {1, 2, 0, QStringLiteral("one-two")},
                {1, 1, 5, QStringLiteral("one")}};
  tune.themes = {{2, 5, 6, QStringLiteral("second"), 1, 20}, {1, 1, 4, QStringLiteral("first"), 2, 10}};
  SampleEvent note;
  note.pitch = QStringLiteral("Db5");
  note.volume = 90;
  note.instrument = 11;
  note.track = 2;
  note.duration = 1.5;
  note.bar = 3;
  note.beat = 2;
  note.tick = 30;
  note.abs_ref = 17;
  note.enharmonic = QStringLiteral("b");
  SampleEvent tempo;
  tempo.event_type = 133;
  tempo.volume = 1;
  tempo.enharmonic = QVariant();
  tempo.abs_ref = 40;
  tune.events = {note, tempo};
  return tune;
}

TEST_F(Loading, TheCatalogueRowFillsTheTune) {
  const auto tune = Load(FullTune());
  ASSERT_NE(tune, nullptr);
  EXPECT_EQ(tune->Title(), QStringLiteral("Moonlight Sonata"));
  EXPECT_EQ(tune->FileName(), QStringLiteral("Moonlight"));
  EXPECT_EQ(tune->Description(), QStringLiteral("About it"));
  EXPECT_EQ(tune->BeatLength(), 8);
  EXPECT_EQ(tune->BeatsPerBar(), 6);
  EXPECT_EQ(tune->KeyMode(), 1);
  EXPECT_EQ(tune->KeySignature(), -3);
  EXPECT_EQ(tune->Tempo(), 90);
  EXPECT_EQ(tune->MIDIMode(), QStringLiteral("XG"));
  EXPECT_EQ(tune->AccompPattern(), 7);
  EXPECT_EQ(tune->MelodyTrack(), 2);
  EXPECT_EQ(tune->Rank(), 44);
  EXPECT_EQ(tune->Country(), QStringLiteral("Germany"));
  EXPECT_EQ(tune->Category(), QStringLiteral("Concerto"));
  EXPECT_EQ(tune->Composer(), QStringLiteral("Beethoven"));
  EXPECT_EQ(tune->SoloInstrument(), QStringLiteral("Violin"));
  EXPECT_EQ(tune->Ensemble(), QStringLiteral("Solo"));
  EXPECT_EQ(tune->Length(), QStringLiteral("Full"));
  EXPECT_EQ(tune->Style(), QStringLiteral("Baroque"));
  EXPECT_TRUE(tune->Sorted());
  EXPECT_EQ(tune->BarNumber(), 1);
  EXPECT_EQ(tune->BeatWithinBar(), 1);
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
}

TEST_F(Loading, NullTextsBecomeOneBlank) {
  SampleTune sample = FullTune();
  sample.description = sample.country = sample.category = sample.composer = sample.solo_instrument =
      sample.ensemble = sample.length = sample.style = QVariant();
  const auto tune = Load(sample);
  const auto blank = QStringLiteral(" ");
  for (const QString& text : {tune->Description(), tune->Country(), tune->Category(), tune->Composer(),
                              tune->SoloInstrument(), tune->Ensemble(), tune->Length(), tune->Style()})
    EXPECT_EQ(text, blank);
}

TEST_F(Loading, ANullTitleBecomesOneBlank) {
  database.AddTune(FullTune());
  database.Execute(QStringLiteral("UPDATE tblMelodies SET Title = NULL"));
  EXPECT_EQ(Load(QStringLiteral("Moonlight"))->Title(), QStringLiteral(" "));
  EXPECT_EQ(done, QStringList(QStringLiteral("Moonlight|Beethoven -  ")));
}

TEST_F(Loading, ANullModeIsGmWithoutAWord) {
  database.AddTune(FullTune());
  database.Execute(QStringLiteral("UPDATE tblMelodies SET MIDIMode = NULL"));
  EXPECT_EQ(Load(QStringLiteral("Moonlight"))->MIDIMode(), QStringLiteral("GM"));
  EXPECT_TRUE(platform.messages->shown.isEmpty());
}

TEST_F(Loading, AModeThatIsNoneIsWarnedOfAndGm) {
  SampleTune sample = FullTune();
  sample.midi_mode = QStringLiteral("GM3");
  EXPECT_EQ(Load(sample)->MIDIMode(), QStringLiteral("GM"));
  ASSERT_EQ(platform.messages->shown.size(), 1);
  EXPECT_EQ(platform.messages->shown[0].title, QStringLiteral("Invalid MIDI mode"));
}

TEST_F(Loading, LastAbsRefGrowsWithTheEventsWhateverTheRowSays) {
  database.AddTune(FullTune());
  database.Execute(QStringLiteral("UPDATE tblMelodies SET LastAbsRef = 999"));
  // Events 17 and 40, and one note-off.
  EXPECT_EQ(Load(QStringLiteral("Moonlight"))->LastAbsRef(), 41);
}

TEST_F(Loading, TracksComeInOrderAndTheFirstOneIsOverwritten) {
  const auto tracks = Load(FullTune())->Tracks();
  ASSERT_EQ(tracks->Count(), 2);
  const Track& first = *tracks->Item(1);
  EXPECT_EQ(&first, tracks->Item(QStringLiteral("1")).get());
  EXPECT_EQ(first.Description(), QStringLiteral("Right"));
  EXPECT_EQ(first.TrackNumber(), 1);
  EXPECT_EQ(first.Channel(), 2);
  EXPECT_EQ(first.Instrument(), 5);
  EXPECT_TRUE(first.Muted());
  EXPECT_EQ(first.BankMSB0(), 1);
  EXPECT_EQ(first.BankLSB32(), 2);
  const Track& second = *tracks->Item(QStringLiteral("2"));
  EXPECT_EQ(second.Description(), QStringLiteral("Left"));
  EXPECT_EQ(second.TrackNumber(), 2);
  EXPECT_EQ(second.Channel(), 3);
  EXPECT_EQ(second.Instrument(), 32);
  EXPECT_TRUE(second.Muted());
  EXPECT_EQ(second.BankMSB0(), 8);
  EXPECT_EQ(second.BankLSB32(), 9);
}

TEST_F(Loading, ATuneWithoutTrack1HasNoneAndItsTonesOfTrack1HaveChannel1) {
  SampleTune sample = FullTune();
  sample.tracks = {{2, QStringLiteral("Left"), 3, 32}};
  const auto tune = Load(sample);
  ASSERT_EQ(tune->Tracks()->Count(), 1);
  EXPECT_FALSE(tune->Tracks()->Holds(QStringLiteral("1")));
  EXPECT_EQ(tune->Item(QStringLiteral("40"))->Track(), 1);
  EXPECT_EQ(tune->Item(QStringLiteral("40"))->Channel(), 1);
  EXPECT_EQ(tune->Item(QStringLiteral("17"))->Channel(), 3);
}

TEST_F(Loading, ATrackThatARepairPutInHasNoBank) {
  database.AddTune(FullTune());
  database.Execute(QStringLiteral("UPDATE tblTracks SET DefaultBankMSB = NULL, DefaultBankLSB = NULL"));
  const auto tune = Load(QStringLiteral("Moonlight"));
  EXPECT_EQ(tune->Tracks()->Item(1)->BankMSB0(), 0);
  EXPECT_EQ(tune->Tracks()->Item(2)->BankLSB32(), 0);
}

TEST_F(Loading, WordsComeInOrderOfTime) {
  const auto words = Load(FullTune())->Words();
  ASSERT_EQ(words->Count(), 3);
  EXPECT_EQ(words->Item(1)->WordText(), QStringLiteral("one"));
  EXPECT_EQ(words->Item(1)->Bar(), 1);
  EXPECT_EQ(words->Item(1)->Beat(), 1);
  EXPECT_EQ(words->Item(1)->Tick(), 5);
  EXPECT_EQ(words->Item(2)->WordText(), QStringLiteral("one-two"));
  EXPECT_EQ(words->Item(3)->WordText(), QStringLiteral("two"));
}

TEST_F(Loading, ThemesComeInOrderOfNumber) {
  const auto themes = Load(FullTune())->Themes();
  ASSERT_EQ(themes->Count(), 2);
  const Theme& first = *themes->Item(1);
  EXPECT_EQ(first.ThemeNo(), 1);
  EXPECT_EQ(first.ThemeStartBar(), 1);
  EXPECT_EQ(first.ThemeEndBar(), 4);
  EXPECT_EQ(first.ThemeNotes(), QStringLiteral("first"));
  EXPECT_EQ(first.TrackNumber(), 2);
  EXPECT_EQ(first.Rank(), 10);
  EXPECT_EQ(themes->Item(2)->ThemeNo(), 2);
}

TEST_F(Loading, AnEmptyThemeNoteIsEmptyAndANullOneIsABlank) {
  SampleTune sample = FullTune();
  sample.themes.clear();
  database.AddTune(sample);
  for (const QVariant& notes : {QVariant(QStringLiteral("")), QVariant()})
    database.AddRow(QStringLiteral("tblThemes"),
                    {sample.code_name, notes.isValid() ? 1 : 2, 1, 2, notes, 1, 0});
  const auto themes = Load(sample.code_name)->Themes();
  ASSERT_EQ(themes->Count(), 2);
  EXPECT_EQ(themes->Item(1)->ThemeNotes(), QString());
  EXPECT_EQ(themes->Item(2)->ThemeNotes(), QStringLiteral(" "));
}

TEST_F(Loading, ATuneWithoutWordsOrThemesHasEmptyCollections) {
  SampleTune sample = FullTune();
  sample.words.clear();
  sample.themes.clear();
  const auto tune = Load(sample);
  EXPECT_EQ(tune->Words()->Count(), 0);
  EXPECT_EQ(tune->Themes()->Count(), 0);
}

TEST_F(Loading, EventsAreReadFieldByField) {
  const auto tune = Load(FullTune());
  const Tone& note = *tune->Item(QStringLiteral("17"));
  EXPECT_EQ(note.EventType(), MUSIC_NOTE);
  EXPECT_EQ(note.Bar(), 3);
  EXPECT_EQ(note.Beat(), 2);
  EXPECT_EQ(note.Tick(), 30);
  EXPECT_EQ(note.Track(), 2);
  EXPECT_EQ(note.Duration(), 1.5);
  EXPECT_EQ(note.Instrument(), 11);
  EXPECT_EQ(note.Pitch(), QStringLiteral("C#5"));
  EXPECT_EQ(note.Volume(), 90);
  EXPECT_EQ(note.OldVolume(), 90);
  EXPECT_EQ(note.EnHarmonic(), QStringLiteral("b"));
  EXPECT_EQ(note.Channel(), 3);
  EXPECT_EQ(note.BeatsPerBar(), 6);
  EXPECT_EQ(note.BeatLength(), 8);
  const Tone& tempo = *tune->Item(QStringLiteral("40"));
  EXPECT_EQ(tempo.EventType(), TEMPO_CHANGE);
  EXPECT_EQ(tempo.EnHarmonic(), QStringLiteral(" "));
}

TEST_F(Loading, NoteOffsAreMadeAndEverythingStandsInOrderOfTime) {
  const auto tune = Load(FullTune());
  ASSERT_EQ(tune->Count(), 3);
  EXPECT_EQ(tune->Item(1)->AbsRef(), 40);
  EXPECT_EQ(tune->Item(2)->AbsRef(), 17);
  EXPECT_EQ(tune->Item(3)->EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(tune->Item(3)->AbsRef(), 41);
}

TEST_F(Loading, ARefusedPitchKeepsC4AndTheLoadGoesOn) {
  SampleTune sample = FullTune();
  sample.events[0].pitch = QStringLiteral("H9");
  const auto tune = Load(sample);
  EXPECT_EQ(tune->Item(QStringLiteral("17"))->Pitch(), QStringLiteral("C4"));
  EXPECT_TRUE(platform.messages->shown.isEmpty());
}

TEST_F(Loading, ACodeNameOfOtherCaseComesBackAsStored) {
  database.AddTune(FullTune());
  QString name = QStringLiteral("mOONLIGHT");
  loader.DoLoad(name);
  EXPECT_TRUE(loader.LoadedOk());
  EXPECT_EQ(name, QStringLiteral("Moonlight"));
  EXPECT_EQ(loader.TuneName(), QStringLiteral("mOONLIGHT"));
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("Moonlight"));
  EXPECT_EQ(done, QStringList(QStringLiteral("Moonlight|Beethoven - Moonlight Sonata")));
}

TEST_F(Loading, ACodeNameMayHoldBlanksAndSigns) {
  SampleTune sample = FullTune();
  sample.code_name = QStringLiteral("My Tune-No. 1 (new)");
  EXPECT_EQ(Load(sample)->FileName(), QStringLiteral("My Tune-No. 1 (new)"));
}

TEST_F(Loading, TheTuneGoesToTheMainWindowAndIntoTheRecentList) {
  Load(FullTune());
  EXPECT_TRUE(loader.LoadedOk());
  EXPECT_TRUE(Global().TuneLoadedFlag);
  EXPECT_EQ(Global().RecentCaptions[0], QStringLiteral("Beethoven - Moonlight Sonata"));
  EXPECT_EQ(window.menu_rebuilds, 1);
  Load(QStringLiteral("Moonlight"));
  EXPECT_EQ(Global().RecentCodeNames[1], QStringLiteral("Moonlight")) << "a tune loaded twice stands twice";
  EXPECT_EQ(window.menu_rebuilds, 2);
}

TEST_F(Loading, VariousAndNoComposerAreLeftOutOfTheCaption) {
  for (const char* composer : {"Various", ""}) {
    SampleTune sample = FullTune();
    sample.code_name = QStringLiteral("By ") + QString::fromLatin1(composer);
    sample.composer = QString::fromLatin1(composer);
    if (*composer == '\0') sample.composer = QStringLiteral("");
    Load(sample);
    EXPECT_EQ(Global().RecentCaptions[0], QStringLiteral("Moonlight Sonata")) << composer;
  }
}

TEST_F(Loading, ANullComposerStandsAsItsBlankInTheCaption) {
  SampleTune sample = FullTune();
  sample.composer = QVariant();
  Load(sample);
  EXPECT_EQ(Global().RecentCaptions[0], QStringLiteral("  - Moonlight Sonata"));
  EXPECT_EQ(done, QStringList(QStringLiteral("Moonlight|  - Moonlight Sonata")));
}

TEST_F(Loading, TheNameOfTheTuneMayBeSetAndIsTheLastOneLoaded) {
  loader.SetTuneName(QStringLiteral("Fugue"));
  EXPECT_EQ(loader.TuneName(), QStringLiteral("Fugue"));
  Load(FullTune());
  EXPECT_EQ(loader.TuneName(), QStringLiteral("Moonlight"));
}

TEST_F(Loading, ATargetTakesTheTuneAndTheMainWindowIsLeftWithoutOne) {
  database.AddTune(FullTune());
  window.SetMyTune(std::make_shared<Tune>());
  auto target = std::make_shared<Tune>();
  const auto before = target;
  QString name = QStringLiteral("moonlight");
  loader.DoLoad(name, target);
  ASSERT_NE(target, before);
  EXPECT_EQ(target->Title(), QStringLiteral("Moonlight Sonata"));
  EXPECT_TRUE(target->ChangedSinceLastSaved());
  EXPECT_EQ(name, QStringLiteral("Moonlight"));
  EXPECT_FALSE(loader.LoadedOk());
  EXPECT_EQ(window.MyTune(), nullptr);
  EXPECT_TRUE(Global().RecentCodeNames[0].isEmpty());
  EXPECT_EQ(window.menu_rebuilds, 0);
  EXPECT_TRUE(Global().TuneLoadedFlag);
  EXPECT_EQ(done, QStringList(QStringLiteral("Moonlight|")));
}

TEST_F(Loading, AnEmptyTargetLoadsIntoTheMainWindow) {
  database.AddTune(FullTune());
  std::shared_ptr<Tune> target;
  QString name = QStringLiteral("Moonlight");
  loader.DoLoad(name, target);
  EXPECT_TRUE(loader.LoadedOk());
  EXPECT_EQ(target, nullptr);
  EXPECT_NE(window.MyTune(), nullptr);
}

TEST_F(Loading, ALoaderServesManyLoads) {
  const auto first = Load(FullTune());
  const auto second = Load(QStringLiteral("Moonlight"));
  EXPECT_NE(first, second);
  EXPECT_EQ(first->Count(), second->Count());
}

}  // namespace
}  // namespace zelmar::testing_support
