#include "app/options/frm_options_midi_setup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/options/mode_row.h"
#include "app/options/save_settings.h"
#include "midi/bank_messages.h"
#include "midi/quil_sounds_module.h"
#include "midi/running_tunes.h"
#include "midi/sound_card.h"
#include "midi/sound_font.h"
#include "model/globals.h"
#include "platform/numbers.h"
#include "platform/services.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kWidth = 620;

void TellWhatIsNotSaved(bool font_saved, bool suppression_saved) {
  QStringList texts;
  if (!font_saved) texts.append(QStringLiteral("The choice of the SoundFont could not be saved."));
  if (!suppression_saved) texts.append(QStringLiteral("The tick for bank messages could not be saved."));
  if (texts.isEmpty()) return;
  texts.append(texts.size() == 1 ? QStringLiteral("It holds until Zelmar ends.")
                                 : QStringLiteral("Both hold until Zelmar ends."));
  ShowMessage(MessageIcon::kExclamation, texts.join(u' '), QStringLiteral("Settings not saved"));
}

}  // namespace

FrmOptionsMidiSetup::FrmOptionsMidiSetup(QWidget* parent)
    : ModalDialog(QLatin1String(kName), QStringLiteral("MIDI Setup. Select MIDI output device."), parent),
      name_before_(Global().MidiDeviceName),
      font_wish_(ChosenSoundFont()),
      number_before_(Global().MidiDeviceNumber),
      suppress_before_(Global().SuppressBankMessages) {
  MakeControls();
  MakeSoundFontControls();
  ArrangeControls();
  WishSoundFont(font_wish_);
  ListOutputDevices();
  ShowDevice();
  ComboMidiOut_->setFocus();
  resize(kWidth, sizeHint().height());
}

void FrmOptionsMidiSetup::MakeControls() {
  ComboMidiOut_ = new QComboBox(this);
  ComboMidiOut_->setObjectName(QStringLiteral("ComboMidiOut"));
  ComboMidiOut_->setToolTip(tr("The device that Zelmar plays on"));
  ComboMidiOut_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(ComboMidiOut_, &QComboBox::activated, this, &FrmOptionsMidiSetup::ComboMidiOut_Click);
  lblMidiOut_ = MakeLabel(QStringLiteral("MIDI Out &Device"), ComboMidiOut_);
  lblMidiOut_->setObjectName(QStringLiteral("lblMidiOut"));
  txtOutputDeviceID_ = MakeField("txtOutputDeviceID", Access::kShown);
  txtOutputDeviceName_ = MakeField("txtOutputDeviceName", Access::kShown);
  chkSupressBank_ = new QCheckBox(QStringLiteral("Supress Bank &Controller Messages"), this);
  chkSupressBank_->setObjectName(QStringLiteral("chkSupressBank"));
  chkSupressBank_->setToolTip(tr("For devices that choose wrong sounds when a bank is selected"));
  chkSupressBank_->setChecked(Global().SuppressBankMessages);
  mode_row_ = new ModeRow(this);
  cmdOK_ = MakeButton("cmdOK", QStringLiteral("&OK, Save these settings"),
                      tr("Open the device and keep the choice for the next start"));
  connect(cmdOK_, &QPushButton::clicked, this, &FrmOptionsMidiSetup::cmdOK_Click);
}

void FrmOptionsMidiSetup::MakeSoundFontControls() {
  txtSoundFont_ = MakeField("txtSoundFont", Access::kShown);
  cmdChooseSoundFont_ = MakeButton("cmdChooseSoundFont", tr("Choose &File..."),
                                   tr("Take the instruments of another SoundFont"));
  cmdStandardSoundFont_ =
      MakeButton("cmdStandardSoundFont", tr("S&tandard"), tr("Return to the SoundFont that is installed"));
  connect(cmdChooseSoundFont_, &QPushButton::clicked, this, &FrmOptionsMidiSetup::cmdChooseSoundFont_Click);
  connect(cmdStandardSoundFont_, &QPushButton::clicked, this, [this] { WishSoundFont(QString()); });
}

void FrmOptionsMidiSetup::ArrangeControls() {
  auto* form = MakeForm();
  AddRow(form, lblMidiOut_, ComboMidiOut_);
  AddRow(form, MakeLabel(tr("Device number"), txtOutputDeviceID_), txtOutputDeviceID_);
  AddRow(form, MakeLabel(tr("Device name"), txtOutputDeviceName_), txtOutputDeviceName_);
  AddRow(form, nullptr, chkSupressBank_);
  auto* font_row = new QHBoxLayout;
  font_row->setSpacing(spacing::kSmall);
  font_row->addWidget(txtSoundFont_, 1);
  font_row->addWidget(cmdChooseSoundFont_);
  font_row->addWidget(cmdStandardSoundFont_);
  AddRow(form, MakeLabel(tr("Synthesiser's SoundFont"), txtSoundFont_), font_row);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kLarge);
  column->addLayout(form);
  column->addWidget(mode_row_);
  column->addStretch(1);
  column->addLayout(MakeButtonRow(cmdOK_));
}

void FrmOptionsMidiSetup::ListOutputDevices() {
  ComboMidiOut_->clear();
  const auto& output = Platform().midi;
  const int count = output ? output->DeviceCount() : 0;
  ComboMidiOut_->setEnabled(count > 0);
  if (count == 0) {
    lblMidiOut_->setText(QStringLiteral("No MIDI output devices"));
    return;
  }
  for (int device = 0; device < count; ++device) ComboMidiOut_->addItem(output->DeviceName(device));
  const int stored = Global().MidiDeviceNumber;
  ComboMidiOut_->setCurrentIndex(stored >= 0 && stored < count ? stored : 0);
}

// The device that the list shows; without a list, the stored one.
void FrmOptionsMidiSetup::ShowDevice() {
  const int index = ComboMidiOut_->currentIndex();
  txtOutputDeviceID_->setText(QString::number(index < 0 ? Global().MidiDeviceNumber : index));
  txtOutputDeviceName_->setText(index < 0 ? Global().MidiDeviceName : ComboMidiOut_->currentText());
}

void FrmOptionsMidiSetup::ComboMidiOut_Click(int index) {
  TakeDevice(index);
  ShowDevice();
}

void FrmOptionsMidiSetup::TakeDevice(int index) {
  Global().MidiDeviceName = ComboMidiOut_->itemText(index);
  Global().MidiDeviceNumber = Narrow<std::int16_t>(index);
}

void FrmOptionsMidiSetup::cmdChooseSoundFont_Click() {
  const QString path =
      ChooseFile(FileChoice::kOpen, tr("Choose a SoundFont"),
                 QStringLiteral("SoundFonts (*.SF2 *.SF3)|*.SF2;*.SF3"), txtSoundFont_->text());
  if (path.isEmpty()) return;
  const QString trouble = WhyNotASoundFont(path);
  if (trouble.isEmpty()) {
    WishSoundFont(path);
    return;
  }
  ShowMessage(MessageIcon::kExclamation,
              trouble + QStringLiteral(" The instruments stay those of \"%1\".").arg(txtSoundFont_->text()),
              QStringLiteral("SoundFont not changed"));
}

// The choice counts from OK on.
void FrmOptionsMidiSetup::WishSoundFont(const QString& path) {
  const QString shown = path == ChosenSoundFont() ? SoundFontInUse()
                        : path.isEmpty()          ? InstalledSoundFont()
                                                  : path;
  font_wish_ = path;
  txtSoundFont_->setText(shown);
  txtSoundFont_->setToolTip(shown);
  txtSoundFont_->setPlaceholderText(tr("None is installed"));
  cmdStandardSoundFont_->setEnabled(!path.isEmpty());
}

bool FrmOptionsMidiSetup::OpenTakenDevice() {
  const auto card = TheSoundCard();
  if (!card) return true;
  reopens_ = reopens_ || card->Opened();
  card->CloseCard();
  std::int16_t result = MidiOutput::kUnspecifiedError;
  card->OpenCard(Global().MidiDeviceNumber, result);
  // Of a number that no device has, opening says nothing by itself: the device was there a moment ago.
  if (result == MidiOutput::kBadDeviceNumber) ShowMMErr(QStringLiteral("midiOUT_Open"), result);
  return result == MidiOutput::kSuccess;
}

// These two need no device, and hold whether one opens or not.
void FrmOptionsMidiSetup::KeepTickAndSoundFont() {
  Global().SuppressBankMessages = suppress_before_ = chkSupressBank_->isChecked();
  const bool font_saved = font_wish_ == ChosenSoundFont() || SetChosenSoundFont(font_wish_);
  TellWhatIsNotSaved(font_saved, KeepBankSuppression(Global().SuppressBankMessages));
}

void FrmOptionsMidiSetup::cmdOK_Click() {
  KeepTickAndSoundFont();
  const int index = ComboMidiOut_->currentIndex();
  if (index < 0) return;
  ComboMidiOut_Click(index);
  // A tune sets up the device where it starts; on another one it has to start anew.
  StopRunningTunes();
  if (!OpenTakenDevice()) return;
  SaveSettings(PathFileWriter::kMidiSetup);
  accept();
}

void FrmOptionsMidiSetup::reject() {
  Global().MidiDeviceName = name_before_;
  Global().MidiDeviceNumber = number_before_;
  Global().SuppressBankMessages = suppress_before_;
  QDialog::reject();
  // After a device that refused, the old one sounds again.
  const auto card = TheSoundCard();
  if (!reopens_ || !card || card->Opened()) return;
  std::int16_t result = 0;
  card->OpenCard(number_before_, result);
}

}  // namespace zelmar
