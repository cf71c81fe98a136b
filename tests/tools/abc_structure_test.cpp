#include <gtest/gtest.h>

#include "abc_support.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct KeyRow {
  const char* key;
  int sharps;
  int mode;
  const char* pitches;  // of C D E F G A B
};

void PrintTo(const KeyRow& row, std::ostream* out) {
  *out << row.key;
}

class AbcKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(AbcKeys, GiveSignatureModeAndNotes) {
  const AbcTune tune = ReadBody("C D E F | G A B2 |", "4/4", {}, GetParam().key);
  EXPECT_EQ(tune.key_signature, GetParam().sharps);
  EXPECT_EQ(tune.key_mode, GetParam().mode);
  EXPECT_EQ(Pitches(tune), GetParam().pitches);
}

INSTANTIATE_TEST_SUITE_P(
    All, AbcKeys,
    testing::Values(
        KeyRow{"C", 0, 0, "C4 D4 E4 F4 G4 A4 B4"}, KeyRow{"Bm", 2, 1, "C#4 D4 E4 F#4 G4 A4 B4"},
        KeyRow{"Ddor", 0, 1, "C4 D4 E4 F4 G4 A4 B4"}, KeyRow{"F#mix", 5, 0, "C#4 Eb4# E4 F#4 Ab4# Bb4# B4"},
        KeyRow{"G major", 1, 0, "C4 D4 E4 F#4 G4 A4 B4"}, KeyRow{"A minor", 0, 1, "C4 D4 E4 F4 G4 A4 B4"},
        KeyRow{"Ephrygian", 0, 1, "C4 D4 E4 F4 G4 A4 B4"}, KeyRow{"FLydian", 0, 0, "C4 D4 E4 F4 G4 A4 B4"},
        KeyRow{"Bloc", 0, 1, "C4 D4 E4 F4 G4 A4 B4"}, KeyRow{"Cion", 0, 0, "C4 D4 E4 F4 G4 A4 B4"},
        KeyRow{"Daeo", -1, 1, "C4 D4 E4 F4 G4 A4 Bb4"}, KeyRow{"Gb", -6, 0, "B3b C#4b Eb4 F4 F#4b Ab4 Bb4"},
        KeyRow{"Cb", -7, 0, "B3b C#4b Eb4 E4b F#4b Ab4 Bb4"},
        KeyRow{"C#", 7, 0, "C#4 Eb4# F4# F#4 Ab4# Bb4# C5#"}, KeyRow{"none", 0, 0, "C4 D4 E4 F4 G4 A4 B4"},
        KeyRow{"", 0, 0, "C4 D4 E4 F4 G4 A4 B4"}, KeyRow{"D =c", 2, 0, "C4 D4 E4 F#4 G4 A4 B4"},
        KeyRow{"D exp _b _e ^f", 0, 0, "C4 D4 Eb4 F#4 G4 A4 Bb4"},
        KeyRow{"F bass", -1, 0, "C4 D4 E4 F4 G4 A4 Bb4"},
        KeyRow{"F clef=treble", -1, 0, "C4 D4 E4 F4 G4 A4 Bb4"}));

struct TempoRow {
  const char* field;
  int tempo;
};

void PrintTo(const TempoRow& row, std::ostream* out) {
  *out << row.field;
}

class AbcTempos : public testing::TestWithParam<TempoRow> {};

TEST_P(AbcTempos, AreCrotchetsAMinute) {
  EXPECT_EQ(ReadBody("C4 |", "4/4", QByteArray("Q:") + GetParam().field + "\n").tempo, GetParam().tempo);
}

INSTANTIATE_TEST_SUITE_P(All, AbcTempos,
                         testing::Values(TempoRow{"1/4=100", 100}, TempoRow{"3/8=60", 90},
                                         TempoRow{"1/8=144", 72}, TempoRow{"1/2 = 60", 120},
                                         TempoRow{"\"Allegro\" 1/4=132", 132},
                                         TempoRow{"1/4=76 \"slow\"", 76}, TempoRow{"\"Andante\"", 120},
                                         TempoRow{"1/4 3/8 1/4 3/8=40", 200}, TempoRow{"90", 90},
                                         TempoRow{"1/8=145", 72}));

TEST(AbcStructure, TempoChangeIsAnEventThatCarriesItsTempoInTwoFields) {
  const AbcTune tune = ReadBody("C2 [Q:1/4=300] D2 |\nQ:1/2=32\nE4 |");
  ASSERT_EQ(tune.events.size(), 5U);
  const AbcEvent& change = tune.events.at(1);
  EXPECT_EQ(change.event_type, TEMPO_CHANGE);
  EXPECT_EQ(change.volume, 2);
  EXPECT_EQ(change.instrument, 44);
  EXPECT_EQ(change.bar, 1);
  EXPECT_EQ(change.beat, 3);
  EXPECT_EQ(change.track, 1);
  EXPECT_EQ(tune.events.at(3).event_type, TEMPO_CHANGE);
  EXPECT_EQ(tune.events.at(3).instrument, 64);
  EXPECT_EQ(tune.events.at(3).bar, 2);
  EXPECT_EQ(tune.tempo, 120);
}

TEST(AbcStructure, TheSameTempoInTwoVoicesIsOneEvent) {
  const AbcTune tune = ReadBody("[V:1] [Q:1/4=60] C4 |\n[V:2] [Q:1/4=60] E4 |");
  EXPECT_EQ(tune.events.size(), 3U);
}

TEST(AbcStructure, PickupIsPutAtTheEndOfAFullFirstBar) {
  const AbcTune tune = ReadBody("G | C4 | D3 |");
  EXPECT_EQ(Notes(tune), "1.4.0 G4 1; 2.1.0 C4 4; 3.1.0 D4 3");
  EXPECT_EQ(tune.lead_in_pulses, 360);
  EXPECT_EQ(tune.bar_count, 3);
}

TEST(AbcStructure, PickupMayBeFollowedByAFullLastBar) {
  EXPECT_EQ(Notes(ReadBody("G | C4 |")), "1.4.0 G4 1; 2.1.0 C4 4");
}

TEST(AbcStructure, RepeatIsWrittenOut) {
  EXPECT_EQ(Pitches(ReadBody("|: C4 | D4 :| E4 |")), "C4 D4 C4 D4 E4");
  EXPECT_EQ(Pitches(ReadBody("C4 | D4 :| E4 :|")), "C4 D4 C4 D4 E4 E4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 :: D4 :|")), "C4 C4 D4 D4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 :||: D4 :|")), "C4 C4 D4 D4");
  EXPECT_EQ(Pitches(ReadBody("|:: C4 ::| D4 |]")), "C4 C4 C4 D4");
}

TEST(AbcStructure, EndingsAreChosenByThePass) {
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1 D4 :|2 E4 || F4 |")), "C4 D4 C4 E4 F4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 |[1 D4 :|[2 E4 |]")), "C4 D4 C4 E4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1,2 D4 :|3 E4 || F4 |")), "C4 D4 C4 D4 C4 E4 F4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1-2 D4 :|3 E4 |")), "C4 D4 C4 D4 C4 E4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1 D4 :|2 E4 :| F4 |")), "C4 D4 C4 E4 F4");
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1 D4 :|2 E4 |: F4 :|")), "C4 D4 C4 E4 F4 F4");
}

TEST(AbcStructure, PassesWithoutEndingOfTheirOwnTakeTheOneThatNamesThem) {
  EXPECT_EQ(Pitches(ReadBody("|: C4 |1 D4 :|2,3 E4 :| F4 |")), "C4 D4 C4 E4 C4 E4 F4");
}

TEST(AbcStructure, RepeatJoinsItsLastBarToThePickup) {
  EXPECT_EQ(Notes(ReadBody("|: G | C4 | D3 :|")),
            "1.4.0 G4 1; 2.1.0 C4 4; 3.1.0 D4 3; 3.4.0 G4 1; 4.1.0 C4 4; 5.1.0 D4 3");
}

TEST(AbcStructure, EachHalfMayHaveAPickupOfItsOwn) {
  EXPECT_EQ(Notes(ReadBody("|: G | C3 :: A | D3 :|")),
            "1.4.0 G4 1; 2.1.0 C4 3; 2.4.0 G4 1; 3.1.0 C4 3; 3.4.0 A4 1; 4.1.0 D4 3; 4.4.0 A4 1; 5.1.0 D4 3");
}

TEST(AbcStructure, TheLastBarMayCompleteThePickupOfALaterPart) {
  EXPECT_EQ(Notes(ReadBody("C4 | D3 |: E | F3 :|")),
            "1.1.0 C4 4; 2.1.0 D4 3; 2.4.0 E4 1; 3.1.0 F4 3; 3.4.0 E4 1; 4.1.0 F4 3");
}

TEST(AbcStructure, TieIntoBothEndings) {
  EXPECT_EQ(Notes(ReadBody("|: C4- |1 C4 :|2 C2 D2 |")), "1.1.0 C4 8; 3.1.0 C4 6; 4.3.0 D4 2");
}

TEST(AbcStructure, VoicesAreTracksInTheOrderOfTheirFirstMention) {
  const AbcTune tune = ReadBody("V:B\nC,4 |\nV:A\nC4 | D4 |\n[V:B] D,4 |", "4/4",
                                "V:A clef=treble name=\"Upper voice\"\nV:B clef=bass nm=\"Lower\" middle=d\n"
                                "%%zelmar-voice B instrument=42 channel=7 volume=60\n");
  ASSERT_EQ(tune.tracks.size(), 2U);
  EXPECT_EQ(tune.tracks[0].name, QStringLiteral("Upper voice"));
  EXPECT_EQ(tune.tracks[0].number, 1);
  EXPECT_EQ(tune.tracks[0].channel, 1);
  EXPECT_EQ(tune.tracks[1].name, QStringLiteral("Lower"));
  EXPECT_EQ(tune.tracks[1].channel, 7);
  EXPECT_EQ(tune.tracks[1].instrument, 42);
  EXPECT_EQ(Notes(tune, 1), "1.1.0 C4 4; 2.1.0 D4 4");
  EXPECT_EQ(Notes(tune, 2), "1.1.0 C3 4; 2.1.0 D3 4");
  for (const AbcEvent& event : tune.events) {
    EXPECT_EQ(event.instrument, event.track == 2 ? 42 : 0);
    EXPECT_EQ(event.channel, event.track == 2 ? 7 : 1);
    EXPECT_EQ(event.volume, event.track == 2 ? 60 : 80);
  }
}

TEST(AbcStructure, TheTenthVoiceLeavesTheDrumChannelAlone) {
  QByteArray body;
  for (int voice = 1; voice <= 15; ++voice) body += "[V:" + QByteArray::number(voice) + "] C4 |\n";
  const AbcTune tune = ReadBody(body);
  EXPECT_EQ(tune.tracks.at(8).channel, 9);
  EXPECT_EQ(tune.tracks.at(9).channel, 11);
  EXPECT_EQ(tune.tracks.at(14).channel, 16);
}

TEST(AbcStructure, InlineFieldsChangeKeyAndUnitLength) {
  EXPECT_EQ(Notes(ReadBody("F [L:1/8] F2 [K:G] F4 | [M:4/4][P:A][N:x] F8 |")),
            "1.1.0 F4 1; 1.2.0 F4 1; 1.3.0 F#4 2; 2.1.0 F#4 4");
  EXPECT_EQ(Pitches(ReadBody("F4 |\nK:D\nF4 |\nL:1/8\nF8 |\nK:clef=bass\nF8 |")), "F4 F#4 F#4 F#4");
}

TEST(AbcStructure, EventsAreNumberedInTimeOrder) {
  const AbcTune tune = ReadBody("[V:1] C2 D2 |\n[V:2] E4 |");
  ASSERT_EQ(tune.events.size(), 3U);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(tune.events.at(static_cast<std::size_t>(i)).abs_ref, i + 1);
  EXPECT_EQ(Pitches(tune), "C4 E4 D4");
}

TEST(AbcStructure, CatalogueLinesFillTheCatalogue) {
  const AbcTune tune = ReadBody(
      "C4 | D4 |", "4/4",
      "C:someone\nR:jig\nT:another title\n%%zelmar-codename My Tune\n%%zelmar-composer "
      "Bach\n%%zelmar-category Hymn\n"
      "%%zelmar-style Baroque\n%%zelmar-ensemble Choir\n%%zelmar-instrument Flute\n%%zelmar-country Germany\n"
      "%%zelmar-length Theme\n%%zelmar-rank 12\n%%zelmar-description One.\n%%zelmar-description Two.\n"
      "%%zelmar-melody-track 1\n%%zelmar-theme 2 1 2 1 30 Free text, with a comma\n%%somebody-else 1\n");
  EXPECT_EQ(tune.catalogue.code_name, QStringLiteral("My Tune"));
  EXPECT_EQ(tune.catalogue.title, QStringLiteral("t"));
  EXPECT_EQ(tune.catalogue.composer, QStringLiteral("Bach"));
  EXPECT_EQ(tune.catalogue.category, QStringLiteral("Hymn"));
  EXPECT_EQ(tune.catalogue.style, QStringLiteral("Baroque"));
  EXPECT_EQ(tune.catalogue.ensemble, QStringLiteral("Choir"));
  EXPECT_EQ(tune.catalogue.solo_instrument, QStringLiteral("Flute"));
  EXPECT_EQ(tune.catalogue.country, QStringLiteral("Germany"));
  EXPECT_EQ(tune.catalogue.length, QStringLiteral("Theme"));
  EXPECT_EQ(tune.catalogue.rank, 12);
  EXPECT_EQ(tune.catalogue.description, QStringLiteral("One. Two."));
  ASSERT_EQ(tune.themes.size(), 1U);
  EXPECT_EQ(tune.themes[0].number, 2);
  EXPECT_EQ(tune.themes[0].start_bar, 1);
  EXPECT_EQ(tune.themes[0].end_bar, 2);
  EXPECT_EQ(tune.themes[0].track, 1);
  EXPECT_EQ(tune.themes[0].rank, 30);
  EXPECT_EQ(tune.themes[0].text, QStringLiteral("Free text, with a comma"));
}

TEST(AbcStructure, TheCodeNameIsTheBaseNameOfTheFile) {
  EXPECT_EQ(ReadBody("C4 |").catalogue.code_name, QStringLiteral("t"));
  EXPECT_EQ(ReadBody("C4 |").catalogue.composer, QStringLiteral("Various"));
}

TEST(AbcStructure, TheMelodyTrackOwnsTempoAndWords) {
  const AbcTune tune =
      ReadBody("[V:1] C4 |\nw: low\n[V:2] [Q:1/4=60] E4 |\nw: high", "4/4", "%%zelmar-melody-track 2\n");
  EXPECT_EQ(tune.melody_track, 2);
  EXPECT_EQ(tune.events.at(0).event_type, TEMPO_CHANGE);
  EXPECT_EQ(tune.events.at(0).track, 2);
  EXPECT_EQ(Words(tune), "1.1.0=high");
}

TEST(AbcWords, SyllablesLieUnderTheNotes) {
  EXPECT_EQ(Words(ReadBody("C D z E | F4 |\nw: Ah vous di-rai")),
            "1.1.0=Ah; 1.2.0=vous; 1.4.0=di-; 2.1.0=rai");
}

TEST(AbcWords, SignsSkipJoinAndExtend) {
  EXPECT_EQ(Words(ReadBody("C D E F | G A B c |\nw: time_ * of~the | day-break\\-fast")),
            "1.1.0=time; 1.4.0=of the; 2.1.0=day-; 2.2.0=break-fast");
  EXPECT_EQ(Words(ReadBody("C D E F | G4 |\nw: a - b--c")), "1.1.0=a; 1.3.0=b-; 2.1.0=c");
}

TEST(AbcWords, AStrokeGoesToTheNextBar) {
  EXPECT_EQ(Words(ReadBody("C D E F | G4 |\nw: one | two")), "1.1.0=one; 2.1.0=two");
}

TEST(AbcWords, AChordTakesOneSyllable) {
  EXPECT_EQ(Words(ReadBody("[CE]2 D2 |\nw: one two")), "1.1.0=one; 1.3.0=two");
}

TEST(AbcWords, VersesFollowThePasses) {
  EXPECT_EQ(Words(ReadBody("|: C4 :|\nw: first\nw: second")), "1.1.0=first; 2.1.0=second");
  EXPECT_EQ(Words(ReadBody("|: C4 :|\nw: only")), "1.1.0=only; 2.1.0=only");
  EXPECT_EQ(Words(ReadBody("C4 |\nw: first\nw: second")), "1.1.0=first");
}

TEST(AbcWords, ALineThatGoesOnTakesItsWordsWithIt) {
  EXPECT_EQ(Words(ReadBody("C4 | \\\nD4 |\nw: one two")), "1.1.0=one; 2.1.0=two");
  EXPECT_EQ(Words(ReadBody("C4 |\nD4 |\nw: two")), "2.1.0=two");
}

TEST(AbcWords, KeepLettersOfOtherTongues) {
  EXPECT_EQ(Words(ReadBody("C4 |\nw: Fr\xc3\xa8re")), "1.1.0=Fr\xc3\xa8re");
}

TEST(AbcStructure, CommentsAndOtherLineEndsAreFine) {
  EXPECT_EQ(
      Pitches(ReadAbc("%abc-2.1\r\n% a remark\r\nX:1\r\nT:t % title\r\nM:4/4\r\nL:1/4\r\nK:C\r\nC2 D2 | % "
                      "nothing\r\n% line\r\nE4 |]\r\n\r\n",
                      QStringLiteral("t.abc"))),
      "C4 D4 E4");
}

}  // namespace
}  // namespace zelmar
