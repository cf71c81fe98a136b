// Where everything of a bar stands on the staff, reckoned for every pitch, clef and key.
#include <algorithm>
#include <cmath>
#include <map>

#include "bar_fixture.h"
#include "notation/staff_alignment.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

constexpr int kTreblePitches[] = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71, 72, 74, 76, 77, 79, 81, 83, 84, 86};
constexpr int kBassPitches[] = {35, 36, 38, 40, 41, 43, 45, 47, 48, 50, 52, 53, 55, 57, 59, 60, 62, 64, 65};

bool IsBlack(int pitch) {
  const int pitch_class = pitch % 12;
  return pitch_class == 1 || pitch_class == 3 || pitch_class == 6 || pitch_class == 8 || pitch_class == 10;
}

// The step of the natural note, or of the one that the canonical name alters: C# of C, Eb of E.
int PlainStep(bool treble, int pitch) {
  const int pitch_class = pitch % 12;
  int natural = pitch;
  if (pitch_class == 1 || pitch_class == 6) natural = pitch - 1;
  if (pitch_class == 3 || pitch_class == 8 || pitch_class == 10) natural = pitch + 1;
  const auto& pitches = treble ? kTreblePitches : kBassPitches;
  const auto* const found = std::find(std::begin(pitches), std::end(pitches), natural);
  return found == std::end(pitches) ? 99 : static_cast<int>(found - pitches) - 4;
}

class Clefs : public BarTest, public ::testing::WithParamInterface<const char*> {
 protected:
  Clefs() { sheet_.SetClef(QString::fromLatin1(GetParam())); }
  bool Treble() const { return QLatin1String(GetParam()) == QLatin1String("Treble"); }
};

TEST_P(Clefs, FindThePitchOfEveryPlaceOfTheStaff) {
  sheet_.MeasureHead();
  const auto& pitches = Treble() ? kTreblePitches : kBassPitches;
  for (int y = -100; y <= 1300; y += 3) {
    const double exact = (850.0 - y) * 2.0 / 100.0;
    if (std::abs(exact - std::floor(exact) - 0.5) < 0.01) continue;
    const int step = static_cast<int>(std::lround(exact));
    std::int16_t pitch = 7;
    sheet_.FindPitch(0, static_cast<float>(y), pitch);
    EXPECT_EQ(pitch, step < -4 || step > 14 ? 7 : pitches[step + 4]) << y;
  }
}

TEST_P(Clefs, PutEveryPitchOnItsStepWhateverItsSpelling) {
  for (const char16_t* const mark : {u" ", u"#", u"b"})
    for (int pitch = 30; pitch <= 95; ++pitch) {
      StartTune();
      AddNote(pitch, 2, 0, 1.0, mark);
      Show();
      const auto heads = Of(Role::kNoteHead);
      const bool in_range = Treble() ? pitch >= 55 && pitch <= 86 : pitch >= 34 && pitch <= 65;
      // The lowest note of a bass staff is the black key below the step's natural.
      int step = !Treble() && pitch == 34 ? -4 : PlainStep(Treble(), pitch);
      if (!Treble() && pitch == 34) step = -4;
      if (*mark == u'#') --step;
      if (*mark == u'b') ++step;
      if (!in_range || step < -4 || step > 14) {
        EXPECT_TRUE(heads.empty()) << pitch;
        continue;
      }
      ASSERT_EQ(heads.size(), 1U) << pitch;
      ExpectCircle(heads[0], BeatX(2), StepY(step), 3.0 / 8.0, true);
    }
}

TEST_P(Clefs, ShowPartnersNotesAsFarAsTheirLedgerLinesReach) {
  for (int lines = 0; lines <= 2; ++lines) {
    sheet_.SetMiddleLedgerLines(static_cast<std::uint8_t>(lines));
    const int lowest = Treble() ? std::array{62, 58, 55}[static_cast<std::size_t>(lines)] : 34;
    const int highest = Treble() ? 86 : std::array{59, 62, 65}[static_cast<std::size_t>(lines)];
    for (int pitch = 30; pitch <= 90; ++pitch) {
      StartTune();
      AddNote(pitch);
      Show();
      EXPECT_EQ(CountOf(Role::kNoteHead), pitch >= lowest && pitch <= highest ? 1U : 0U)
          << lines << ' ' << pitch;
    }
  }
}

TEST_P(Clefs, DrawLedgerLinesBetweenTheStaffAndTheNote) {
  const auto& pitches = Treble() ? kTreblePitches : kBassPitches;
  for (int step = -4; step <= 14; ++step) {
    StartTune();
    AddNote(pitches[step + 4], 3);
    Show();
    std::vector<double> wanted, found;
    for (const int line : {-3, -1})
      if (step <= line) wanted.push_back(StepY(line));
    for (const int line : {11, 13})
      if (step >= line) wanted.push_back(StepY(line));
    for (const Primitive& line : Of(Role::kLedgerLine)) {
      ExpectLine(line, {BeatX(3) - 1, line.from.y() / kGap, BeatX(3) + 1, line.from.y() / kGap}, 1.0,
                 kBlackInk);
      found.push_back(line.from.y() / kGap);
    }
    std::sort(wanted.begin(), wanted.end());
    std::sort(found.begin(), found.end());
    ASSERT_EQ(found.size(), wanted.size()) << step;
    for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_NEAR(found[i], wanted[i], 0.01) << step;
  }
}

TEST_P(Clefs, GiveEveryStemItsDirectionAndItsLength) {
  for (int pitch = Treble() ? 55 : 35; pitch <= (Treble() ? 86 : 65); ++pitch) {
    StartTune();
    AddNote(pitch);
    Show();
    const bool down = Treble() ? pitch - 71 >= 1 : pitch - 50 >= 1;
    const double x = BeatX(1) + (down ? -0.5 : 0.5), y = StepY(PlainStep(Treble(), pitch));
    const auto stems = Of(Role::kStem);
    ASSERT_EQ(stems.size(), 1U) << pitch;
    ExpectLine(stems[0], {x, y, x, y + (down ? 2 : -2)}, 2.0, kBlackInk);
  }
}

TEST_P(Clefs, ShiftTheHeadsOfSecondsInRandomChords) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    StartTune();
    std::vector<int> chord;
    const int base = Treble() ? 60 : 40;
    for (int i = 2 + dice(4); i > 0; --i) {
      const int pitch = base + dice(20);
      if (std::find(chord.begin(), chord.end(), pitch) == chord.end()) chord.push_back(pitch);
    }
    int sum = 0;
    for (const int pitch : chord) {
      AddNote(pitch, 2);
      sum += pitch - (Treble() ? 71 : 50);
    }
    const bool down = sum >= 1;
    std::vector<int> sorted = chord;
    std::sort(sorted.begin(), sorted.end());
    std::map<int, bool> displaced;
    for (std::size_t i = 1; i < sorted.size(); ++i)
      if (sorted[i] - sorted[i - 1] <= 2) displaced[down ? sorted[i - 1] : sorted[i]] = true;
    Show();
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), chord.size());
    for (std::size_t i = 0; i < chord.size(); ++i) {
      const double shift = !displaced[chord[i]] ? 0.0 : down ? -1.0 : 1.0;
      EXPECT_NEAR(heads[i].from.x() / kGap, BeatX(2) + shift, 0.01) << chord[i];
      EXPECT_NEAR(heads[i].from.y() / kGap, StepY(PlainStep(Treble(), chord[i])), 0.01) << chord[i];
    }
    for (const Primitive& stem : Of(Role::kStem))
      EXPECT_NEAR(stem.from.x() / kGap, BeatX(2) + (down ? -0.5 : 0.5), 0.01);
  }
}

// --- Signs of notes ---

enum class Sign { kNone, kSharp, kFlat, kNatural };

// The first note of a bar, by the tables of what each key carries.
Sign PlainSign(bool treble, int pitch, char16_t mark, int key) {
  const int pitch_class = 60 + pitch % 12;
  static const std::map<int, int> kSharpAbove = {{60, 6}, {61, 1}, {63, 3}, {65, 5},
                                                 {66, 0}, {68, 2}, {70, 4}};
  static const std::map<int, int> kFlatBelow = {{70, 0},  {63, -1}, {68, -2}, {61, -3},
                                                {66, -4}, {71, -5}, {64, -6}};
  const auto sharp = [&] {
    const auto found = kSharpAbove.find(pitch_class);
    return found != kSharpAbove.end() && key > found->second ? Sign::kNone : Sign::kSharp;
  };
  const auto flat = [&] {
    const auto found = kFlatBelow.find(pitch_class);
    return found != kFlatBelow.end() && key < found->second ? Sign::kNone : Sign::kFlat;
  };
  if (mark == u'#') return sharp();
  if (mark == u'b') return flat();
  if (IsBlack(pitch)) {
    if (!treble && pitch == 63) return Sign::kNone;  // beyond the list of that clef
    return pitch_class == 61 || pitch_class == 66 ? sharp() : flat();
  }
  static const int kSharpKeys[] = {65, 60, 67, 62, 69, 64, 71};
  for (int i = 0; i < 7; ++i)
    if (kSharpKeys[i] == pitch_class && (key > i || key < i - 6)) return Sign::kNatural;
  return Sign::kNone;
}

TEST_P(Clefs, DrawTheSignOfEveryFirstNoteInEveryKey) {
  for (int key = -7; key <= 7; ++key)
    for (const char16_t mark : {u' ', u'#', u'b'})
      for (int pitch = Treble() ? 57 : 36; pitch <= (Treble() ? 84 : 64); ++pitch) {
        StartTune(4, 4, static_cast<std::int16_t>(key));
        const char16_t text[] = {mark, 0};
        AddNote(pitch, 1, 0, 1.0, text);
        Show();
        if (CountOf(Role::kNoteHead) == 0) continue;  // its spelling takes it off the staff
        const Sign sign = PlainSign(Treble(), pitch, mark, key);
        EXPECT_EQ(CountOf(Role::kSharp) > 0, sign == Sign::kSharp) << pitch << char(mark) << " in " << key;
        EXPECT_EQ(CountOf(Role::kFlat) > 0, sign == Sign::kFlat) << pitch << char(mark) << " in " << key;
        EXPECT_EQ(CountOf(Role::kNatural) > 0, sign == Sign::kNatural)
            << pitch << char(mark) << " in " << key;
      }
}

// --- Signs of keys ---

TEST_P(Clefs, PutTheSignsOfEveryKeyInTheirPlaces) {
  static const int kSharpPlaces[] = {9, 6, 10, 7, 4, 8, 5};
  static const int kFlatPlaces[] = {5, 8, 4, 7, 3, 6, 2};
  sheet_.SetShowClef(true);
  sheet_.SetShowTime(false);
  for (int key = -7; key <= 7; ++key) {
    StartTune(4, 4, static_cast<std::int16_t>(key));
    Show();
    const auto signs = Of(key > 0 ? Role::kSharp : Role::kFlat);
    EXPECT_EQ(CountOf(key > 0 ? Role::kFlat : Role::kSharp), 0U);
    if (key == 0) {
      EXPECT_TRUE(signs.empty());
      continue;
    }
    const std::size_t count = static_cast<std::size_t>(std::abs(key));
    ASSERT_FALSE(signs.empty()) << key;
    ASSERT_EQ(signs.size() % count, 0U) << key;
    const std::size_t strokes = signs.size() / count;
    const double base = 8.5 + (Treble() ? 0.0 : 1.0);
    for (std::size_t i = 0; i < count; ++i) {
      const double y = base - (key > 0 ? kSharpPlaces[i] : kFlatPlaces[i]) / 2.0;
      const double x = 2.0 + 7.0 / 3.0 + 0.7 * static_cast<double>(i);
      QRectF box;
      for (std::size_t k = 0; k < strokes; ++k) box |= sheet_.StaffDrawing().BoxOf(signs[i * strokes + k]);
      EXPECT_LT(box.top(), y * kGap) << key << ' ' << i;
      EXPECT_GT(box.bottom(), y * kGap) << key << ' ' << i;
      EXPECT_LE(box.height(), 3.5 * kGap);
      EXPECT_NEAR(box.right() / kGap, x - 0.8, 0.45) << key << ' ' << i;
      if (key > 0) {
        // Its first upright.
        EXPECT_NEAR(signs[i * strokes].from.x() / kGap, x - 1.0, 0.01);
        EXPECT_NEAR(signs[i * strokes].from.y() / kGap, y - 1.0, 0.01);
        EXPECT_NEAR(signs[i * strokes].to.y() / kGap, y + 0.8, 0.01);
        EXPECT_EQ(signs[i * strokes].colour, 0xFF0000U);
      }
    }
    EXPECT_NEAR(sheet_.KeyWidth() / kGap, 5.0 * static_cast<double>(count) / 7.0, 0.001);
  }
}

TEST_P(Clefs, StandWithTheirPictureWhereItBelongs) {
  sheet_.SetShowClef(true);
  Show();
  const auto& shown = Treble() ? sheet_.imgTreble() : sheet_.imgBass();
  const auto& hidden = Treble() ? sheet_.imgBass() : sheet_.imgTreble();
  EXPECT_TRUE(shown.visible);
  EXPECT_FALSE(hidden.visible);
  EXPECT_NEAR(shown.place.left(), 0.0, 0.5);
  EXPECT_NEAR(shown.place.top(), (Treble() ? 2.5 : 4.5) * kGap, 0.5);
  EXPECT_NEAR(shown.place.height(), (Treble() ? 7.0 : 3.5) * kGap, 0.5);
  EXPECT_NEAR(shown.place.width(), 7.0 / 3.0 * kGap, 0.5);
}

INSTANTIATE_TEST_SUITE_P(Both, Clefs, ::testing::Values("Treble", "Bass"));

// --- Staff and head ---

TEST_F(BarTest, FiveLinesAndABarLineAcrossTheSurface) {
  Show();
  const auto lines = Of(Role::kStaffLine);
  ASSERT_EQ(lines.size(), 5U);
  for (std::size_t i = 0; i < 5; ++i) {
    const double y = 4.0 + static_cast<double>(i);
    ExpectLine(lines[i], {0, y, 40, y}, 1.0, lines[i].colour);
  }
  const auto bar_lines = Of(Role::kBarLine);
  ASSERT_EQ(bar_lines.size(), 1U);
  ExpectLine(bar_lines[0], {40, 4, 40, 8}, 4.0, bar_lines[0].colour);
}

TEST_F(BarTest, AnotherWordThanAClefDrawsNoClefNoSignatureAndAllNotes) {
  sheet_.SetShowClef(true);
  for (const char* const word : {"", "Alto", "treble", "BASS"}) {
    sheet_.SetClef(QString::fromLatin1(word));
    StartTune(4, 4, 3);
    AddNote(71);
    Show();
    EXPECT_EQ(CountOf(Role::kSharp), 0U) << word;
    EXPECT_EQ(CountOf(Role::kTimeSignature), 0U) << word;
    EXPECT_FALSE(sheet_.imgTreble().visible || sheet_.imgBass().visible) << word;
    EXPECT_EQ(CountOf(Role::kNoteHead), 1U) << word;
  }
}

TEST_F(BarTest, TheTimeSignatureStandsBehindTheKeyWithABlankForItsSign) {
  sheet_.SetShowClef(true);
  for (int key = -7; key <= 7; ++key)
    for (const auto& [beats, length] : {std::pair(4, 4), std::pair(12, 8), std::pair(3, 2)}) {
      StartTune(static_cast<std::int16_t>(beats), static_cast<std::uint8_t>(length),
                static_cast<std::int16_t>(key));
      Show();
      const auto texts = Of(Role::kTimeSignature);
      ASSERT_EQ(texts.size(), 2U);
      const double x = 2.3 + 5.0 * std::abs(key) / 7.0;
      EXPECT_EQ(sheet_.StaffDrawing().TextOf(texts[0]), QStringLiteral(" %1").arg(beats));
      EXPECT_EQ(sheet_.StaffDrawing().TextOf(texts[1]), QStringLiteral(" %1").arg(length));
      for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(texts[i].from.x() / kGap, x, 0.01);
        EXPECT_NEAR(texts[i].from.y() / kGap, i == 0 ? 3.5 : 5.5, 0.01);
      }
    }
}

TEST_F(BarTest, ABeatLengthOfZeroIsRepairedWhenTheTimeIsDrawn) {
  sheet_.SetShowClef(true);
  tune_->SetBeatLength(0);
  sheet_.MeasureHead();
  sheet_.Attach(nullptr);
  StartTune(4, 4);
  sheet_.Attach(tune_);
  tune_->SetBeatLength(0);
  sheet_.DisplayBar(1, 1);
  EXPECT_EQ(tune_->BeatLength(), 4);
}

TEST_F(BarTest, NotesBeginBehindTheHeadAsItIsShown) {
  for (int key = -7; key <= 7; ++key) {
    StartTune(4, 4, static_cast<std::int16_t>(key));
    const double key_width = 5.0 * std::abs(key) / 7.0;
    for (const bool clef : {false, true})
      for (const bool time : {false, true}) {
        sheet_.SetShowClef(clef);
        sheet_.SetShowTime(time);
        sheet_.Attach(tune_);
        sheet_.MeasureHead();
        if (!clef && time) continue;  // the text is silent on it
        const double left = clef && time ? 2.3 + key_width + 2.5 + 1 : clef ? 2.3 + key_width + 2.25 : 2.0;
        EXPECT_NEAR(sheet_.NotesLeft() / kGap, left, 0.001) << key << clef << time;
      }
  }
}

// --- Values of notes ---

TEST_F(BarTest, EveryDurationIsDrawnAsItsValue) {
  struct Value {
    double from, to;
    bool open, stem;
    int flags;
    bool dot;
  };
  static const Value kValues[] = {
      {3.125, 1e9, true, false, 0, false},   {2.126, 3.125, true, true, 0, true},
      {1.876, 2.125, true, true, 0, false},  {1.126, 1.875, false, true, 0, true},
      {0.876, 1.125, false, true, 0, false}, {0.626, 0.875, false, true, 1, true},
      {0.376, 0.625, false, true, 1, false}, {0.126, 0.375, false, true, 2, false}};
  for (int thousandths = 20; thousandths <= 4600; thousandths += 7) {
    const double duration = thousandths / 1000.0;
    StartTune();
    AddNote(67, 1, 0, duration);
    Show();
    const Value* value = nullptr;
    for (const Value& row : kValues)
      if (value == nullptr && duration >= row.from && duration <= row.to) value = &row;
    const auto heads = Of(Role::kNoteHead);
    ASSERT_EQ(heads.size(), value == nullptr ? 0U : 1U) << duration;
    if (value == nullptr) continue;
    ExpectCircle(heads[0], 2.0, StepY(3), 3.0 / 8.0, !value->open);
    for (const Primitive& stem : Of(Role::kStem)) EXPECT_NEAR(stem.from.x() / kGap, 2.5, 0.01) << duration;
    EXPECT_EQ(CountOf(Role::kStem) > 0, value->stem) << duration;
    EXPECT_EQ(CountOf(Role::kFlag), static_cast<std::size_t>(value->flags)) << duration;
    const auto dots = Of(Role::kDot);
    ASSERT_EQ(dots.size(), value->dot ? 1U : 0U) << duration;
    if (value->dot) {
      ExpectCircle(dots[0], 3.0, StepY(3), 0.1, true);
    }
    EXPECT_EQ(CountOf(Role::kBeam), 0U);
  }
}

TEST_F(BarTest, TwoQuaversAreJoinedWithinOneBeatAndSeventyPulses) {
  for (int from = 0; from < 60; from += 10)
    for (int apart = 1; from + apart < 240; apart += 3) {
      StartTune();
      AddNote(67, 1, from, 0.5);
      AddNote(69, (from + apart) / 120 + 1, (from + apart) % 120, 0.5);
      Show();
      const bool joined = from + apart < 120 && apart < 71;
      EXPECT_EQ(CountOf(Role::kBeam), joined ? 1U : 0U) << from << ' ' << apart;
      EXPECT_EQ(CountOf(Role::kFlag), joined ? 0U : 2U) << from << ' ' << apart;
    }
}

TEST_F(BarTest, TwoSemiquaversAreJoinedTwiceWithinOneBeatAndFortyPulses) {
  for (int from = 0; from < 90; from += 15)
    for (int apart = 1; from + apart < 200; apart += 3) {
      StartTune();
      AddNote(67, 1, from, 0.25);
      AddNote(69, (from + apart) / 120 + 1, (from + apart) % 120, 0.25);
      Show();
      const bool joined = from + apart < 120 && apart < 41;
      EXPECT_EQ(CountOf(Role::kBeam), joined ? 2U : 0U) << from << ' ' << apart;
      EXPECT_EQ(CountOf(Role::kFlag), joined ? 0U : 4U) << from << ' ' << apart;
    }
}

TEST_F(BarTest, WithoutBeamingEveryQuaverHasItsFlags) {
  sheet_.SetBeamingOn(false);
  for (int tick = 0; tick < 120; tick += 60) AddNote(67, 1, tick, 0.5);
  for (int tick = 0; tick < 120; tick += 30) AddNote(67, 2, tick, 0.25);
  Show();
  EXPECT_EQ(CountOf(Role::kBeam), 0U);
  EXPECT_EQ(CountOf(Role::kFlag), 2U + 8U);
}

TEST_F(BarTest, QuaversOfCompoundTimeAreJoinedInThrees) {
  for (int first = 1; first <= 10; ++first) {
    StartTune(12, 8);
    for (int i = 0; i < 3; ++i) {
      const auto note = AddNote(67, first + i, 0, 0.5);
      note->SetBeatLength(8);
    }
    Show();
    const bool group = first % 3 == 1;
    EXPECT_EQ(CountOf(Role::kNoteHead), 3U);
    if (group) {
      EXPECT_EQ(CountOf(Role::kBeam), 1U) << first;
      EXPECT_EQ(CountOf(Role::kFlag), 0U) << first;
      const auto beam = Of(Role::kBeam)[0];
      EXPECT_NEAR(beam.from.x() / kGap, BeatX(first) + 0.5, 0.2);
      EXPECT_NEAR(beam.to.x() / kGap, BeatX(first + 2) + 0.5, 0.2);
    } else {
      EXPECT_EQ(CountOf(Role::kBeam), 0U) << first;
    }
  }
}

// --- Large chords ---

TEST_F(BarTest, ALargeChordIsToldOfOnceALoadHoweverOftenItIsDrawn) {
  StartTune();
  for (int i = 0; i < 21; ++i) AddNote(60 + i, 2);
  AddNote(67, 3);
  for (int i = 0; i < 5; ++i) {
    Show();
    EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  }
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("More than 20 notes in this chord"));
  EXPECT_EQ(platform_.messages->shown[0].title, QStringLiteral("Not supported"));
  BarDrawing other;
  other.SetSurfaceSize(kSurfaceWidth, kSurfaceHeight, kSurfaceHeight);
  other.Attach(tune_);
  other.DisplayBar(1, 1);
  EXPECT_EQ(platform_.messages->shown.size(), 1);
  StartTune();
  for (int i = 0; i < 21; ++i) AddNote(60 + i, 2);
  Show();
  EXPECT_EQ(platform_.messages->shown.size(), 2);
}

TEST_F(BarTest, EveryLargeChordIsToldOfForItself) {
  StartTune();
  for (int beat = 1; beat <= 3; ++beat)
    for (int i = 0; i < 22; ++i) AddNote(60 + i, beat);
  Show();
  Show();
  EXPECT_EQ(platform_.messages->shown.size(), 3);
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
}

TEST_F(BarTest, TwentyNotesAreAChord) {
  StartTune();
  for (int i = 0; i < 20; ++i) AddNote(60 + i, 2);
  Show();
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  EXPECT_EQ(CountOf(Role::kNoteHead), 20U);
}

// --- Colours, signs in the run of a bar, rests ---

TEST_F(BarTest, ANoteFarBeyondSixteenBitsOfPlacesIsShownInItsColour) {
  for (int i = 0; i < 33000; ++i) AddNote(60)->SetEventType(7);
  AddNote(67, 2);
  AddNote(69, 3);
  sheet_.Attach(tune_);
  sheet_.DisplayBar(1, 1, 33001, 33002);
  const auto heads = Of(Role::kNoteHead);
  ASSERT_EQ(heads.size(), 2U);
  EXPECT_EQ(heads[0].colour, kRedInk);
  EXPECT_EQ(heads[1].colour, kBlueInk);
}

TEST_F(BarTest, ASharpIsTakenBackInItsBarAndNotInTheNext) {
  AddNote(66, 1);
  AddNote(65, 2);
  AddNote(65, 3);
  AddNote(65, 1, 0, 1.0, u" ", 2);
  Show();
  EXPECT_EQ(CountOf(Role::kSharp), 4U);
  EXPECT_EQ(CountOf(Role::kNatural), 4U);
  Show(2);
  EXPECT_EQ(CountOf(Role::kNatural), 0U);
}

TEST_F(BarTest, ANaturalIsTakenBackByTheSignOfTheKey) {
  StartTune(4, 4, 1);
  AddNote(65, 1);
  AddNote(66, 2);
  Show();
  EXPECT_GT(CountOf(Role::kNatural), 0U);
  EXPECT_EQ(CountOf(Role::kSharp), 4U);
  StartTune(4, 4, -1);
  AddNote(71, 1);
  AddNote(70, 2);
  Show();
  EXPECT_GT(CountOf(Role::kNatural), 0U);
  EXPECT_GT(CountOf(Role::kFlat), 0U);
}

TEST_F(BarTest, RestsOfWrittenLengthsAloneAreDrawn) {
  const auto rests = [&] {
    return CountOf(Role::kWholeBarRest) + CountOf(Role::kMinimRest) + CountOf(Role::kCrotchetRest) +
           CountOf(Role::kQuaverRest) + CountOf(Role::kSemiquaverRest);
  };
  for (int hundredths = 10; hundredths < 400; hundredths += 5) {
    const bool written = hundredths % 25 == 0 && hundredths != 375;
    for (const int tick : {0, 30, 60, 90}) {
      if (tick * 100 + hundredths * 120 > 480 * 100) continue;
      sheet_.Attach(tune_);
      sheet_.ClearStaff();
      Rest rest;
      rest.SetTick(static_cast<std::int16_t>(tick));
      rest.SetDuration(hundredths / 100.0);
      sheet_.MeasureHead();
      sheet_.DrawRest(rest);
      EXPECT_EQ(rests() > 0, written) << hundredths << " at " << tick;
      EXPECT_EQ(CountOf(Role::kWholeBarRest), 0U);
    }
  }
}

// --- Alignment ---

void PlainBoundary(Tone& tone, int pulses_per_beat, int beats_per_bar, int grid) {
  const int rest = tone.Tick() % grid;
  int tick = rest * 2 >= grid ? tone.Tick() - rest + grid : tone.Tick() - rest;
  if (tick == pulses_per_beat) {
    tick = 0;
    tone.SetBeat(static_cast<std::int16_t>(tone.Beat() + 1));
    if (tone.Beat() > beats_per_bar) {
      tone.SetBar(static_cast<std::int16_t>(tone.Bar() + 1));
      tone.SetBeat(1);
    }
  }
  tone.SetTick(static_cast<std::int16_t>(tick));
}

void PlainAlign(Tone& tone, int pulses_per_beat, int beats_per_bar, bool durations, bool boundaries) {
  struct Row {
    double from, to;
    bool with_end;
    double duration;
    int grid;  // 0 for the move by half a bar
  };
  static const Row kRows[] = {
      {4.5, 1e9, true, 0, 0},         {3.125, 4.5, false, 4, 0},      {2.126, 3.125, false, 3, 120},
      {1.876, 2.125, true, 2, 120},   {1.126, 1.875, false, 1.5, 60}, {0.876, 1.125, false, 1, 60},
      {0.626, 0.875, true, 0.75, 30}, {0.376, 0.625, false, 0.5, 30}, {0.126, 0.375, false, 0.25, 30}};
  double duration = 0;
  int grid = 30;
  for (const Row& row : kRows)
    if (tone.Duration() >= row.from &&
        (tone.Duration() < row.to || (row.with_end && tone.Duration() == row.to))) {
      duration = row.duration;
      grid = row.grid;
      break;
    }
  if (durations && duration > 0) tone.SetDuration(duration);
  if (!boundaries) return;
  if (grid > 0) {
    PlainBoundary(tone, pulses_per_beat, beats_per_bar, grid);
    return;
  }
  if (tone.Beat() == 2) tone.SetBeat(3);
  if (tone.Beat() == 4) {
    tone.SetBeat(1);
    tone.SetBar(static_cast<std::int16_t>(tone.Bar() + 1));
  }
  tone.SetTick(0);
}

TEST(SnappedNotes, GoWhereThePlainTablePutsThem) {
  Dice dice(3);
  static const double kEnds[] = {4.5,   3.125, 2.126, 2.125, 1.876, 1.875, 1.126, 1.125,
                                 0.876, 0.875, 0.626, 0.625, 0.376, 0.375, 0.126, 0.1255};
  for (int i = 0; i < 4000; ++i) {
    const int beats = 2 + dice(5), pulses = dice(2) ? 120 : 60;
    Tone tone, wanted;
    for (Tone* const one : {&tone, &wanted}) one->SetBar(3);
    const int beat = 1 + dice(beats), tick = dice(pulses);
    const double duration = dice(3) == 0 ? kEnds[dice(16)] : dice(5500) / 1000.0;
    for (Tone* const one : {&tone, &wanted}) {
      one->SetBeat(static_cast<std::int16_t>(beat));
      one->SetTick(static_cast<std::int16_t>(tick));
      one->SetDuration(duration);
    }
    const bool durations = dice(2) == 0, boundaries = dice(2) == 0;
    AlignNote(tone, {static_cast<std::int16_t>(pulses), static_cast<std::int16_t>(beats)}, durations,
              boundaries);
    PlainAlign(wanted, pulses, beats, durations, boundaries);
    EXPECT_EQ(tone.Duration(), wanted.Duration()) << duration;
    EXPECT_EQ(tone.Bar(), wanted.Bar()) << duration << " at " << beat << '.' << tick;
    EXPECT_EQ(tone.Beat(), wanted.Beat()) << duration << " at " << beat << '.' << tick;
    EXPECT_EQ(tone.Tick(), wanted.Tick()) << duration << " at " << beat << '.' << tick;
  }
}

}  // namespace
}  // namespace zelmar
