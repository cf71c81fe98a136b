// Whether bank selects can be heard, on each kind of device and SoundFont.
#include "midi/variation_banks.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "midi/sound_card.h"
#include "midi/sound_font.h"
#include "midi/system_midi_output.h"
#include "model/globals.h"
#include "model/tune.h"
#include "support/scripted_services.h"
#include "support/small_sound_font.h"
#include "support/sound_file.h"

namespace zelmar {
namespace {

using namespace testing_support;

class VariationBanks : public ::testing::Test {
 protected:
  // The built-in synthesiser opened on a SoundFont of these presets.
  void OpenOn(const std::vector<SmallPreset>& presets) {
    const QString font = folder_.filePath(QStringLiteral("small.sf2"));
    ASSERT_TRUE(WriteSmallSoundFont(font, presets));
    ASSERT_EQ(WhyNotASoundFont(font), QString());
    qputenv("ZELMAR_SOUNDFONT", font.toUtf8());
    const auto output = MakeSystemMidiOutput();
    Platform().midi = output;
    std::int16_t result = -1;
    card_.OpenCard(0, result);
    ASSERT_EQ(result, 0) << output->ErrorText(result).toStdString();
  }
  void TearDown() override { card_.CloseCard(); }

  ScriptedPlatform platform_;
  QTemporaryDir folder_;
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", folder_.filePath(QStringLiteral("sound.wav"))};
  ScopedVariable font_{"ZELMAR_SOUNDFONT", QString()};
  SoundCard card_;
};

TEST_F(VariationBanks, AFontOfTheFirstBankAndDrumsHasNone) {
  OpenOn({{0, 0, 0}, {0, 4, 0}, {128, 0, 0}});
  EXPECT_EQ(BankSelectsNow(), BankSelects::kNoOtherBanks);
}

TEST_F(VariationBanks, AFontOfASecondBankHasThem) {
  OpenOn({{0, 4, 0}, {8, 4, 12}});
  EXPECT_EQ(BankSelectsNow(), BankSelects::kSent);
}

TEST_F(VariationBanks, AClosedSynthesiserSaysNothing) {
  OpenOn({{0, 0, 0}});
  card_.CloseCard();
  EXPECT_EQ(BankSelectsNow(), BankSelects::kSent);
}

TEST_F(VariationBanks, AnotherDeviceMayHaveAny) {
  std::int16_t result = -1;
  card_.OpenCard(0, result);
  EXPECT_EQ(BankSelectsNow(), BankSelects::kSent);
}

TEST_F(VariationBanks, SuppressedMessagesAreHeldBackWhateverTheDevice) {
  Global().SuppressBankMessages = true;
  EXPECT_EQ(BankSelectsNow(), BankSelects::kHeldBack);
  OpenOn({{0, 4, 0}, {8, 4, 12}});
  EXPECT_EQ(BankSelectsNow(), BankSelects::kHeldBack);
}

TEST_F(VariationBanks, ATuneSelectsBanksByAnEventOrByATrack) {
  const auto with_event = [](EventType type, std::uint8_t value) {
    const auto tune = std::make_shared<Tune>();
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetVolume(value);
    tone->SetAbsRef(1);
    tune->Add(tone);
    return tune;
  };
  EXPECT_TRUE(SelectsBanks(*with_event(BANK_SELECT_MSB_0, 8)));
  EXPECT_TRUE(SelectsBanks(*with_event(BANK_SELECT_LSB_32, 1)));
  EXPECT_FALSE(SelectsBanks(*with_event(BANK_SELECT_MSB_0, 0)));
  EXPECT_FALSE(SelectsBanks(*with_event(MUSIC_NOTE, 8)));
  Tune tune;
  EXPECT_FALSE(SelectsBanks(tune));
  tune.Tracks()->Item(1)->SetBankLSB32(2);
  EXPECT_TRUE(SelectsBanks(tune));
  tune.Tracks()->Item(1)->SetBankLSB32(0);
  tune.Tracks()->Item(1)->SetBankMSB0(2);
  EXPECT_TRUE(SelectsBanks(tune));
}

}  // namespace
}  // namespace zelmar
