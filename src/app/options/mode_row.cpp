#include "app/options/mode_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "midi/mode_commands.h"
#include "model/globals.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kModeWidth = 72;

}  // namespace

ModeRow::ModeRow(QWidget* parent) : QWidget(parent), txtMidiMode_(new QLineEdit(this)) {
  txtMidiMode_->setObjectName(QStringLiteral("txtMidiMode"));
  txtMidiMode_->setReadOnly(true);
  txtMidiMode_->setFocusPolicy(Qt::NoFocus);
  txtMidiMode_->setFixedWidth(kModeWidth);
  txtMidiMode_->setToolTip(tr("The mode last put on the synthesiser"));
  auto* mode = new QLabel(QStringLiteral("Mode"), this);
  mode->setObjectName(QStringLiteral("lblMode"));

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing::kSmall);
  row->addWidget(mode);
  row->addWidget(txtMidiMode_);
  row->addSpacing(spacing::kSmall);
  AddButton("cmdXGReset", "&XG (Yamaha)", tr("Put the synthesiser into XG mode"), &XGModeCommand);
  AddButton("cmdGMTurnOn", "&GM /GM2 General MIDI", tr("Put the synthesiser into General MIDI mode"),
            &GMModeCommand);
  AddButton("cmdGSReset", "G&S (Roland)", tr("Put the synthesiser into GS mode"), &GSModeCommand);
  row->addStretch(1);
  ShowMode();
}

void ModeRow::AddButton(const char* name, const char* caption, const QString& tooltip, void (*command)()) {
  auto* button = new QPushButton(QLatin1String(caption), this);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tooltip);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, command] {
    command();
    ShowMode();
  });
  layout()->addWidget(button);
}

void ModeRow::ShowMode() {
  txtMidiMode_->setText(Global().MidiMode);
}

}  // namespace zelmar
