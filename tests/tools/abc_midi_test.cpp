// Commands for the synthesiser: instruments, controllers, banks and pitch bends at their place.
#include <gtest/gtest.h>

#include "abc_support.h"

namespace zelmar {
namespace {

using namespace testing_support;

// "bar.beat.tick type=volume" of everything that is no note and no tempo, in order.
std::string Controls(const AbcTune& tune) {
  QStringList controls;
  for (const AbcEvent& event : tune.events)
    if (event.event_type < MUSIC_NOTE || event.event_type == PITCH_BEND)
      controls.append(QStringLiteral("%1.%2.%3 %4=%5")
                          .arg(event.bar)
                          .arg(event.beat)
                          .arg(event.tick)
                          .arg(event.event_type)
                          .arg(event.volume));
  return controls.join(QStringLiteral("; ")).toStdString();
}

std::string Instruments(const AbcTune& tune) {
  QStringList instruments;
  for (const AbcEvent& event : tune.events)
    if (event.event_type == MUSIC_NOTE) instruments.append(QString::number(event.instrument));
  return instruments.join(u' ').toStdString();
}

TEST(AbcMidi, AControllerStandsAtItsPlaceInTime) {
  EXPECT_EQ(Controls(ReadBody("%%MIDI control 91 20\nC2 D2 |\n%%MIDI control 91 100\nE4 |")),
            "1.1.0 91=20; 2.1.0 91=100");
  EXPECT_EQ(Controls(ReadBody("C [I:MIDI control 10 0] D/ [I:MIDI=control 10 127] E/ F G |")),
            "1.2.0 10=0; 1.2.60 10=127");
}

TEST(AbcMidi, AControllerGoesBeforeTheNotesOfItsMoment) {
  const AbcTune tune = ReadBody("[V:1] C2 D2 |\n[V:2] E2 [I:MIDI control 7 50] [Q:1/4=60] F2 |");
  ASSERT_EQ(tune.events.size(), 6U);
  EXPECT_EQ(tune.events[2].event_type, TEMPO_CHANGE);
  EXPECT_EQ(tune.events[3].event_type, 7);
  EXPECT_EQ(tune.events[4].event_type, MUSIC_NOTE);
  for (std::size_t i = 0; i < tune.events.size(); ++i)
    EXPECT_EQ(tune.events[i].abs_ref, static_cast<int>(i) + 1);
}

TEST(AbcMidi, ControllersOfOneMomentKeepTheirOrder) {
  EXPECT_EQ(Controls(ReadBody("C2 [I:MIDI control 0 8][I:MIDI control 32 0][I:MIDI control 0 1] D2 |")),
            "1.3.0 0=8; 1.3.0 32=0; 1.3.0 0=1");
}

TEST(AbcMidi, AControllerIsOnTheTrackAndChannelOfItsVoice) {
  const AbcTune tune =
      ReadBody("V:1\nC4 |\nV:2\n%%MIDI control 1 90\nE4 |", "4/4", "V:1\nV:2\n%%zelmar-voice 2 channel=7\n");
  ASSERT_EQ(tune.events.size(), 3U);
  const AbcEvent& event = tune.events[0];
  EXPECT_EQ(event.event_type, 1);
  EXPECT_EQ(event.track, 2);
  EXPECT_EQ(event.channel, 7);
}

// An instrument of 99 would make a change of expression one for all tracks.
TEST(AbcMidi, ControllersHaveTheInstrumentNoughtAndTheirValueAsVolume) {
  const AbcTune tune = ReadBody("%%MIDI program 99\n%%MIDI control 11 3\nC4 |");
  ASSERT_EQ(tune.events.size(), 2U);
  EXPECT_EQ(tune.events[0].instrument, 0);
  EXPECT_EQ(tune.events[0].volume, 3);
  EXPECT_EQ(tune.events[0].pitch, QStringLiteral("C4"));
  EXPECT_DOUBLE_EQ(tune.events[0].duration, 1.0);
}

TEST(AbcMidi, APitchBendKeepsItsTwoHalves) {
  const AbcTune tune = ReadBody("%%MIDI pitchbend 5 70\nC2 [I:MIDI pitchbend 0 64] D2 |");
  ASSERT_EQ(tune.events.size(), 4U);
  EXPECT_EQ(tune.events[0].event_type, PITCH_BEND);
  EXPECT_EQ(tune.events[0].instrument, 5);
  EXPECT_EQ(tune.events[0].volume, 70);
  EXPECT_EQ(tune.events[2].volume, 64);
  EXPECT_EQ(tune.events[2].beat, 3);
}

TEST(AbcMidi, AProgramHoldsForTheNotesBehindItInItsVoice) {
  EXPECT_EQ(Instruments(ReadBody("C [I:MIDI program 40] D E2 |\n%%MIDI program 12\nF4 |")), "0 40 40 12");
  const AbcTune tune = ReadBody("[V:1] [I:MIDI program 40] C4 |\n[V:2] E4 |");
  EXPECT_EQ(Instruments(tune), "40 0");
}

TEST(AbcMidi, TheFirstProgramIsTheInstrumentOfTheTrack) {
  EXPECT_EQ(ReadBody("%%MIDI program 40\nC2 [I:MIDI program 41] D2 |").tracks.at(0).instrument, 40);
  EXPECT_EQ(ReadBody("C2 [I:MIDI program 41] D2 |", "4/4", "%%zelmar-voice 1 instrument=9\nV:1\n")
                .tracks.at(0)
                .instrument,
            9);
  // It also comes before the one of the header.
  EXPECT_EQ(ReadBody("%%MIDI program 40\nC4 |", "4/4", "%%zelmar-voice 1 instrument=9\nV:1\n")
                .tracks.at(0)
                .instrument,
            40);
}

TEST(AbcMidi, ATrackHasItsBank) {
  const AbcTune tune = ReadBody("V:1\nC4 |\nV:2\nE4 |", "4/4",
                                "V:1\nV:2\n%%zelmar-voice 2 bank-msb=8 bank-lsb=3 instrument=24\n");
  EXPECT_EQ(tune.tracks.at(0).bank_msb, 0);
  EXPECT_EQ(tune.tracks.at(0).bank_lsb, 0);
  EXPECT_EQ(tune.tracks.at(1).bank_msb, 8);
  EXPECT_EQ(tune.tracks.at(1).bank_lsb, 3);
}

TEST(AbcMidi, ANoteIsHeldThroughAController) {
  const AbcTune tune = ReadBody("C-[I:MIDI control 11 20]C-[I:MIDI control 11 40]C- | C3 |", "3/4");
  EXPECT_EQ(Notes(tune), "1.1.0 C4 6");
  EXPECT_EQ(Controls(tune), "1.2.0 11=20; 1.3.0 11=40");
}

TEST(AbcMidi, CommandsDoNotDisturbBeamsTupletsAndBrokenRhythms) {
  EXPECT_EQ(Notes(ReadBody("C>[I:MIDI control 1 2]D (3:2:3E[I:MIDI control 1 3]F[I:MIDI program 4]G |")),
            "1.1.0 C4 1.5; 1.2.60 D4 0.5; 1.3.0 E4 0.666667; 1.3.80 F4 0.666667; 1.4.40 G4 0.666667");
}

TEST(AbcMidi, ARepeatPlaysItsCommandsAgain) {
  EXPECT_EQ(Controls(ReadBody("|: C2 [I:MIDI control 1 9] D2 :|")), "1.3.0 1=9; 2.3.0 1=9");
}

TEST(AbcMidi, InAPickupTheyStandWhereTheMusicBegins) {
  EXPECT_EQ(Controls(ReadBody("%%MIDI control 1 9\nG | C4 |")), "1.4.0 1=9");
}

TEST(AbcMidi, ACommandMayHaveARemarkBehindIt) {
  EXPECT_EQ(Controls(ReadBody("%%MIDI control 1 9 % a remark\nC4 |")), "1.1.0 1=9");
}

TEST(AbcMidi, LinesOfOtherProgramsArePassedOver) {
  EXPECT_EQ(Pitches(ReadBody("%%score (1 2)\n%%MIDIx 1\nC4 |\n%%newpage\nD4 |\nI:papersize A4\nE4 |")),
            "C4 D4 E4");
}

TEST(AbcMidi, TheModeOfTheSynthesiserIsGMUnlessTold) {
  EXPECT_EQ(ReadBody("C4 |").catalogue.midi_mode, QStringLiteral("GM"));
  for (const char* mode : {"GM", "GM2", "GS", "XG"})
    EXPECT_EQ(ReadBody("C4 |", "4/4", QByteArray("%%zelmar-midi-mode ") + mode + "\n").catalogue.midi_mode,
              QLatin1String(mode));
}

constexpr char kForm[] =
    ": The commands are control <number> <value>, program <number> and pitchbend <low seven bits> <high "
    "seven "
    "bits>, with numbers from 0 to 127.";

TEST(AbcMidi, ACommandInNoFormIsToldWithItsPlace) {
  for (const auto& [command, column] :
       std::initializer_list<std::pair<const char*, int>>{{"control 11", 18},
                                                          {"control 128 0", 16},
                                                          {"control 1 128", 18},
                                                          {"control x 1", 16},
                                                          {"control 1x 1", 16},
                                                          {"control 1 2 3", 20},
                                                          {"control -1 2", 16},
                                                          {"program", 15},
                                                          {"program 1 40", 18},
                                                          {"program 128", 16},
                                                          {"pitchbend 8192", 18},
                                                          {"pitchbend 1", 19},
                                                          {"transpose 2", 8},
                                                          {"bendvalue 0 64", 8},
                                                          {"", 8}})
    EXPECT_EQ(MistakeInBody(QByteArray("%%MIDI ") + command + "\nC4 |"),
              "t.abc:6:" + std::to_string(column) + kForm)
        << command;
  EXPECT_EQ(MistakeInBody("C2 [I:MIDI control 11] D2 |"), std::string("t.abc:6:22") + kForm);
}

TEST(AbcMidi, ACommandInTheHeaderIsToldWithItsPlace) {
  const std::string sentence =
      ": Commands for the synthesiser stand in the music, behind K:, in the voice that they are for.";
  EXPECT_EQ(MistakeOf("X:1\nT:t\n%%MIDI program 40\nM:4/4\nK:C\nC8 |\n"), "t.abc:3:3" + sentence);
  EXPECT_EQ(MistakeOf("X:1\nT:t\nI:MIDI program 40\nM:4/4\nK:C\nC8 |\n"), "t.abc:3:1" + sentence);
}

TEST(AbcMidi, ACommandBehindTheLastNoteIsToldWithItsPlace) {
  const std::string sentence = ": Nothing is played behind this command; put a rest behind it.";
  EXPECT_EQ(MistakeInBody("C4 |\n%%MIDI control 1 0"), "t.abc:7:8" + sentence);
  EXPECT_EQ(MistakeInBody("C4 [I:MIDI control 1 0] |]"), "t.abc:6:12" + sentence);
  EXPECT_EQ(MistakeInBody("C2 [I:MIDI control 1 0] z2 |]"), "no mistake");
}

TEST(AbcMidi, AModeThatNoSynthesiserHasIsToldWithItsPlace) {
  EXPECT_EQ(MistakeOf("X:1\n%%zelmar-midi-mode MT\n"),
            "t.abc:2:3: The mode of the synthesiser is GM, GM2, GS or XG.");
}

TEST(AbcMidi, ABankOutOfRangeIsToldWithItsPlace) {
  EXPECT_EQ(MistakeOf("X:1\n%%zelmar-voice 1 bank-msb=128\n"),
            "t.abc:2:27: A half of a bank is a whole number from 0 to 127.");
}

}  // namespace
}  // namespace zelmar
