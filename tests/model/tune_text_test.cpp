// The texts that name a tune.
#include "model/tune_text.h"

#include <gtest/gtest.h>

#include "model/tune.h"

namespace zelmar {
namespace {

std::shared_ptr<Tune> Air(const char* composer) {
  auto tune = std::make_shared<Tune>();
  tune->SetTitle(QStringLiteral("Air"));
  tune->SetComposer(QString::fromUtf8(composer));
  return tune;
}

TEST(TuneText, ComposerAndTitleStandInTheOrderThatIsAskedFor) {
  EXPECT_EQ(ComposerAndTitle(*Air("Bach")), QStringLiteral("Bach - Air"));
  EXPECT_EQ(TitleAndComposer(*Air("Bach")), QStringLiteral("Air by Bach"));
}

TEST(TuneText, TheWordsBetweenThemCanBeOthers) {
  EXPECT_EQ(ComposerAndTitle(*Air("Bach"), QStringLiteral("  ")), QStringLiteral("Bach  Air"));
  EXPECT_EQ(TitleAndComposer(*Air("Bach"), QStringLiteral("   by  ")), QStringLiteral("Air   by  Bach"));
}

TEST(TuneText, VariousAndAnEmptyComposerAreLeftOutWithTheWordsThatLeadToThem) {
  for (const char* nobody : {"Various", ""}) {
    EXPECT_EQ(ComposerAndTitle(*Air(nobody)), QStringLiteral("Air")) << nobody;
    EXPECT_EQ(TitleAndComposer(*Air(nobody)), QStringLiteral("Air")) << nobody;
    EXPECT_EQ(NamedComposer(QString::fromUtf8(nobody)), QString()) << nobody;
  }
}

TEST(TuneText, WindowsNameNobodyWhereTheDatabaseKeepsABlank) {
  for (const char* nobody : {"Various", "", " ", "  "})
    EXPECT_EQ(NameInWindows(*Air(nobody)), QStringLiteral("Air")) << nobody;
  EXPECT_EQ(NameInWindows(*Air("Bach")), QStringLiteral("Bach - Air"));
}

TEST(TuneText, AComposerIsNamedAsStored) {
  for (const char* composer : {"various", "Various artists", " ", "O'Carolan"})
    EXPECT_EQ(ComposerAndTitle(*Air(composer)), QString::fromUtf8(composer) + QStringLiteral(" - Air"));
  EXPECT_EQ(NamedComposer(QStringLiteral("O'Carolan")), QStringLiteral("O'Carolan"));
}

TEST(TuneText, TextsNeedNoTune) {
  EXPECT_EQ(ComposerAndTitle(QStringLiteral("Bach"), QStringLiteral("Air")), QStringLiteral("Bach - Air"));
  EXPECT_EQ(TitleAndComposer(QStringLiteral("Air"), QStringLiteral("Various")), QStringLiteral("Air"));
}

}  // namespace
}  // namespace zelmar
