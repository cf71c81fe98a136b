// Where everything of a bar stands on the staff, reckoned for every pitch, clef and key.
#include <algorithm>
#include <cmath>
#include <map>

#include "bar_fixture.h"
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

}  // namespace
}  // namespace zelmar
