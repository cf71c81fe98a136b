// The controls on paper and on screens of every scale: strokes and letters, never a picture; crisp lines.
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <algorithm>

#include "notation/ctl_piano.h"
#include "notation/staff_hand.h"
#include "notation/track_staff.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr double kScales[] = {1.0, 1.25, 1.5, 2.0, 3.0};

// A document of one page that the control was drawn on.
QByteArray PageOf(QWidget& control) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setResolution(96);
    QPainter painter(&writer);
    control.render(&painter, {}, {}, QWidget::DrawChildren);
  }
  return buffer.data();
}

// The drawing commands of all streams of a document, most of which are packed.
QByteArray CommandsOf(const QByteArray& document) {
  QByteArray commands;
  for (qsizetype at = document.indexOf("stream\n"); at >= 0; at = document.indexOf("stream\n", at)) {
    at += 7;
    const qsizetype end = document.indexOf("endstream", at);
    if (end < 0) break;
    const QByteArray packed = document.mid(at, end - at);
    // The unpacking asks for the length of the result first; a guess is enough.
    const QByteArray length = QByteArray::fromHex("00100000");
    commands += packed.startsWith('x') ? qUncompress(length + packed) : packed;
    at = end + 9;
  }
  return commands;
}

// How often an operator stands among the commands.
qsizetype CountOf(const QByteArray& commands, const char* op) {
  const QRegularExpression pattern(
      QStringLiteral("(^|\\s)%1(\\s|$)").arg(QRegularExpression::escape(QLatin1String(op))));
  qsizetype count = 0;
  for (auto found = pattern.globalMatch(QString::fromLatin1(commands)); found.hasNext(); found.next())
    ++count;
  return count;
}

void ExpectVectors(QWidget& control, int strokes) {
  const QByteArray document = PageOf(control);
  EXPECT_FALSE(document.contains("/Subtype /Image"));
  EXPECT_FALSE(document.contains("/Subtype/Image"));
  const QByteArray commands = CommandsOf(document);
  EXPECT_FALSE(commands.contains(" BI\n"));
  EXPECT_GE(CountOf(commands, "S") + CountOf(commands, "B") + CountOf(commands, "B*"), strokes);
}

class NotationOutput : public StaffHand {
 protected:
  // A split note with its tie, a clef, signatures, a heading.
  void ShowCompoundTime() {
    tune_->SetBeatsPerBar(6);
    tune_->SetBeatLength(8);
    tune_->SetKeySignature(2);
    AddNote(QStringLiteral("G4"), 3, 0, 1.5);
    Show();
    staff_->RePaint();
  }
  bool Draws(Shape shape) const {
    const auto& drawn = staff_->StaffDrawing().Primitives();
    return std::any_of(drawn.begin(), drawn.end(), [shape](const Primitive& p) { return p.shape == shape; });
  }
};

TEST_F(NotationOutput, AStaffIsPrintedInStrokesAndLetters) {
  ShowCompoundTime();
  for (const Shape shape : {Shape::kLine, Shape::kCircle, Shape::kArc, Shape::kText, Shape::kPath})
    ASSERT_TRUE(Draws(shape)) << static_cast<int>(shape);
  ExpectVectors(*staff_, 20);
  const QByteArray document = PageOf(*staff_);
  EXPECT_TRUE(document.contains("/Type /Font"));
  EXPECT_GE(CountOf(CommandsOf(document), "ET"), 3) << "a heading and two figures";
}

TEST_F(NotationOutput, AStripIsPrintedInStrokes) {
  for (int beat = 1; beat <= 4; ++beat) AddNote(QStringLiteral("G4"), beat);
  TrackStaff strip;
  strip.resize(900, 100);
  strip.SetTune(tune_);
  strip.LoadBarsAcross(QStringLiteral("Treble"));
  strip.show();
  constexpr int kLinesOfThreeStaves = 3 * (5 + 1);
  constexpr int kHeadsAndStems = 4 * 2;
  ExpectVectors(strip, kLinesOfThreeStaves + kHeadsAndStems);
}

TEST_F(NotationOutput, APianoIsPrintedWithoutPictures) {
  CtlPiano piano;
  piano.resize(806, 140);
  piano.show();
  const QByteArray document = PageOf(piano);
  EXPECT_FALSE(document.contains("/Subtype /Image"));
  const QByteArray commands = CommandsOf(document);
  const qsizetype shapes = CountOf(commands, "S") + CountOf(commands, "B") + CountOf(commands, "B*") +
                           CountOf(commands, "f") + CountOf(commands, "f*");
  EXPECT_GE(shapes, piano.KeyCount());
}

TEST_F(NotationOutput, StaffLinesAreCrispAndWholeAtEveryScale) {
  Show(612, 204);
  for (const double scale : kScales) {
    SCOPED_TRACE(scale);
    QImage picture((QSizeF(staff_->size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::gray);
    staff_->render(&picture, {}, {}, QWidget::DrawChildren);
    const int last_column = picture.width() - 1;
    const auto level = [&](int column, int row) { return qGray(picture.pixel(column, row)); };
    // Between the time signature and the bar line nothing but the five lines stands.
    const int column = static_cast<int>(staff_->XOf(3, 0) / 15.0 * scale);
    int lines = 0;
    bool dark_before = false;
    for (int row = static_cast<int>(picture.height() * 0.2); row < picture.height(); ++row) {
      const int grey = level(column, row);
      EXPECT_TRUE(grey == 0 || grey == 255) << row << ": " << grey;
      const bool dark = grey == 0;
      lines += dark && !dark_before ? 1 : 0;
      dark_before = dark;
      if (!dark) continue;
      // From one end to the other.
      for (const int end : {0, last_column}) EXPECT_EQ(level(end, row), 0) << end << " " << row;
    }
    EXPECT_EQ(lines, 5);
    // The paper reaches every corner and the bar line the right edge.
    EXPECT_EQ(level(last_column, 0), 255);
    EXPECT_EQ(level(0, picture.height() - 1), 255);
    EXPECT_EQ(level(last_column, picture.height() - 1), 255);
    EXPECT_EQ(level(last_column, static_cast<int>(staff_->YOfStep(4) / 15.0 * scale)), 0);
  }
}

QImage PictureAt(double scale, QWidget& control, Qt::GlobalColor before = Qt::white) {
  QImage picture((QSizeF(control.size()) * scale).toSize(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(scale);
  picture.fill(before);
  control.render(&picture, {}, {}, QWidget::DrawChildren);
  return picture;
}

TEST_F(NotationOutput, BarLinesOfARowAreEquallyThickAtEveryScaleAndWidth) {
  for (const std::int16_t across : {std::int16_t{1}, std::int16_t{3}, std::int16_t{7}, std::int16_t{12}}) {
    for (const int width : {640, 803, 1001}) {
      TrackStaff strip;
      strip.resize(width, 100);
      strip.SetTune(tune_);
      strip.SetBarsAcross(across);
      // Without a clef the bar lines are all that stands on the staff lines.
      strip.LoadBarsAcross(QStringLiteral("None"));
      for (const double scale : kScales) {
        SCOPED_TRACE(testing::Message() << across << " across " << width << " at " << scale);
        const QImage picture = PictureAt(scale, strip);
        const CtlQuilStaff& staff = *strip.MyStaff().front();
        const int row = static_cast<int>(staff.YOfStep(4) / kTwipsPerPixel * scale);
        std::vector<int> widths;
        bool dark_before = false;
        for (int x = 0; x < picture.width(); ++x) {
          const bool dark = qGray(picture.pixel(x, row)) < 128;
          if (dark && !dark_before) widths.push_back(0);
          if (dark) ++widths.back();
          dark_before = dark;
        }
        EXPECT_EQ(widths, std::vector<int>(static_cast<std::size_t>(across),
                                           static_cast<int>(std::lround(2.0 * scale))));
      }
    }
  }
}

TEST_F(NotationOutput, ThePaperOfARowHasNoSeamsAtAnyScale) {
  for (const int width : {640, 803, 1001}) {
    TrackStaff strip;
    strip.resize(width, 100);
    tune_->Words()->Add(0, 1, 1, QStringLiteral("la"));
    strip.SetTune(tune_);
    strip.SetBarsAcross(7);
    strip.SetShowWords(true);
    strip.LoadBarsAcross(QStringLiteral("Treble"));
    for (const double scale : kScales) {
      SCOPED_TRACE(testing::Message() << width << " at " << scale);
      const QImage picture = PictureAt(scale, strip, Qt::green);
      const int right = static_cast<int>(7 * strip.MyStaff()[0]->width() * scale);
      const int bottom = static_cast<int>(strip.height() * scale);
      for (int y = 0; y < bottom; ++y)
        for (int x = 0; x < right; ++x) {
          const QColor colour(picture.pixel(x, y));
          ASSERT_LE(colour.green(), std::max(colour.red(), colour.blue()) + 2) << x << ", " << y;
        }
    }
  }
}

TEST_F(NotationOutput, GuideLinesLieBeneathTheInkAtEveryScale) {
  // A black head, an open one, a stem and a ledger line on the beats.
  AddNote(QStringLiteral("C4"), 1);
  AddNote(QStringLiteral("E5"), 2, 0, 2.0);
  AddNote(QStringLiteral("A5"), 4);
  Show(609, 203);
  for (const double scale : kScales) {
    SCOPED_TRACE(scale);
    staff_->SetShowBeatLines(false);
    staff_->RePaint();
    const QImage without = PictureAt(scale, *staff_);
    staff_->SetShowBeatLines(true);
    staff_->RePaint();
    const QImage with = PictureAt(scale, *staff_);
    int lines = 0;
    for (int x = 0; x < with.width(); ++x) {
      bool changed = false;
      for (int y = 0; y < with.height(); ++y) {
        const int before = qGray(without.pixel(x, y));
        const int after = qGray(with.pixel(x, y));
        // Ink stays; where a stroke covers half a pixel the line shows through the other half.
        ASSERT_TRUE(before > 0 || after == 0) << x << ", " << y;
        ASSERT_LE(after, before) << x << ", " << y;
        changed = changed || after != before;
      }
      lines += changed ? 1 : 0;
    }
    EXPECT_EQ(lines, 4 * static_cast<int>(scale)) << "columns of four lines";
    staff_->SetShowBeatLines(false);
  }
}

TEST_F(NotationOutput, HeadsAndTheirLedgerLinesAreOneBlack) {
  AddNote(QStringLiteral("C4"), 2);
  Show();
  // As the light theme has it.
  QPalette palette = staff_->palette();
  palette.setColor(QPalette::ButtonText, QColor(27, 30, 36));
  staff_->setPalette(palette);
  staff_->RePaint();
  const QImage picture = PictureAt(2.0, *staff_);
  const double y = staff_->YOfStep(-1) / kTwipsPerPixel * 2.0;
  const double middle = staff_->XOf(2, 0) / kTwipsPerPixel * 2.0;
  const double reach = staff_->LineGap() / kTwipsPerPixel * 2.0;
  for (double x = middle - 0.95 * reach; x < middle + 0.95 * reach; x += 1.0)
    EXPECT_EQ(QColor(picture.pixel(static_cast<int>(x), static_cast<int>(y))), QColor(Qt::black)) << x;
}

TEST_F(NotationOutput, AStripOfAnotherClefWordHasNoClefAndNoPitches) {
  AddNote(QStringLiteral("G4"), 1);
  TrackStaff strip;
  strip.resize(900, 100);
  strip.SetTune(tune_);
  strip.LoadBarsAcross(QStringLiteral("Alto"));
  ASSERT_EQ(strip.MyStaff().size(), 3U);
  for (const CtlQuilStaff* staff : strip.MyStaff()) {
    EXPECT_EQ(staff->Clef(), QStringLiteral("Alto"));
    EXPECT_FALSE(staff->imgTreble().visible);
    EXPECT_FALSE(staff->imgBass().visible);
    std::int16_t pitch = 5;
    staff->FindPitch(0.0F, staff->YOfStep(3), pitch);
    EXPECT_EQ(pitch, 5);
  }
}

}  // namespace
}  // namespace zelmar
