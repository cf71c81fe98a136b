// Rests: those of the whole bar, the composite ones, and where each part stands.
#include "notation/bar_fixture.h"

namespace zelmar {
namespace {

constexpr char LetterOf(Role role) {
  switch (role) {
    case Role::kWholeBarRest:
      return 'W';
    case Role::kMinimRest:
      return 'M';
    case Role::kCrotchetRest:
      return 'C';
    case Role::kQuaverRest:
      return 'Q';
    case Role::kSemiquaverRest:
      return 'S';
    default:
      return 0;
  }
}

class RestsTest : public BarTest {
 protected:
  // The rests on show, in order.
  std::vector<Primitive> Shown() const {
    std::vector<Primitive> found;
    for (const Primitive& primitive : sheet_.StaffDrawing().Primitives())
      if (LetterOf(primitive.role) != 0) found.push_back(primitive);
    return found;
  }

  std::string Letters() const {
    std::string letters;
    for (const Primitive& rest : Shown()) letters += LetterOf(rest.role);
    return letters;
  }

  QRectF PlaceOf(const Primitive& rest) const { return sheet_.StaffDrawing().PathOf(rest).boundingRect(); }

  std::string Draw(double duration, int beat = 1, int tick = 0, std::int16_t beats = 4,
                   std::uint8_t length = 4) {
    StartTune(beats, length);
    Show();
    Rest rest;
    rest.SetDuration(duration);
    rest.SetBeat(static_cast<std::int16_t>(beat));
    rest.SetTick(static_cast<std::int16_t>(tick));
    sheet_.DrawRest(rest);
    return Letters();
  }
};

struct CompositeRow {
  double duration;
  const char* on_the_beat;
  const char* off_the_beat;
};

constexpr CompositeRow kRows[] = {
    {3.5, "MCQ", "QCM"}, {3.25, "MCS", "SCM"}, {3.0, "MC", "CM"},    {2.75, "MQS", "SQM"}, {2.5, "MQ", "QM"},
    {2.25, "MS", "SM"},  {2.0, "M", "M"},      {1.75, "CQS", "SQC"}, {1.5, "CQ", "QC"},    {1.25, "CS", "SC"},
    {1.0, "C", "C"},     {0.75, "QS", "SQ"},   {0.5, "Q", "Q"},      {0.25, "S", "S"},
};

constexpr double LengthOf(char letter) {
  return letter == 'M' ? 2.0 : letter == 'C' ? 1.0 : letter == 'Q' ? 0.5 : 0.25;
}

TEST_F(RestsTest, ADurationIsBrokenUpIntoWrittenRests) {
  for (const CompositeRow& row : kRows) {
    SCOPED_TRACE(row.duration);
    EXPECT_EQ(Draw(row.duration), row.on_the_beat);
    EXPECT_EQ(Draw(row.duration, 1, 30), row.off_the_beat);
  }
}

TEST_F(RestsTest, EachPartStandsWhereItsTimeBegins) {
  for (const CompositeRow& row : kRows) {
    for (const int tick : {0, 60}) {
      SCOPED_TRACE(row.duration);
      Draw(row.duration, 1, tick);
      double beat = 1.0 + tick / 120.0;
      for (const Primitive& rest : Shown()) {
        EXPECT_NEAR(PlaceOf(rest).center().x(), BeatX(beat) * kGap, 0.4 * kGap);
        beat += LengthOf(LetterOf(rest.role));
      }
      EXPECT_DOUBLE_EQ(beat, 1.0 + tick / 120.0 + row.duration);
    }
  }
}

TEST_F(RestsTest, InCompoundTimeACrotchetIsTwoBeats) {
  EXPECT_EQ(Draw(1.5, 1, 0, 6, 8), "CQ");
  EXPECT_NEAR(PlaceOf(Shown()[1]).center().x(), BeatX(3) * kGap, 0.4 * kGap);
}

TEST_F(RestsTest, AMinimWaitsForTheStrongBeat) {
  EXPECT_EQ(Draw(3.0, 1), "MC");
  EXPECT_EQ(Draw(3.0, 2), "CM");
  EXPECT_NEAR(PlaceOf(Shown()[1]).center().x(), BeatX(3) * kGap, 0.4 * kGap);
}

TEST_F(RestsTest, ARestAsLongAsTheBarIsOneOfTheWholeBar) {
  EXPECT_EQ(Draw(4.0), "W");
  EXPECT_EQ(Draw(1000.0), "W");
  EXPECT_EQ(Draw(3.0, 1, 0, 3), "W");
  EXPECT_EQ(Draw(2.0, 1, 0, 2), "W");
  EXPECT_EQ(Draw(3.0, 1, 0, 6, 8), "MC") << "beats are counted, not crotchets";
}

TEST_F(RestsTest, ABarOfQuaversThatNoPartsAddUpToHasARestOfTheWholeBar) {
  EXPECT_EQ(Draw(4.5, 1, 0, 9, 8), "W");
  EXPECT_EQ(Draw(6.0, 1, 0, 12, 8), "W");
  EXPECT_EQ(Draw(4.0, 1, 0, 16, 16), "W");
  EXPECT_EQ(Draw(4.0, 1, 0, 9, 8), "") << "less than the bar";
  EXPECT_EQ(Draw(1.5, 1, 0, 3, 8), "CQ") << "the parts, where there are any";
}

TEST_F(RestsTest, OtherDurationsAreNotDrawn) {
  for (const double duration : {0.3, 0.1, 0.0, -1.0, -1e300, 3.75, 0.125, 1.0 / 3.0, 0.5000001}) {
    SCOPED_TRACE(duration);
    EXPECT_EQ(Draw(duration), "");
  }
  EXPECT_EQ(Draw(std::nan("")), "");
}

TEST_F(RestsTest, TheBlocksHangFromAndLieOnTheirLines) {
  Draw(4.0);
  EXPECT_NEAR(PlaceOf(Shown()[0]).top(), 5.0 * kGap, kClose) << "the second line from the top";
  EXPECT_NEAR(PlaceOf(Shown()[0]).height(), 0.5 * kGap, kClose);
  Draw(2.0);
  EXPECT_NEAR(PlaceOf(Shown()[0]).bottom(), 6.0 * kGap, kClose) << "the middle line";
  EXPECT_NEAR(PlaceOf(Shown()[0]).height(), 0.5 * kGap, kClose);
}

TEST_F(RestsTest, EveryRestKeepsInsideTheStaff) {
  for (const double duration : {4.0, 2.0, 1.0, 0.5, 0.25}) {
    SCOPED_TRACE(duration);
    Draw(duration);
    ASSERT_EQ(Shown().size(), 1U);
    EXPECT_GE(PlaceOf(Shown()[0]).top(), 4.0 * kGap);
    EXPECT_LE(PlaceOf(Shown()[0]).bottom(), 8.0 * kGap);
    EXPECT_EQ(Shown()[0].pen_width, 3.0);
    EXPECT_EQ(Shown()[0].colour, kBlackInk);
  }
}

TEST_F(RestsTest, ASemiquaverRestHasOneDotMoreThanAQuaverRest) {
  // Left of the stem lie the dots, one below the other.
  const auto blobs = [this](double duration) {
    Draw(duration);
    const QPainterPath& path = sheet_.StaffDrawing().PathOf(Shown()[0]);
    int count = 0;
    double height = 0.0;
    for (double y = 4.0 * kGap; y < 8.0 * kGap; y += 1.0) {
      const bool inside = path.contains(QPointF((BeatX(1) - 0.62) * kGap, y));
      // A curve is thinner than a dot.
      if (!inside && height > 0.3 * kGap) ++count;
      height = inside ? height + 1.0 : 0.0;
    }
    return count;
  };
  EXPECT_EQ(blobs(0.5), 1);
  EXPECT_EQ(blobs(0.25), 2);
}

// --- The rests of a track ---

TEST_F(RestsTest, OnlyTheRestsOfTheBarAreDrawn) {
  StartTune();
  Rests& rests = *tune_->Tracks()->Item(1)->Rests();
  for (std::int16_t bar = 1; bar <= 400; ++bar) {
    if (bar == 200) continue;
    rests.Add(1.0, bar, 1, 0);
    rests.Add(0.5, bar, 3, 0);
  }
  Show();
  EXPECT_EQ(Letters(), "") << "DisplayBar draws none";
  for (const std::int16_t bar : {std::int16_t{1}, std::int16_t{57}, std::int16_t{400}}) {
    Show(bar);
    sheet_.DisplayRests(bar, 1);
    EXPECT_EQ(Letters(), "CQ") << bar;
    EXPECT_NEAR(PlaceOf(Shown()[1]).center().x(), BeatX(3) * kGap, 0.4 * kGap);
  }
  for (const std::int16_t bar : {std::int16_t{0}, std::int16_t{200}, std::int16_t{401}, std::int16_t{-5}}) {
    Show(bar);
    sheet_.DisplayRests(bar, 1);
    EXPECT_EQ(Letters(), "") << bar;
  }
}

TEST_F(RestsTest, TheRestsAreThoseOfTheSelectedTrack) {
  StartTune();
  tune_->Tracks()->Add(QStringLiteral("Two"), 2, 1, 0, false, 0, 0)->Rests()->Add(0.25, 1, 1, 0);
  tune_->Tracks()->Item(1)->Rests()->Add(1.0, 1, 1, 0);
  sheet_.SetSelectedTrack(2);
  Show();
  sheet_.DisplayRests(1, 2);
  EXPECT_EQ(Letters(), "S");
  sheet_.SetSelectedTrack(1);
  Show();
  sheet_.DisplayRests(1, 1);
  EXPECT_EQ(Letters(), "C");
}

TEST_F(RestsTest, TheRestsThatATuneFindsAreDrawn) {
  StartTune();
  AddNote(67, 2);
  AddNote(67, 4, 60, 0.5);
  tune_->CalcGaps(1);
  Show();
  sheet_.DisplayRests(1, 1);
  EXPECT_EQ(Letters(), "CCQ");
}

}  // namespace
}  // namespace zelmar
