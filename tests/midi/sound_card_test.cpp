// The one output device: its two states, its number and its handle.
#include "midi/sound_card.h"

#include <gtest/gtest.h>

#include "midi/quil_sounds_module.h"
#include "model/globals.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;
using testing_support::SentMessage;
using Kind = SentMessage::Kind;

constexpr std::int16_t kUntouched = -77;

class SoundCardTest : public ::testing::Test {
 protected:
  std::int16_t Open(std::int16_t device) {
    std::int16_t result = kUntouched;
    card_.OpenCard(device, result);
    return result;
  }
  int Opens() const { return platform_.midi->CountOf(Kind::kOpen); }

  ScriptedPlatform platform_;
  SoundCard card_;
};

TEST_F(SoundCardTest, StartsClosedWithNoHandle) {
  EXPECT_FALSE(card_.Opened());
  EXPECT_EQ(card_.HandleForMidiOut(), 0);
  EXPECT_EQ(card_.DeviceID(), 0);
}

TEST_F(SoundCardTest, OpensADeviceAndHasAHandle) {
  platform_.midi->device_names = {QStringLiteral("A"), QStringLiteral("B")};
  EXPECT_EQ(Open(1), 0);
  EXPECT_TRUE(card_.Opened());
  EXPECT_EQ(card_.DeviceID(), 1);
  EXPECT_EQ(platform_.midi->opened_device, 1);
  EXPECT_NE(card_.HandleForMidiOut(), 0);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(SoundCardTest, OpeningAnOpenCardOnlyRemembersTheNumber) {
  platform_.midi->device_names = {QStringLiteral("A"), QStringLiteral("B")};
  Open(0);
  const std::int32_t handle = card_.HandleForMidiOut();
  EXPECT_EQ(Open(1), kUntouched);
  EXPECT_EQ(card_.DeviceID(), 1);
  EXPECT_EQ(platform_.midi->opened_device, 0);
  EXPECT_EQ(card_.HandleForMidiOut(), handle);
  EXPECT_EQ(Opens(), 1);
}

TEST_F(SoundCardTest, AnUnknownNumberGivesTwoAndShowsNothing) {
  const int served = platform_.events->serve_count;
  EXPECT_EQ(Open(5), 2);
  EXPECT_FALSE(card_.Opened());
  EXPECT_EQ(card_.DeviceID(), 5);
  EXPECT_EQ(card_.HandleForMidiOut(), 0);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  EXPECT_EQ(platform_.events->serve_count, served + 1);
}

TEST_F(SoundCardTest, AfterAnUnknownNumberTheFirstDeviceOpens) {
  EXPECT_EQ(Open(5), 2);
  EXPECT_EQ(Open(0), 0);
  EXPECT_TRUE(card_.Opened());
  EXPECT_EQ(platform_.midi->opened_device, 0);
}

TEST_F(SoundCardTest, WithNoWorkingDeviceTheSecondOpenFailsWithABox) {
  platform_.midi->open_results = {MidiOutput::kNotEnabled};
  EXPECT_EQ(Open(5), 2);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  EXPECT_EQ(Open(0), MidiOutput::kNotEnabled);
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.startsWith(QStringLiteral("midiOUT_Open\r\nerror 3 ")));
  EXPECT_FALSE(card_.Opened());
  EXPECT_EQ(card_.HandleForMidiOut(), 0);
  EXPECT_NO_THROW(SendNoteOn(60, 1, 100));
  EXPECT_NO_THROW(card_.MidiReset());
}

TEST_F(SoundCardTest, AFailedOpenLeavesRoomForAnother) {
  platform_.midi->open_results = {MidiOutput::kAllocated};
  Open(0);
  platform_.midi->open_results = {};
  EXPECT_EQ(Open(0), 0);
  EXPECT_TRUE(card_.Opened());
}

TEST_F(SoundCardTest, ClosingKeepsTheHandle) {
  Open(0);
  const std::int32_t handle = card_.HandleForMidiOut();
  card_.CloseCard();
  EXPECT_FALSE(card_.Opened());
  EXPECT_EQ(card_.HandleForMidiOut(), handle);
  EXPECT_EQ(platform_.midi->CountOf(Kind::kClose), 1);
}

TEST_F(SoundCardTest, ClosingAClosedCardStillReachesTheDevice) {
  card_.CloseCard();
  card_.CloseCard();
  EXPECT_EQ(platform_.midi->CountOf(Kind::kClose), 2);
  EXPECT_FALSE(card_.Opened());
}

TEST_F(SoundCardTest, ChangingTheDeviceIsCloseThenOpen) {
  platform_.midi->device_names = {QStringLiteral("A"), QStringLiteral("B")};
  Open(0);
  const std::int32_t first = card_.HandleForMidiOut();
  card_.CloseCard();
  EXPECT_EQ(Open(1), 0);
  EXPECT_EQ(platform_.midi->opened_device, 1);
  EXPECT_NE(card_.HandleForMidiOut(), first);
}

TEST_F(SoundCardTest, ResetIsOneResetOfTheDeviceAndNothingElse) {
  Open(0);
  platform_.midi->sent.clear();
  card_.MidiReset();
  ASSERT_EQ(platform_.midi->sent.size(), 1U);
  EXPECT_EQ(platform_.midi->sent[0].kind, Kind::kReset);
}

TEST_F(SoundCardTest, TheGlobalCardIsAbsentUntilMade) {
  EXPECT_EQ(TheSoundCard(), nullptr);
  TheSoundCard() = std::make_shared<SoundCard>();
  EXPECT_FALSE(TheSoundCard()->Opened());
  TheSoundCard().reset();
}

}  // namespace
}  // namespace zelmar
