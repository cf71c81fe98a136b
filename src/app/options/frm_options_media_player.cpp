#include "app/options/frm_options_media_player.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/options/save_settings.h"
#include "model/globals.h"
#include "platform/widgets/spacing.h"
#include "shell/command_table.h"

namespace zelmar {

FrmOptionsMediaPlayer::FrmOptionsMediaPlayer(QWidget* parent)
    : ModalDialog(QLatin1String(kName), QStringLiteral("Windows Media player support"), parent),
      chkMediaPlayerInstalled_(
          new QCheckBox(QStringLiteral("&Windows media Player 9.0 (or above) and Microsoft DirectX 0.0 "
                                       "installed?"),
                        this)) {
  chkMediaPlayerInstalled_->setObjectName(QStringLiteral("chkMediaPlayerInstalled"));
  chkMediaPlayerInstalled_->setChecked(Global().MediaPlayerInstalled);
  auto* hint = new QLabel(
      IsMissing(QStringLiteral("frmInstruments"))
          ? tr("The windows about instruments are not part of this version. The choice is kept for them.")
          : tr("With this set, the instrument windows show movie clips beside their texts."),
      this);
  hint->setForegroundRole(QPalette::PlaceholderText);
  hint->setWordWrap(true);
  auto* save = MakeButton("cmdSave", QStringLiteral("&OK (Save)"), tr("Keep this for the next start too"));
  connect(save, &QPushButton::clicked, this, &FrmOptionsMediaPlayer::cmdSave_Click);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kMedium);
  column->addWidget(chkMediaPlayerInstalled_);
  column->addWidget(hint);
  column->addStretch(1);
  column->addSpacing(spacing::kMedium);
  column->addLayout(MakeButtonRow(save));
}

void FrmOptionsMediaPlayer::cmdSave_Click() {
  Global().MediaPlayerInstalled = chkMediaPlayerInstalled_->isChecked();
  SaveSettings(PathFileWriter::kMediaPlayer);
  accept();
}

}  // namespace zelmar
