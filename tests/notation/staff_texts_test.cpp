// What is written over and under the notes of a bar: the heading, which clears them, and the words, which
// clear one another.
#include "notation/bar_fixture.h"
#include "notation/ink.h"

namespace zelmar {
namespace {

using StaffTexts = BarTest;

// --- Heading ---

struct HeadingRow {
  bool show_title;
  bool show_track;
  const char16_t* composer;
  std::uint8_t track;
  const char16_t* heading;
};

TEST_F(StaffTexts, TheFirstStaffIsHeadedByTitleAndTrack) {
  constexpr HeadingRow kRows[] = {
      {true, true, u"Bach", 2, u"Bach  Air  (2) Violin"},
      {true, true, u"Various", 2, u"Air  (2) Violin"},
      {true, false, u"Bach", 2, u"Bach  Air  "},
      {true, false, u"Various", 2, u"Air  "},
      {false, true, u"Bach", 2, u"(2) Violin"},
      {false, true, u"Various", 1, u"(1) Default Track"},
      {true, true, u"various", 2, u"various  Air  (2) Violin"},
  };
  for (const HeadingRow& row : kRows) {
    SCOPED_TRACE(QString::fromUtf16(row.heading).toStdString());
    StartTune();
    tune_->SetTitle(QStringLiteral("Air"));
    tune_->SetComposer(QString::fromUtf16(row.composer));
    tune_->Tracks()->Add(QStringLiteral("Violin"), 2, 1, 0, false, 0, 0);
    sheet_.SetShowTitle(row.show_title);
    sheet_.SetShowTrack(row.show_track);
    sheet_.SetSelectedTrack(row.track);
    Show();
    const auto headings = Of(Role::kHeading);
    ASSERT_EQ(headings.size(), 1U);
    EXPECT_EQ(sheet_.StaffDrawing().TextOf(headings[0]), QString::fromUtf16(row.heading));
    EXPECT_EQ(headings[0].from, QPointF(0.0, 0.0));
    EXPECT_EQ(headings[0].colour, kBlackInk);
    EXPECT_EQ(sheet_.StaffDrawing().LetteringOf(headings[0]).face, QStringLiteral("Times New Roman"));
  }
}

TEST_F(StaffTexts, TheFirstStaffHasItsNumberAboveTheClef) {
  StartTune();
  Show(17);
  EXPECT_EQ(CountOf(Role::kBarNumber), 0U) << "without a head a note may stand there";
  sheet_.SetShowClef(true);
  Show(17);
  const auto numbers = Of(Role::kBarNumber);
  ASSERT_EQ(numbers.size(), 1U);
  EXPECT_EQ(sheet_.StaffDrawing().TextOf(numbers[0]), QStringLiteral("17"));
  EXPECT_EQ(numbers[0].colour, kRedInk);
  // Clear of what stands above it, below it and beside it.
  const Drawing& drawing = sheet_.StaffDrawing();
  const QRectF place = BoxOfText(QStringLiteral("17"), drawing.LetteringOf(numbers[0]), numbers[0].from, 0.0);
  EXPECT_LT(place.right(), sheet_.NotesLeft());
  EXPECT_LT(place.bottom(), StepY(9) * kGap);
  for (const Primitive& heading : Of(Role::kHeading)) EXPECT_FALSE(drawing.BoxOf(heading).intersects(place));
  sheet_.SetBarOffset(1);
  Show(17);
  EXPECT_EQ(CountOf(Role::kBarNumber), 0U);
}

TEST_F(StaffTexts, ATrackThatIsNotListedIsUnknown) {
  StartTune();
  sheet_.SetShowTrack(true);
  sheet_.Attach(tune_);
  sheet_.SetSelectedTrack(9);
  sheet_.DisplayBar(1, 9);
  ASSERT_EQ(CountOf(Role::kHeading), 1U);
  EXPECT_EQ(sheet_.StaffDrawing().TextOf(Of(Role::kHeading)[0]), QStringLiteral("Track Unknown"));
}

TEST_F(StaffTexts, WithNeitherTitleNorTrackThereIsNoHeading) {
  StartTune();
  Show();
  EXPECT_EQ(CountOf(Role::kHeading), 0U);
}

TEST_F(StaffTexts, TheOtherStavesOfARowHaveTheirNumberInRed) {
  StartTune();
  sheet_.SetShowTitle(true);
  sheet_.SetShowTrack(true);
  sheet_.SetBarOffset(2);
  Show(17);
  const auto headings = Of(Role::kHeading);
  ASSERT_EQ(headings.size(), 1U);
  EXPECT_EQ(sheet_.StaffDrawing().TextOf(headings[0]), QStringLiteral("17"));
  EXPECT_EQ(headings[0].colour, kRedInk);
  EXPECT_NEAR(headings[0].from.x(), kSurfaceWidth / 8.0, kClose);
  EXPECT_EQ(headings[0].from.y(), 0.0);
}

TEST_F(StaffTexts, TheHeadingGrowsWithTheStaff) {
  StartTune();
  sheet_.SetShowTrack(true);
  Show();
  const double points = sheet_.StaffDrawing().LetteringOf(Of(Role::kHeading)[0]).points;
  sheet_.SetSurfaceSize(kSurfaceWidth, 2 * kSurfaceHeight, 2 * kSurfaceHeight);
  Show();
  EXPECT_NEAR(sheet_.StaffDrawing().LetteringOf(Of(Role::kHeading)[0]).points, 2 * points, 0.01);
}

constexpr double kUsualHeading = 1.35;  // line gaps

class HeadingOverNotes : public StaffTexts {
 protected:
  HeadingOverNotes() {
    StartTune();
    tune_->SetTitle(kTitle);
    sheet_.SetShowTitle(true);
  }

  // The heading as the first staff of a row has it, or as the second.
  void ShowAs(std::int16_t offset) {
    sheet_.SetBarOffset(offset);
    sheet_.SetShowClef(offset == 0);
    Show();
  }

  double Points() const { return sheet_.StaffDrawing().LetteringOf(Of(Role::kHeading)[0]).points; }

  // Pixels that the heading shares with the notes.
  int Shared() const {
    const Drawing& all = sheet_.StaffDrawing();
    const QImage heading = PictureOf(OfRole(all, Role::kHeading), kTop);
    const QImage notes = PictureOf(Selected(all,
                                            [](const Primitive& p, std::size_t) {
                                              return p.role != Role::kHeading && p.role != Role::kStaffLine &&
                                                     p.role != Role::kBarLine && p.role != Role::kClef;
                                            }),
                                   kTop);
    int shared = 0;
    for (int y = 0; y < heading.height(); ++y)
      for (int x = 0; x < heading.width(); ++x) shared += IsInk(heading, x, y) && IsInk(notes, x, y) ? 1 : 0;
    return shared;
  }

  static constexpr QSizeF kSurface{kSurfaceWidth, kSurfaceHeight};
  static constexpr QSizeF kTop{kSurfaceWidth, 3.0 * kGap};  // the heading ends above
  const QString kTitle = QStringLiteral("Gigue in Ämter, quickly");
};

TEST_F(HeadingOverNotes, ItSharesNoPixelWithAnyNoteOrSign) {
  for (std::int16_t key = -7; key <= 7; ++key) {
    for (int pitch = 74; pitch <= 86; ++pitch) {
      for (const int beat : {1, 2, 4}) {
        for (const std::int16_t offset : {std::int16_t{0}, std::int16_t{1}}) {
          SCOPED_TRACE(testing::Message()
                       << "key " << key << " pitch " << pitch << " beat " << beat << " staff " << offset);
          StartTune(4, 4, key);
          tune_->SetTitle(kTitle + kTitle);
          AddNote(pitch, beat);
          ShowAs(offset);
          EXPECT_EQ(Shared(), 0);
          const QRectF ink = InkOf(OfRole(sheet_.StaffDrawing(), Role::kHeading), kTop);
          EXPECT_GT(ink.width(), 0.4 * kGap) << "something is left of it";
          EXPECT_GE(ink.top(), 0.0);
        }
      }
    }
  }
}

TEST_F(HeadingOverNotes, ItIsSmallerOnlyWhereANoteReachesUpToIt) {
  AddNote(79, 1);
  ShowAs(0);
  EXPECT_NEAR(Points(), kUsualHeading * kGap / 20.0, 1e-6) << "a note above the staff";
  tune_->Tones()->Clear();
  AddNote(86, 4);
  ShowAs(0);
  EXPECT_NEAR(Points(), kUsualHeading * kGap / 20.0, 1e-6) << "the highest note, beside the heading";
  tune_->Tones()->Clear();
  AddNote(86, 1);
  ShowAs(0);
  EXPECT_LT(Points(), kUsualHeading * kGap / 20.0);
  EXPECT_GT(Points(), 0.5 * kUsualHeading * kGap / 20.0);
}

TEST_F(HeadingOverNotes, OverTheHighestHeadItIsWhole) {
  // As many bars across as a person still reads.
  const QSizeF surface(40.0 * 135.0, 12.0 * 135.0);
  sheet_.SetSurfaceSize(surface.width(), surface.height(), surface.height());
  AddNote(86, 1);
  ShowAs(0);
  const Primitive heading = Of(Role::kHeading)[0];
  const Drawing& drawing = sheet_.StaffDrawing();
  const QRectF whole = BoxOfText(drawing.TextOf(heading), drawing.LetteringOf(heading), heading.from, 0.0);
  EXPECT_NEAR(InkOf(OfRole(drawing, Role::kHeading), surface).right(), whole.right(), 8.0);
  EXPECT_GT(whole.right(), sheet_.XOf(1, 0)) << "the note stands beneath it";
}

TEST_F(HeadingOverNotes, TheNumberOfABarStepsAsideForASign) {
  StartTune(4, 4, 4);
  AddNote(86);
  constexpr double kWidth = 6.0 * kGap;
  sheet_.SetSurfaceSize(kWidth, kSurfaceHeight, kSurfaceHeight);
  ShowAs(1);
  const double sign = sheet_.XOf(1, 0) - 1.25 * kGap;
  EXPECT_NEAR(kWidth / 8.0, sign, 0.25 * kGap) << "the natural stands where the number would";
  EXPECT_GT(Of(Role::kHeading)[0].from.x(), sign);
  EXPECT_EQ(Shared(), 0);
  EXPECT_FALSE(InkOf(OfRole(sheet_.StaffDrawing(), Role::kHeading), {kWidth, kSurfaceHeight}).isNull());
}

// --- Words ---

class WordsOfABar : public StaffTexts {
 protected:
  void AddWord(int beat, const char16_t* text, int tick = 0, int bar = 1) {
    tune_->Words()->Add(static_cast<std::int16_t>(tick), static_cast<std::int16_t>(beat),
                        static_cast<std::int16_t>(bar), QString::fromUtf16(text));
  }
  void ShowWords(std::int16_t bar = 1) {
    sheet_.SetShowWords(true);
    Show(bar);
  }
  std::vector<Primitive> Words() const { return In(sheet_.WordsDrawing(), Role::kWord); }
  QString TextOf(const Primitive& word) const { return sheet_.WordsDrawing().TextOf(word); }

  // The ink of each word alone.
  std::vector<QRectF> Boxes() const {
    std::vector<QRectF> boxes;
    for (std::size_t wanted = 0; wanted < Words().size(); ++wanted)
      boxes.push_back(InkOf(Selected(sheet_.WordsDrawing(),
                                     [&](const Primitive&, std::size_t place) { return place == wanted; }),
                            {1.5 * sheet_.StaffWidth(), 4.0 * sheet_.LineGap()}));
    return boxes;
  }
};

TEST_F(WordsOfABar, TheyStandUnderTheirBeats) {
  StartTune(3, 4);
  AddWord(1, u"other", 0, 2);
  AddWord(2, u"sweet", 60);
  AddWord(1, u"how");
  Show();
  EXPECT_TRUE(sheet_.WordsDrawing().Primitives().empty());
  ShowWords();
  const auto words = Words();
  ASSERT_EQ(words.size(), 2U);
  EXPECT_EQ(TextOf(words[0]), QStringLiteral("how"));
  EXPECT_NEAR(words[0].from.x(), 3.0 * kGap, kClose);
  EXPECT_EQ(TextOf(words[1]), QStringLiteral("sweet"));
  EXPECT_NEAR(words[1].from.x(), (3.0 + 1.5 / 3.0 * (40.0 - 5.0)) * kGap, kClose);
  ShowWords(2);
  EXPECT_EQ(Words().size(), 1U);
  ShowWords(3);
  EXPECT_TRUE(Words().empty());
}

TEST_F(WordsOfABar, TheyGrowWithTheStaff) {
  AddWord(1, u"grace");
  ShowWords();
  const double height = Boxes()[0].height();
  sheet_.SetSurfaceSize(2 * kSurfaceWidth, 2 * kSurfaceHeight, 2 * kSurfaceHeight);
  ShowWords();
  EXPECT_NEAR(Boxes()[0].height(), 2 * height, 8.0);
  EXPECT_GT(height, 0.6 * kGap);
  EXPECT_LT(Boxes()[0].bottom(), 2.0 * sheet_.LineGap()) << "the strip is two gaps high";
}

TEST_F(WordsOfABar, WhereThereIsRoomTheyAreAsWideAsTheyAre) {
  AddWord(1, u"grace,");
  AddWord(3, u"how");
  ShowWords();
  for (const Primitive& word : Words()) {
    const Lettering& letters = sheet_.WordsDrawing().LetteringOf(word);
    EXPECT_LT(TextWidth(TextOf(word), letters), word.room);
  }
  const Primitive first = Words()[0];
  const QRectF free = BoxOfText(TextOf(first), sheet_.WordsDrawing().LetteringOf(first), first.from, 0.0);
  EXPECT_NEAR(Boxes()[0].width(), free.width(), 8.0);
}

TEST_F(WordsOfABar, TheyNeverRunIntoOneAnotherNorOverTheBarLine) {
  for (const double width : {120.0, 60.0, 40.0, 25.0, 15.0, 9.0}) {
    for (const int beats : {2, 4, 12}) {
      SCOPED_TRACE(testing::Message() << width << " gaps, " << beats << " beats");
      StartTune(static_cast<std::int16_t>(beats), 4);
      for (int beat = beats; beat >= 1; --beat) AddWord(beat, beat % 2 == 0 ? u"through" : u"grace,");
      AddWord(beats, u"strengths", 60);
      sheet_.SetSurfaceSize(width * kGap, kSurfaceHeight, kSurfaceHeight);
      ShowWords();
      const auto boxes = Boxes();
      ASSERT_EQ(boxes.size(), static_cast<std::size_t>(beats) + 1);
      double end = 0.0;
      for (const QRectF& box : boxes) {
        if (box.isNull()) continue;
        EXPECT_GT(box.left(), end);
        end = box.right();
      }
      EXPECT_LE(end, sheet_.StaffWidth());
    }
  }
}

TEST_F(WordsOfABar, WordsOfOneMomentAreWrittenAsOne) {
  AddWord(2, u"Go");
  AddWord(1, u"now");
  AddWord(2, u"tell");
  ShowWords();
  ASSERT_EQ(Words().size(), 2U);
  EXPECT_EQ(TextOf(Words()[1]), QStringLiteral("Go tell"));
}

}  // namespace
}  // namespace zelmar
