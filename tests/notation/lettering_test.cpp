// Letters of a drawing: as wide at every scale, fitted into their room, and in a face of the right widths.
#include "notation/lettering.h"

#include "notation/ink.h"
#include "notation/twips.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

const Lettering kHeadings{QStringLiteral("Times New Roman"), 12.0, false};
const Lettering kDigits{QStringLiteral("Ariel"), 18.0, true, 0.5};
constexpr double kEm = 18.0 * kTwipsPerPoint;

WrittenText Written(const QString& text, const Lettering& letters, double room, double scale = 0.2) {
  return {text, letters, QPointF(300.0, 150.0), room, scale};
}

TEST(LetteringTest, AFaceThatIsMissingGivesWayToOneOfItsWidths) {
  // Shares of the height, as both faces have had them since they were cut for screens.
  EXPECT_NEAR(TextWidth(QStringLiteral("0"), kDigits), 0.556 * kEm, 0.01 * kEm);
  EXPECT_NEAR(TextWidth(QStringLiteral("12"), kDigits), 1.112 * kEm, 0.01 * kEm);
  EXPECT_NEAR(TextWidth(QStringLiteral(" "), kDigits), 0.278 * kEm, 0.01 * kEm);
  const double heading = kHeadings.points * kTwipsPerPoint;
  EXPECT_NEAR(TextWidth(QStringLiteral("0"), kHeadings), 0.5 * heading, 0.01 * heading);
  EXPECT_NEAR(TextWidth(QStringLiteral("m"), kHeadings), 0.778 * heading, 0.01 * heading);
}

TEST(LetteringTest, ATextIsAsWideAtEveryScale) {
  const QString text = QStringLiteral("Gigue, quickly");
  for (const double points : {7.0, 9.3, 12.0, 27.0}) {
    Lettering letters = kHeadings;
    letters.points = points;
    const double width = BoxOfText(text, letters, {}, 0.0).width();
    for (double scale = 1.0 / kTwipsPerPixel; scale < 0.5; scale *= 1.19)
      EXPECT_NEAR(Written(text, letters, 0.0, scale).Box().width() / scale, width, 0.02 * width)
          << points << " " << scale;
  }
}

TEST(LetteringTest, WithoutALimitOrWithRoomEnoughNothingIsNarrowed) {
  const QString text = QStringLiteral("12");
  const WrittenText free = Written(text, kDigits, 0.0);
  const WrittenText roomy = Written(text, kDigits, 1.2 * kEm);
  EXPECT_EQ(free.StretchAcross(), free.StretchDown());
  EXPECT_EQ(roomy.StretchAcross(), free.StretchAcross());
  EXPECT_EQ(roomy.Letters(), text);
}

TEST(LetteringTest, ATextThatFindsTooLittleRoomIsNarrowedAndKeepsItsHeight) {
  const QString text = QStringLiteral("1616");
  const double width = TextWidth(text, kDigits);
  for (const double share : {0.9, 0.7, 0.5}) {
    const WrittenText narrow = Written(text, kDigits, share * width);
    EXPECT_EQ(narrow.Letters(), text) << share;
    EXPECT_NEAR(narrow.StretchAcross() / narrow.StretchDown(), share, 0.02);
    EXPECT_LE(narrow.Box().right(), (300.0 + share * width) * 0.2);
    EXPECT_EQ(narrow.Box().height(), Written(text, kDigits, 0.0).Box().height());
  }
}

TEST(LetteringTest, BeyondItsNarrowestItEndsInDotsWithinItsRoom) {
  const QString text = QStringLiteral("A heading that is much too long");
  for (const double narrowest : {1.0, 0.6}) {
    Lettering letters = kHeadings;
    letters.narrowest = narrowest;
    const double room = 0.4 * TextWidth(text, letters);
    const WrittenText cut = Written(text, letters, room);
    EXPECT_TRUE(cut.Letters().endsWith(QChar(0x2026))) << cut.Letters().toStdString();
    EXPECT_NEAR(cut.StretchAcross() / cut.StretchDown(), narrowest, 1e-9);
    EXPECT_LE(cut.Box().right(), (300.0 + room) * 0.2);
  }
  EXPECT_GT(Written(text, {kHeadings.face, 12.0, false, 0.6}, 2000.0).Letters().size(),
            Written(text, kHeadings, 2000.0).Letters().size());
}

TEST(LetteringTest, WhereNotEvenTheDotsFindRoomNothingIsWritten) {
  EXPECT_TRUE(Written(QStringLiteral("Heading"), kHeadings, 1.0).Letters().isEmpty());
  EXPECT_TRUE(Written(QStringLiteral(" 12"), kDigits, 1.0).Letters().isEmpty());
}

TEST(LetteringTest, BlanksAtTheHeadKeepTheirWidth) {
  const double blank = TextWidth(QStringLiteral(" "), kDigits);
  for (const double room : {0.0, 1.0 * kEm, 0.85 * kEm}) {
    const WrittenText written = Written(QStringLiteral(" 12"), kDigits, room);
    EXPECT_EQ(written.Letters(), QStringLiteral("12"));
    EXPECT_NEAR(written.Start().x(), (300.0 + blank) * 0.2, 0.01 * kEm * 0.2);
  }
}

TEST(LetteringTest, TheBoxIsThatOfTheInk) {
  for (const double room : {0.0, 900.0}) {
    Drawing drawing;
    drawing.Text(Role::kTimeSignature, kBlackInk, {300, 150}, QStringLiteral(" 128"), kDigits, room);
    const QRectF box = drawing.BoxOf(drawing.Primitives()[0]);
    const QRectF ink = InkOf(drawing, {2000, 900});
    EXPECT_NEAR(box.left(), ink.left(), 6.0);
    EXPECT_NEAR(box.right(), ink.right(), 6.0);
    EXPECT_NEAR(box.top(), ink.top(), 6.0);
    EXPECT_NEAR(box.bottom(), ink.bottom(), 6.0);
    EXPECT_EQ(BoxOfText(QStringLiteral(" 128"), kDigits, {300, 150}, room), box);
  }
}

}  // namespace
}  // namespace zelmar
