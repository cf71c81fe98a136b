// Where the music goes: the output device, its mode, and the SoundFont of the built-in synthesiser.
#pragma once

#include "shell/modal_dialog.h"

class QCheckBox;
class QComboBox;

namespace zelmar {

class ModeRow;

class FrmOptionsMidiSetup : public ModalDialog {
  Q_OBJECT

 public:
  static constexpr char kName[] = "frmOptionsMidiSetup";

  explicit FrmOptionsMidiSetup(QWidget* parent = nullptr);

  // Fills ComboMidiOut with the devices that are there now.
  void ListOutputDevices();

 public Q_SLOTS:
  // Back and Escape: the device that is open is the chosen one again. What OK has kept stays kept.
  void reject() override;

 private:
  void MakeControls();
  void MakeSoundFontControls();
  void ArrangeControls();
  void ShowDevice();
  void ComboMidiOut_Click(int index);
  void TakeDevice(int index);
  void cmdOK_Click();
  void KeepTickAndSoundFont();
  bool OpenTakenDevice();
  void cmdChooseSoundFont_Click();
  void WishSoundFont(const QString& path);

  QString name_before_;
  QString font_wish_;  // empty for the standard one
  std::int16_t number_before_;
  bool suppress_before_;
  bool reopens_ = false;  // a device was open when this window closed it

  QLabel* lblMidiOut_ = nullptr;
  QComboBox* ComboMidiOut_ = nullptr;
  QLineEdit* txtOutputDeviceID_ = nullptr;
  QLineEdit* txtOutputDeviceName_ = nullptr;
  QCheckBox* chkSupressBank_ = nullptr;
  ModeRow* mode_row_ = nullptr;
  QLineEdit* txtSoundFont_ = nullptr;
  QPushButton* cmdChooseSoundFont_ = nullptr;
  QPushButton* cmdStandardSoundFont_ = nullptr;
  QPushButton* cmdOK_ = nullptr;
};

}  // namespace zelmar
