// What combo boxes offer of instruments, banks and tracks.
#include "model/combo_entries.h"

#include <gtest/gtest.h>

#include "model/globals.h"
#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar {

void PrintTo(const ComboEntry& entry, std::ostream* out) {
  *out << entry.number << ": " << entry.text.toStdString();
}

namespace {

using Entries = std::vector<ComboEntry>;

class ComboEntriesTest : public ::testing::Test {
 protected:
  ComboEntriesTest() {
    tracks_.Add(QStringLiteral("Melody"), 1, 1, 0, false, 0, 0);
    tracks_.Add(QStringLiteral("Bass"), 200, 2, 0, true, 0, 0);
    tracks_.Add(QString(), 3, 3, 0, false, 0, 0);
  }

  testing_support::ScriptedPlatform platform_;
  Tracks tracks_;
};

TEST_F(ComboEntriesTest, InstrumentsStandWithTheirNumbers) {
  Global().InstrumentNames[0] = QStringLiteral("Piano");
  Global().InstrumentNames[127] = QStringLiteral("Gunshot");
  Global().InstrumentNames[128] = QStringLiteral("Drum Kit");
  const Entries melodic = InstrumentEntries(128);
  ASSERT_EQ(melodic.size(), 128U);
  EXPECT_EQ(melodic.front(), (ComboEntry{QStringLiteral("0.  (Piano)"), 0}));
  EXPECT_EQ(melodic.back(), (ComboEntry{QStringLiteral("127.  (Gunshot)"), 127}));
  EXPECT_EQ(InstrumentEntries(129).back(), (ComboEntry{QStringLiteral("128.  (Drum Kit)"), 128}));
  EXPECT_THROW(InstrumentEntries(130), SubscriptError);
  EXPECT_THROW(InstrumentEntries(0), SubscriptError);
}

TEST_F(ComboEntriesTest, TheBanksOfAnInstrumentBearItsNumberPlusOne) {
  const auto banks = Global().TheToneBanks;
  banks->Add(1, QStringLiteral("Piano"), 0, 0);
  banks->Add(2, QStringLiteral("Bright"), 4, 3);
  banks->Add(1, QStringLiteral("Wide Piano"), 112, 8);
  banks->Add(129, QStringLiteral("Room Kit"), 1, 120);
  EXPECT_EQ(BankEntries(0), (Entries{{QStringLiteral("Piano"), BankNumber({0, 0})},
                                     {QStringLiteral("Wide Piano"), BankNumber({8, 112})}}));
  EXPECT_EQ(BankEntries(128), (Entries{{QStringLiteral("Room Kit"), BankNumber({120, 1})}}));
  EXPECT_TRUE(BankEntries(40).empty());
  // The number above 255 is no patch.
  EXPECT_TRUE(BankEntries(255).empty());
}

TEST_F(ComboEntriesTest, ABankComesBackOutOfItsNumber) {
  for (const Bank bank : {Bank{0, 0}, Bank{0, 127}, Bank{127, 0}, Bank{8, 112}, Bank{255, 255}})
    EXPECT_EQ(BankOfNumber(BankNumber(bank)), bank);
  EXPECT_NE(BankNumber({1, 0}), BankNumber({0, 1}));
}

TEST_F(ComboEntriesTest, TracksAreWrittenInThreeWays) {
  EXPECT_EQ(TrackEntries(tracks_, kNumberedTracks), (Entries{{QStringLiteral("1. Melody"), 1},
                                                             {QStringLiteral("200. Bass"), 200},
                                                             {QStringLiteral("3. "), 3}}));
  EXPECT_EQ(TrackEntries(tracks_, kTrackDescriptions),
            (Entries{{QStringLiteral("Melody"), 1}, {QStringLiteral("Bass"), 200}, {QString(), 3}}));
  EXPECT_EQ(TrackEntries(tracks_, kTrackFilter), (Entries{{QStringLiteral("All Tracks"), kAllTracks},
                                                          {QStringLiteral("1 - Melody"), 1},
                                                          {QStringLiteral("200 - Bass"), 200},
                                                          {QStringLiteral("3 - "), 3}}));
}

TEST_F(ComboEntriesTest, TracksThatAreNotWantedAreLeftOut) {
  EXPECT_EQ(TrackEntries(tracks_, kTrackDescriptions, [](const Track& track) { return !track.Muted(); }),
            (Entries{{QStringLiteral("Melody"), 1}, {QString(), 3}}));
}

}  // namespace
}  // namespace zelmar
