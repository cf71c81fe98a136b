// When a note bears a sign: by its pitch, its spelling, the key, and what the bar has shown before.
#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

using Accidentals = BarTest;

constexpr std::size_t kSharpStrokes = 4;
constexpr std::size_t kNaturalStrokes = 4;
constexpr std::size_t kFlatStrokes = 6;

// The signs of the bar on show: how many of each.
struct Signs {
  std::size_t sharps = 0;
  std::size_t flats = 0;
  std::size_t naturals = 0;
  bool operator==(const Signs&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Signs& signs) {
  return out << signs.sharps << " sharps, " << signs.flats << " flats, " << signs.naturals << " naturals";
}

constexpr Signs kNone = {0, 0, 0};
constexpr Signs kSharp = {1, 0, 0};
constexpr Signs kFlat = {0, 1, 0};
constexpr Signs kNatural = {0, 0, 1};

class SignsTest : public BarTest {
 protected:
  Signs Shown() {
    Show();
    EXPECT_EQ(CountOf(Role::kSharp) % kSharpStrokes, 0U);
    EXPECT_EQ(CountOf(Role::kFlat) % kFlatStrokes, 0U);
    EXPECT_EQ(CountOf(Role::kNatural) % kNaturalStrokes, 0U);
    return {CountOf(Role::kSharp) / kSharpStrokes, CountOf(Role::kFlat) / kFlatStrokes,
            CountOf(Role::kNatural) / kNaturalStrokes};
  }

  Signs OfOneNote(std::int16_t key, int pitch, const char16_t* mark = u" ") {
    StartTune(4, 4, key);
    AddNote(pitch, 1, 0, 1.0, mark);
    return Shown();
  }

  // Which of the notes of the bar bear a sign, one letter each: # b n, or - for none.
  std::string SignOfEach() {
    Show();
    std::string signs;
    for (const Primitive& head : Of(Role::kNoteHead)) {
      char sign = '-';
      for (const auto& [role, letter] :
           {std::pair(Role::kSharp, '#'), std::pair(Role::kFlat, 'b'), std::pair(Role::kNatural, 'n')})
        for (const Primitive& stroke : Of(role)) {
          const double before = head.from.x() - stroke.from.x();
          if (before > 0.0 && before < 2.0 * kGap && sign != letter) sign = sign == '-' ? letter : '?';
        }
      signs += sign;
    }
    return signs;
  }
};

TEST_F(SignsTest, BlackKeysBearTheirSignsOnATrebleStaff) {
  for (int pitch = 55; pitch <= 86; ++pitch) {
    Signs expected = kNone;
    for (const int sharp : {61, 66, 73, 78, 85})
      if (pitch == sharp) expected = kSharp;
    for (const int flat : {56, 58, 63, 68, 70, 75, 80, 82})
      if (pitch == flat) expected = kFlat;
    EXPECT_EQ(OfOneNote(0, pitch), expected) << pitch;
  }
}

TEST_F(SignsTest, BlackKeysBearTheirSignsOnABassStaff) {
  sheet_.SetClef(QStringLiteral("Bass"));
  for (int pitch = 34; pitch <= 65; ++pitch) {
    Signs expected = kNone;
    for (const int sharp : {37, 42, 49, 54, 61})
      if (pitch == sharp) expected = kSharp;
    for (const int flat : {34, 39, 44, 46, 51, 56, 58})
      if (pitch == flat) expected = kFlat;
    EXPECT_EQ(OfOneNote(0, pitch), expected) << pitch;
  }
}

struct NaturalRow {
  int pitch;
  int above;
  int below;
};

TEST_F(SignsTest, AWhiteKeyBearsANaturalWhereTheKeyAltersItsLetter) {
  constexpr NaturalRow kRows[] = {{65, 0, -6}, {60, 1, -5}, {67, 2, -4}, {62, 3, -3},
                                  {69, 4, -2}, {64, 5, -1}, {71, 6, 0}};
  for (const NaturalRow& row : kRows)
    for (std::int16_t key = -7; key <= 7; ++key)
      for (const int octave : {0, 12})
        EXPECT_EQ(OfOneNote(key, row.pitch + octave), key > row.above || key < row.below ? kNatural : kNone)
            << row.pitch << " in " << key;
}

struct KeyRow {
  int pitch;
  int limit;
};

TEST_F(SignsTest, ASharpOfTheKeyIsNotWrittenAgain) {
  constexpr KeyRow kRows[] = {{60, 6}, {61, 1}, {63, 3}, {65, 5}, {66, 0}, {68, 2}, {70, 4}};
  for (const KeyRow& row : kRows)
    for (std::int16_t key = -7; key <= 7; ++key)
      EXPECT_EQ(OfOneNote(key, row.pitch, u"#"), key > row.limit ? kNone : kSharp)
          << row.pitch << " in " << key;
}

TEST_F(SignsTest, AFlatOfTheKeyIsNotWrittenAgain) {
  constexpr KeyRow kRows[] = {{70, 0}, {63, -1}, {68, -2}, {61, -3}, {66, -4}, {71, -5}, {64, -6}};
  for (const KeyRow& row : kRows)
    for (std::int16_t key = -7; key <= 7; ++key)
      EXPECT_EQ(OfOneNote(key, row.pitch, u"b"), key < row.limit ? kNone : kFlat)
          << row.pitch << " in " << key;
}

TEST_F(SignsTest, InGMajorAnFNaturalShowsItsSignAndAnFSharpNone) {
  EXPECT_EQ(OfOneNote(1, 65), kNatural);
  EXPECT_EQ(OfOneNote(1, 66), kNone);
  EXPECT_EQ(OfOneNote(0, 66), kSharp);
}

// --- What the bar has shown ---

struct Step {
  int pitch;
  const char16_t* mark = u" ";
};

struct BarRow {
  const char* name;
  std::int16_t key;
  std::vector<Step> notes;
  const char* signs;
};

const BarRow kBars[] = {
    {"a sharp is taken back", 0, {{61}, {60}}, "#n"},
    {"once", 0, {{61}, {60}, {60}}, "#n-"},
    {"and by that step only", 0, {{61}, {62}, {72}, {60}}, "#--n"},
    {"a flat is taken back", 0, {{70}, {71}}, "bn"},
    {"a sharp repeats its sign", 0, {{61}, {61}}, "##"},
    {"a flat repeats its sign, also among sharps", 1, {{70}, {70}}, "bb"},
    {"a spelt sharp repeats its sign", 0, {{63, u"#"}, {63, u"#"}}, "##"},
    {"a natural repeats its sign where the key alters it", 1, {{65}, {65}}, "nn"},
    {"the sharp of the key comes back", 1, {{65}, {66}, {66}}, "n#-"},
    {"the flat of the key comes back", -1, {{71}, {70}, {70}}, "nb-"},
    {"a natural after the sharp of the key", 2, {{66}, {65}, {66}, {65}}, "-n#n"},
    {"a sharp and its natural by turns", 0, {{66}, {65}, {66}, {65}}, "#n#n"},
    {"a flat where the key has a sharp", 2, {{61, u" "}, {60}, {61}}, "-n#"},
};

TEST_F(SignsTest, ASignHoldsUntilTheNextNoteOfItsStep) {
  for (const BarRow& row : kBars) {
    SCOPED_TRACE(row.name);
    StartTune(4, 4, row.key);
    int beat = 0;
    for (const Step& note : row.notes) AddNote(note.pitch, ++beat, 0, 1.0, note.mark);
    EXPECT_EQ(SignOfEach(), row.signs);
  }
}

TEST_F(SignsTest, NoSignHoldsAcrossABarLine) {
  StartTune();
  AddNote(61, 4);
  AddNote(60, 1, 0, 1.0, u" ", 2);
  Show(1);
  EXPECT_EQ(CountOf(Role::kSharp), kSharpStrokes);
  Show(2);
  EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
  EXPECT_EQ(CountOf(Role::kNatural), 0U);
}

TEST_F(SignsTest, TheKeySignatureIsNoSignOfTheBar) {
  StartTune(4, 4, 1);
  AddNote(66);  // its step is that of the last sign of a key of one sharp, an octave apart
  AddNote(78, 2);
  sheet_.SetShowClef(true);
  Show();
  EXPECT_EQ(CountOf(Role::kSharp), kSharpStrokes) << "the sign of the key alone";
  EXPECT_EQ(CountOf(Role::kNatural), 0U);
}

// --- Strokes ---

TEST_F(SignsTest, TheStrokesOfANatural) {
  EXPECT_EQ(OfOneNote(1, 65), kNatural);
  const auto strokes = Of(Role::kNatural);
  const double x = 2.0;
  const double y = StepY(2);
  ExpectLine(strokes[0], {x - 1.0, y - 0.8, x - 1.0, y + 1.1}, 2.0, kBlueInk);
  ExpectLine(strokes[1], {x - 1.5, y - 1.6, x - 1.5, y + 0.3}, 2.0, kBlueInk);
  ExpectLine(strokes[2], {x - 1.5, y + 0.3, x - 1.0, y + 0.1}, 4.0, kBlueInk);
  ExpectLine(strokes[3], {x - 1.5, y - 0.6, x - 1.0, y - 0.8}, 4.0, kBlueInk);
}

TEST_F(SignsTest, TheStrokesOfASharp) {
  EXPECT_EQ(OfOneNote(0, 66), kSharp);
  const auto strokes = Of(Role::kSharp);
  const double x = 2.0;
  const double y = StepY(2);
  ExpectLine(strokes[0], {x - 1.0, y - 1.0, x - 1.0, y + 0.8}, 2.0, kBlueInk);
  ExpectLine(strokes[1], {x - 1.5, y - 0.8, x - 1.5, y + 1.0}, 2.0, kBlueInk);
  for (const std::size_t bar : {std::size_t{2}, std::size_t{3}}) {
    EXPECT_EQ(strokes[bar].pen_width, 3.0);
    EXPECT_EQ(strokes[bar].colour, kBlueInk);
    EXPECT_NEAR(strokes[bar].from.x(), (x - 1.7) * kGap, kClose);
    EXPECT_NEAR(strokes[bar].to.x(), (x - 0.8) * kGap, kClose);
    EXPECT_GT(strokes[bar].from.y(), strokes[bar].to.y()) << "the bars rise";
  }
  EXPECT_LT(strokes[2].from.y(), y * kGap);
  EXPECT_GT(strokes[3].to.y(), y * kGap);
}

TEST_F(SignsTest, AFlatIsAnUprightWithABowlAboutItsStep) {
  EXPECT_EQ(OfOneNote(0, 70), kFlat);
  const auto strokes = Of(Role::kFlat);
  const double x = 2.0;
  const double y = StepY(5);
  ExpectLine(strokes[0], {x - 1.2, y - 1.6, x - 1.2, y + 0.5}, 2.0, kBlueInk);
  for (std::size_t i = 1; i < strokes.size(); ++i) {
    EXPECT_EQ(strokes[i].shape, Shape::kLine);
    EXPECT_EQ(strokes[i].colour, kBlueInk);
    EXPECT_LE(strokes[i].to.x(), (x - 0.5) * kGap) << "clear of the head";
    EXPECT_LE(std::abs(strokes[i].to.y() - y * kGap), 0.51 * kGap);
    if (i > 1) {
      EXPECT_EQ(strokes[i].from, strokes[i - 1].to);
    }
  }
  EXPECT_EQ(strokes[1].from.x(), strokes[0].from.x());
  EXPECT_EQ(strokes.back().to, strokes[0].to);
}

TEST_F(SignsTest, SignsAreBlueBesideARedNote) {
  StartTune();
  AddNote(66);
  sheet_.Attach(tune_);
  sheet_.DisplayBar(1, 1, 1);
  EXPECT_EQ(Of(Role::kNoteHead)[0].colour, kRedInk);
  EXPECT_EQ(Of(Role::kSharp)[0].colour, kBlueInk);
}

}  // namespace
}  // namespace zelmar
