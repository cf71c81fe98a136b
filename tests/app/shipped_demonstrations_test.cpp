// The window of the MIDI tests over the library that ships: every button, and what is said of bank selects.
#include "app/option_windows_fixture.h"
#include "app/options/demonstrations.h"
#include "app/options/frm_options_midi_tests.h"
#include "midi/system_midi_output.h"
#include "support/small_sound_font.h"
#include "support/sound_file.h"
#include "support/template_database.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr std::size_t kResetMessages = 16U * 9U;

class ShippedDemonstrations : public OptionWindowTest {
 protected:
  void SetUp() override {
    ASSERT_FALSE(library_.Path().isEmpty()) << "the build made no template database";
    Start();
    Item("mnuOptionsMidiTests").trigger();
    QCoreApplication::processEvents();
    window_ = qobject_cast<FrmOptionsMidiTests*>(FindLoadedForm(QStringLiteral("frmOptionsMidiTests")));
    ASSERT_TRUE(window_);
  }

  // The built-in synthesiser becomes the device, sounding into a file, with the font or the installed one.
  void OpenSynthesiser(const QString& font = {}) {
    qputenv("ZELMAR_SOUNDFONT", font.toUtf8());
    Platform().midi = MakeSystemMidiOutput();
    TheSoundCard()->CloseCard();
    std::int16_t result = -1;
    TheSoundCard()->OpenCard(0, result);
    ASSERT_EQ(result, 0);
  }
  QString Notice() const { return TextOf(*window_, "lblNotice"); }
  // The buttons of the library whose press leaves a notice, in their order.
  QStringList ButtonsWithANotice() {
    QStringList buttons;
    for (const Demonstration& demonstration : Demonstrations()) {
      Click(*window_, demonstration.button);
      if (!Notice().isEmpty()) buttons.append(QLatin1String(demonstration.button));
    }
    return buttons;
  }

  TemplateDatabase library_{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", In(QStringLiteral("sound.wav"))};
  ScopedVariable font_{"ZELMAR_SOUNDFONT", QString()};
  QPointer<FrmOptionsMidiTests> window_;
};

const QStringList kBankButtons = {QStringLiteral("cmdSoundEffects"), QStringLiteral("cmdBankSelect")};

TEST_F(ShippedDemonstrations, EveryButtonResetsTheControllersAndPlaysItsTune) {
  for (const Demonstration& demonstration : Demonstrations()) {
    SCOPED_TRACE(demonstration.button);
    platform_.midi->sent.clear();
    Click(*window_, demonstration.button);
    const auto words = platform_.midi->ShortMessages();
    ASSERT_GT(words.size(), kResetMessages);
    EXPECT_EQ(words[0], 0xB0U + 121U * 256U);
    EXPECT_EQ(words[kResetMessages - 1], 0xBFU + 65U * 256U);
    for (std::size_t i = 0; i < kResetMessages; ++i) EXPECT_EQ(words[i] & 0xF0U, 0xB0U);
    EXPECT_FALSE(PitchesOn().empty());
    EXPECT_TRUE(Sounding().empty());
    const auto tune = main_->MyTune();
    if (demonstration.make == nullptr) {
      EXPECT_EQ(tune->FileName(), QLatin1String(demonstration.code_name));
      EXPECT_TRUE(tune->Title().startsWith(QStringLiteral("Demonstration: ")));
    }
    EXPECT_EQ(TextOf(*window_, "lblTitle"), tune->Title());
    EXPECT_EQ(TextOf(*window_, "lblDescription"), tune->Description());
  }
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(ShippedDemonstrations, OnlyThoseOfBanksChangeTheMode) {
  for (const Demonstration& demonstration : Demonstrations()) {
    Click(*window_, "cmdXGReset");
    Click(*window_, demonstration.button);
    const bool selects_banks = kBankButtons.contains(QLatin1String(demonstration.button));
    EXPECT_EQ(FieldText(*window_, "txtMidiMode"), selects_banks ? QStringLiteral("GS") : QStringLiteral("XG"))
        << demonstration.button;
  }
}

TEST_F(ShippedDemonstrations, TheSynthesiserWithoutOtherBanksSaysSoWhereBanksAreSelected) {
  const QString font = In(QStringLiteral("plain.sf2"));
  ASSERT_TRUE(WriteSmallSoundFont(font, {{0, 0, 0}, {128, 0, 0}}));
  OpenSynthesiser(font);
  EXPECT_EQ(ButtonsWithANotice(), kBankButtons);
  Click(*window_, "cmdBankSelect");
  EXPECT_EQ(Notice(),
            QStringLiteral("The SoundFont of the built-in synthesiser has no variation banks, so this piece "
                           "sounds as it would without bank selects. MIDI Setup (F7) can choose another "
                           "SoundFont or device."));
  EXPECT_TRUE(Find<QLabel>(*window_, "lblNotice").isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(ShippedDemonstrations, TheSynthesiserWithOtherBanksSaysNothing) {
  const QString font = In(QStringLiteral("rich.sf2"));
  ASSERT_TRUE(WriteSmallSoundFont(font, {{0, 4, 0}, {8, 4, 12}}));
  OpenSynthesiser(font);
  EXPECT_EQ(ButtonsWithANotice(), QStringList());
}

TEST_F(ShippedDemonstrations, AnotherDeviceSaysNothing) {
  EXPECT_EQ(ButtonsWithANotice(), QStringList());
}

TEST_F(ShippedDemonstrations, SuppressedBankMessagesAreSaidWhereBanksAreSelected) {
  Global().SuppressBankMessages = true;
  EXPECT_EQ(ButtonsWithANotice(), kBankButtons);
  Click(*window_, "cmdSoundEffects");
  EXPECT_EQ(Notice(), QStringLiteral("Bank controller messages are suppressed, so this piece sounds as it "
                                     "would without bank selects. The tick for that is in MIDI Setup (F7)."));
}

TEST_F(ShippedDemonstrations, TheButtonsStandStillWhateverIsSaid) {
  Global().SuppressBankMessages = true;
  const auto place = [this] {
    QCoreApplication::processEvents();
    return Find<QPushButton>(*window_, "cmdExpression").mapTo(window_.data(), QPoint());
  };
  const QPoint before = place();
  Click(*window_, "cmdBankSelect");
  EXPECT_EQ(place(), before);
  Click(*window_, "cmdPianoNote");
  EXPECT_EQ(place(), before);
}

}  // namespace
}  // namespace zelmar
