// The skeleton of the staff: its unit, its lines, clef, signatures, and the pitches of its lines and spaces.
#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

using StaffGeometry = BarTest;

constexpr int kTreblePitches[] = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71, 72, 74, 76, 77, 79, 81, 83, 84, 86};
constexpr int kBassPitches[] = {35, 36, 38, 40, 41, 43, 45, 47, 48, 50, 52, 53, 55, 57, 59, 60, 62, 64, 65};

TEST_F(StaffGeometry, TheGapIsATwelfthOfTheHeight) {
  sheet_.SetScale();
  EXPECT_FLOAT_EQ(sheet_.LineGap(), 100.0F);
  EXPECT_FLOAT_EQ(sheet_.StaffWidth(), 4000.0F);
  sheet_.SetSurfaceSize(4000.0, 3000.0, 3000.0);
  EXPECT_FLOAT_EQ(sheet_.LineGap(), 100.0F) << "only SetScale takes the new size over";
  sheet_.SetScale();
  EXPECT_FLOAT_EQ(sheet_.LineGap(), 250.0F);
}

TEST_F(StaffGeometry, FiveLinesAndAClosingBarLine) {
  sheet_.SetScale();
  sheet_.DrawStaff();
  const auto lines = Of(Role::kStaffLine);
  ASSERT_EQ(lines.size(), 5U);
  for (std::size_t i = 0; i < 5; ++i) {
    const double y = 4.0 + static_cast<double>(i);
    ExpectLine(lines[i], {0.0, y, 40.0, y}, 1.0, kBlackInk);
  }
  const auto bar_lines = Of(Role::kBarLine);
  ASSERT_EQ(bar_lines.size(), 1U);
  ExpectLine(bar_lines[0], {40.0, 4.0, 40.0, 8.0}, 4.0, kBlackInk);
}

TEST_F(StaffGeometry, AForeColourOfItsOwnDrawsTheStaff) {
  sheet_.SetForeColor(0x00AA5511);
  sheet_.SetScale();
  sheet_.DrawStaff();
  EXPECT_EQ(Of(Role::kStaffLine)[0].colour, 0xAA5511U);
}

TEST_F(StaffGeometry, EveryStepGivesItsNaturalPitch) {
  sheet_.SetScale();
  for (int step = -4; step <= 14; ++step) {
    SCOPED_TRACE(step);
    const auto y = static_cast<float>(StepY(step) * kGap);
    std::int16_t pitch = 0;
    sheet_.SetClef(QStringLiteral("Treble"));
    sheet_.FindPitch(0.0F, y, pitch);
    EXPECT_EQ(pitch, kTreblePitches[step + 4]);
    sheet_.SetClef(QStringLiteral("Bass"));
    sheet_.FindPitch(3000.0F, y, pitch);
    EXPECT_EQ(pitch, kBassPitches[step + 4]);
  }
}

TEST_F(StaffGeometry, APlaceBetweenTwoStepsGoesToTheNearer) {
  sheet_.SetScale();
  std::int16_t pitch = 0;
  sheet_.FindPitch(0.0F, 824.0F, pitch);  // a quarter of a gap above a space would be the next line
  EXPECT_EQ(pitch, 64);
  sheet_.FindPitch(0.0F, 826.0F, pitch);
  EXPECT_EQ(pitch, 62);
}

TEST_F(StaffGeometry, NoPitchOutsideTheStepsOrWithoutAClef) {
  sheet_.SetScale();
  for (const char* clef : {"Treble", "Bass"}) {
    sheet_.SetClef(QString::fromLatin1(clef));
    for (const float y : {0.0F, 100.0F, 1100.0F, -5000.0F, 1e30F, NAN}) {
      std::int16_t pitch = 7;
      sheet_.FindPitch(0.0F, y, pitch);
      EXPECT_EQ(pitch, 7) << y;
    }
  }
  std::int16_t pitch = 7;
  sheet_.SetClef(QStringLiteral("Alto"));
  sheet_.FindPitch(0.0F, 800.0F, pitch);
  EXPECT_EQ(pitch, 7);
  sheet_.SetClef(QStringLiteral("treble"));
  sheet_.FindPitch(0.0F, 800.0F, pitch);
  EXPECT_EQ(pitch, 7);
}

struct ClefRow {
  const char* clef;
  double top;  // gaps
  double height;
};

TEST_F(StaffGeometry, EachClefStandsInItsPlaceAndHidesTheOther) {
  constexpr ClefRow kRows[] = {{"Treble", 2.5, 7.0}, {"Bass", 4.5, 3.5}, {"Treble", 2.5, 7.0}};
  sheet_.SetShowClef(true);
  for (const ClefRow& row : kRows) {
    SCOPED_TRACE(row.clef);
    sheet_.SetClef(QString::fromLatin1(row.clef));
    Show();
    const bool treble = row.height == 7.0;
    const auto& shown = treble ? sheet_.imgTreble() : sheet_.imgBass();
    EXPECT_TRUE(shown.visible);
    EXPECT_FALSE((treble ? sheet_.imgBass() : sheet_.imgTreble()).visible);
    EXPECT_NEAR(shown.place.left(), 0.0, kClose);
    EXPECT_NEAR(shown.place.top(), row.top * kGap, kClose);
    EXPECT_NEAR(shown.place.width(), 7.0 / 3.0 * kGap, kClose);
    EXPECT_NEAR(shown.place.height(), row.height * kGap, kClose);
    ASSERT_EQ(CountOf(Role::kClef), 1U);
    const QRectF drawn = sheet_.StaffDrawing().PathOf(Of(Role::kClef)[0]).boundingRect();
    EXPECT_TRUE(shown.place.contains(drawn));
    EXPECT_GT(drawn.height(), 0.9 * shown.place.height()) << "the picture fills its place";
  }
}

TEST_F(StaffGeometry, TheTrebleClefCurlsRoundItsLine) {
  sheet_.SetScale();
  sheet_.DrawClef(QStringLiteral("Treble"));
  const QPainterPath& clef = sheet_.StaffDrawing().PathOf(Of(Role::kClef)[0]);
  // Along the G line: the outer bow, the curl, the stem, and the curl again, with paper between.
  int crossings = 0;
  bool inside = false;
  for (double x = 0.0; x <= 2.4; x += 0.01) {
    const bool now = clef.contains(QPointF(x * kGap, 7.0 * kGap));
    crossings += now && !inside;
    inside = now;
  }
  EXPECT_EQ(crossings, 4);
  // Above and below the line the curl is closed over the stem.
  EXPECT_TRUE(clef.intersects(QRectF(120.0, 600.0, 40.0, 50.0)));
  EXPECT_TRUE(clef.intersects(QRectF(100.0, 780.0, 40.0, 50.0)));
}

TEST_F(StaffGeometry, TheDotsOfTheBassClefStandAboutItsLine) {
  sheet_.SetScale();
  sheet_.DrawClef(QStringLiteral("Bass"));
  const QPainterPath& clef = sheet_.StaffDrawing().PathOf(Of(Role::kClef)[0]);
  std::vector<QRectF> dots;
  for (const QPolygonF& part : clef.toSubpathPolygons())
    if (part.boundingRect().left() > 1.8 * kGap) dots.push_back(part.boundingRect());
  ASSERT_EQ(dots.size(), 2U);
  EXPECT_NEAR(dots[0].center().y() + dots[1].center().y(), 2 * 5.0 * kGap, 0.02 * kGap);
  for (const QRectF& dot : dots) EXPECT_FALSE(dot.top() < 5.0 * kGap && dot.bottom() > 5.0 * kGap);
}

TEST_F(StaffGeometry, AnotherWordDrawsNeitherClefNorSignaturesButTheNotes) {
  StartTune(4, 4, 3);
  AddNote(60);
  sheet_.SetShowClef(true);
  for (const char* clef : {"", "Alto", "bass"}) {
    SCOPED_TRACE(clef);
    sheet_.SetClef(QString::fromLatin1(clef));
    Show();
    EXPECT_EQ(CountOf(Role::kClef), 0U);
    EXPECT_EQ(CountOf(Role::kTimeSignature), 0U);
    EXPECT_FALSE(sheet_.imgTreble().visible);
    EXPECT_FALSE(sheet_.imgBass().visible);
    EXPECT_EQ(CountOf(Role::kNoteHead), 1U);
    for (const Primitive& sharp : Of(Role::kSharp))
      EXPECT_GT(sharp.from.x(), sheet_.NotesLeft() - 2 * kGap) << "no sign of a key";
  }
}

// --- Key signatures ---

constexpr double kSharpLines[] = {9, 6, 10, 7, 4, 8, 5};
constexpr double kFlatLines[] = {5, 8, 4, 7, 3, 6, 2};
constexpr std::size_t kStrokesOfSharp = 4;

class KeySignatures : public BarTest, public ::testing::WithParamInterface<std::tuple<int, const char*>> {};

TEST_P(KeySignatures, TheSignsStandInOrderFromLeftToRight) {
  const auto [signature, clef] = GetParam();
  StartTune(4, 4, static_cast<std::int16_t>(signature));
  sheet_.SetShowClef(true);
  sheet_.SetClef(QString::fromLatin1(clef));
  Show();
  const double base = 8.5 + (std::string(clef) == "Treble" ? 0.0 : 1.0);
  const auto signs = static_cast<std::size_t>(std::abs(signature));

  // A sharp is told by the first of its uprights, a flat by its only one.
  std::vector<Primitive> uprights;
  const auto strokes = Of(signature > 0 ? Role::kSharp : Role::kFlat);
  for (const Primitive& stroke : strokes)
    if (stroke.from.x() == stroke.to.x()) uprights.push_back(stroke);
  if (signature > 0) {
    EXPECT_EQ(strokes.size(), signs * kStrokesOfSharp);
    ASSERT_EQ(uprights.size(), 2 * signs);
  } else {
    ASSERT_EQ(uprights.size(), signs);
  }
  EXPECT_EQ(CountOf(signature > 0 ? Role::kFlat : Role::kSharp), 0U);
  for (std::size_t i = 0; i < signs; ++i) {
    SCOPED_TRACE(i);
    const double x = 2.0 + 7.0 / 3.0 + 0.7 * static_cast<double>(i);
    if (signature > 0) {
      const double y = base - kSharpLines[i] / 2.0;
      ExpectLine(uprights[2 * i], {x - 1.0, y - 1.0, x - 1.0, y + 0.8}, 2.0, kBlueInk);
    } else {
      const double y = base - kFlatLines[i] / 2.0;
      EXPECT_NEAR(uprights[i].from.x(), (x - 1.2) * kGap, kClose);
      EXPECT_GT(uprights[i].to.y(), y * kGap);
      EXPECT_LT(uprights[i].from.y(), (y - 1.0) * kGap);
      EXPECT_EQ(uprights[i].colour, kBlueInk);
    }
  }
  EXPECT_NEAR(sheet_.KeyWidth(), 5.0 * kGap * static_cast<double>(signs) / 7.0, kClose);
}

INSTANTIATE_TEST_SUITE_P(AllKeys, KeySignatures,
                         ::testing::Combine(::testing::Range(-7, 8), ::testing::Values("Treble", "Bass")));

TEST_F(StaffGeometry, TheSeventhFlatStandsOnItsLineInBothClefs) {
  StartTune(4, 4, -7);
  sheet_.SetShowClef(true);
  for (const auto& [clef, y] : {std::pair("Treble", 7.5), std::pair("Bass", 8.5)}) {
    SCOPED_TRACE(clef);
    sheet_.SetClef(QString::fromLatin1(clef));
    Show();
    const auto strokes = Of(Role::kFlat);
    ASSERT_FALSE(strokes.empty());
    // The bowl is about the note's place: it comes back to the foot of the upright half a gap below.
    EXPECT_NEAR(strokes.back().to.y(), (y + 0.5) * kGap, kClose);
  }
}

TEST_F(StaffGeometry, ASignatureOutOfRangeDrawsSevenSigns) {
  const auto strokes_of = [this](int signature) {
    StartTune(4, 4, static_cast<std::int16_t>(signature));
    Show();
    return std::pair(CountOf(Role::kSharp), CountOf(Role::kFlat));
  };
  sheet_.SetShowClef(true);
  const std::size_t seven_flats = strokes_of(-7).second;
  ASSERT_GT(seven_flats, 0U);
  for (const int signature : {8, 9, 32767})
    EXPECT_EQ(strokes_of(signature), std::pair(7 * kStrokesOfSharp, std::size_t{0})) << signature;
  for (const int signature : {-8, -9, -32768})
    EXPECT_EQ(strokes_of(signature), std::pair(std::size_t{0}, seven_flats)) << signature;
}

// --- Time signatures and the head ---

struct TimeRow {
  std::int16_t beats;
  std::uint8_t length;
  std::int16_t key;
};

TEST_F(StaffGeometry, TheTimeSignatureStandsBehindTheKey) {
  constexpr TimeRow kRows[] = {{4, 4, 0}, {3, 4, 2}, {2, 2, -3}, {6, 8, 7}, {12, 8, -7}, {3, 8, 1}};
  sheet_.SetShowClef(true);
  for (const TimeRow& row : kRows) {
    SCOPED_TRACE(row.beats);
    StartTune(row.beats, row.length, row.key);
    Show();
    const auto digits = Of(Role::kTimeSignature);
    ASSERT_EQ(digits.size(), 2U);
    const double x = 2.3 + 5.0 * std::abs(row.key) / 7.0;
    const int numbers[] = {row.beats, row.length};
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_NEAR(digits[i].from.x(), x * kGap, kClose);
      EXPECT_NEAR(digits[i].from.y(), (3.5 + 2.0 * static_cast<double>(i)) * kGap, kClose);
      EXPECT_EQ(sheet_.StaffDrawing().TextOf(digits[i]), u' ' + QString::number(numbers[i]))
          << "with the blank of its sign";
      const Lettering& letters = sheet_.StaffDrawing().LetteringOf(digits[i]);
      EXPECT_EQ(letters.face, QStringLiteral("Ariel"));
      EXPECT_TRUE(letters.bold);
      EXPECT_EQ(letters.points, 10.0) << "70 x 1200 / 7700, cut";
    }
  }
}

TEST_F(StaffGeometry, TheDigitsGrowWithTheControlAndNotWithItsStaff) {
  sheet_.SetShowClef(true);
  sheet_.SetSurfaceSize(kSurfaceWidth, kSurfaceHeight, 1530.0);
  Show();
  EXPECT_EQ(sheet_.StaffDrawing().LetteringOf(Of(Role::kTimeSignature)[0]).points, 13.0);
}

TEST_F(StaffGeometry, ABeatLengthOfZeroIsRepairedWhenTheTimeSignatureIsDrawn) {
  StartTune(4, 0);
  Show();
  EXPECT_EQ(tune_->BeatLength(), 0) << "no time signature was drawn";
  sheet_.SetShowClef(true);
  sheet_.SetShowTime(false);
  Show();
  EXPECT_EQ(tune_->BeatLength(), 0);
  sheet_.SetShowTime(true);
  Show();
  EXPECT_EQ(tune_->BeatLength(), 4);
  EXPECT_EQ(sheet_.StaffDrawing().TextOf(Of(Role::kTimeSignature)[1]), QStringLiteral(" 4"));
}

TEST_F(StaffGeometry, WithoutATimeSignatureNoneIsDrawn) {
  sheet_.SetShowClef(true);
  sheet_.SetShowTime(false);
  Show();
  EXPECT_EQ(CountOf(Role::kTimeSignature), 0U);
  EXPECT_EQ(CountOf(Role::kClef), 1U);
}

struct HeadRow {
  bool clef;
  bool time;
  double notes_left;  // gaps, in a key of seven signs
};

TEST_F(StaffGeometry, TheFirstBeatStandsBehindTheHead) {
  constexpr HeadRow kRows[] = {{true, true, 2.3 + 5.0 + 2.5 + 1.0},
                               {true, false, 2.3 + 5.0 + 2.25},
                               {false, true, 2.0},
                               {false, false, 2.0}};
  StartTune(4, 4, -7);
  AddNote(71);
  for (const HeadRow& row : kRows) {
    sheet_.SetShowClef(row.clef);
    sheet_.SetShowTime(row.time);
    Show();
    EXPECT_NEAR(sheet_.NotesLeft(), row.notes_left * kGap, kClose);
    EXPECT_NEAR(sheet_.ClefWidth(), 2.3 * kGap, kClose);
    EXPECT_NEAR(sheet_.TimeWidth(), 2.5 * kGap, kClose);
    ASSERT_EQ(CountOf(Role::kNoteHead), 1U);
    EXPECT_NEAR(Of(Role::kNoteHead)[0].from.x(), row.notes_left * kGap, kClose);
  }
}

TEST_F(StaffGeometry, WithoutATuneTheStaffAndItsClefAreDrawn) {
  sheet_.SetShowClef(true);
  sheet_.Attach(nullptr);
  sheet_.DisplayBar(1, 1);
  EXPECT_EQ(CountOf(Role::kStaffLine), 5U);
  EXPECT_EQ(CountOf(Role::kClef), 1U);
  EXPECT_EQ(CountOf(Role::kTimeSignature), 0U);
  EXPECT_EQ(CountOf(Role::kHeading), 0U);
  EXPECT_FLOAT_EQ(sheet_.KeyWidth(), 0.0F);
  sheet_.DrawKey(QStringLiteral("Treble"));
  sheet_.DrawTime();
  sheet_.DisplayRests(1, 1);
  sheet_.WriteInfo(1);
  EXPECT_EQ(CountOf(Role::kSharp) + CountOf(Role::kFlat) + CountOf(Role::kTimeSignature), 0U);
}

TEST_F(StaffGeometry, ClearingWipesBothSurfacesAndHidesTheClefs) {
  sheet_.SetShowClef(true);
  sheet_.SetShowWords(true);
  tune_->Words()->Add(0, 1, 1, QStringLiteral("word"));
  Show();
  ASSERT_FALSE(sheet_.WordsDrawing().Primitives().empty());
  sheet_.ClearStaff();
  EXPECT_TRUE(sheet_.StaffDrawing().Primitives().empty());
  EXPECT_TRUE(sheet_.WordsDrawing().Primitives().empty());
  EXPECT_FALSE(sheet_.imgTreble().visible);
}

}  // namespace
}  // namespace zelmar
