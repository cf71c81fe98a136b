#include "app/frm_open.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include "midi/mode_commands.h"
#include "midi/running_tunes.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "platform/services.h"
#include "platform/widgets/screen_place.h"
#include "platform/widgets/spacing.h"
#include "shell/button_keys.h"
#include "shell/child_window.h"
#include "shell/command_table.h"
#include "shell/help_topics.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"
#include "shell/marquee.h"
#include "shell/tune_combo.h"
#include "shell/tune_fetch.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_changes.h"
#include "store/connect_database.h"
#include "store/connection.h"
#include "store/recordset.h"

namespace zelmar {

FrmOpen::FrmOpen(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmOpen"));
  setWindowTitle(tr("Open Tune"));
  setModal(true);
  AddLoadedForm(this);
  MakeControls();
  ResizeWithinScreen(*this, {640, 560});
}

void FrmOpen::ShowModal() {
  MainFrame* const frame = TheMainFrame();
  FrmOpen dialog(frame != nullptr ? frame->Window() : nullptr);
  if (dialog.Load()) dialog.exec();
}

void FrmOpen::MakeControls() {
  cboMelodies_ = new TuneCombo(this);
  cboMelodies_->setObjectName(QStringLiteral("cboMelodies"));
  connect(cboMelodies_, &TuneCombo::Chosen, this, &FrmOpen::GetTune);
  connect(cboMelodies_, &TuneCombo::Narrowed, this, &FrmOpen::SayWhatToDo);

  lblPleaseWait_ = new QLabel(this);
  lblPleaseWait_->setObjectName(QStringLiteral("lblPleaseWait"));
  MyProgressBar_ = new QProgressBar(this);
  MyProgressBar_->setObjectName(QStringLiteral("MyProgressBar"));
  MyProgressBar_->setAccessibleName(tr("Progress of the load"));
  MyProgressBar_->setRange(0, 100);
  MyProgressBar_->setTextVisible(false);
  lblPercent_ = new QLabel(this);
  lblPercent_->setObjectName(QStringLiteral("lblPercent"));
  lblPercent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lblPercent_->setMinimumWidth(lblPercent_->fontMetrics().horizontalAdvance(QStringLiteral("100%")));
  txtWait_ = new MarqueeLabel(this);
  txtWait_->setObjectName(QStringLiteral("txtWait"));
  Timer1_ = new QTimer(this);
  Timer1_->setObjectName(QStringLiteral("Timer1"));
  Timer1_->setInterval(Marquee::kIntervalMilliseconds);
  connect(Timer1_, &QTimer::timeout, txtWait_, &MarqueeLabel::Step);
  // The place of what only a load shows is kept, so that nothing jumps.
  for (QWidget* widget : std::initializer_list<QWidget*>{MyProgressBar_, lblPercent_, txtWait_}) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
  }

  const auto button = [this](const char* name, const QString& caption) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    return made;
  };
  cmdOK_ = button("cmdOK", tr("&OK"));
  cmdOK_->setDefault(true);
  cmdOK_->setToolTip(tr("Load the selected tune"));
  cmdCancel_ = button("cmdCancel", tr("&Cancel"));
  cmdCancel_->setToolTip(tr("Close without loading (Esc)"));
  cmdHelp_ = button("cmdHelp", tr("&Help"));
  cmdHelp_->setToolTip(tr("Help about opening tunes (F1)"));
  connect(cmdOK_, &QPushButton::clicked, this, &FrmOpen::GetTune);
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmOpen::reject);
  connect(cmdHelp_, &QPushButton::clicked, this, [this] { ShowHelpContext(HelpContextOf(objectName())); });
  auto* help_key = new QShortcut(QKeySequence(Qt::Key_F1), this);
  connect(help_key, &QShortcut::activated, cmdHelp_, &QPushButton::click);

  auto* progress = new QHBoxLayout;
  progress->setSpacing(spacing::kMedium);
  progress->addWidget(MyProgressBar_, 1);
  progress->addWidget(lblPercent_);
  progress->addWidget(txtWait_);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(spacing::kSmall);
  buttons->addWidget(cmdHelp_);
  buttons->addStretch(1);
  buttons->addWidget(cmdCancel_);
  buttons->addWidget(cmdOK_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kMedium);
  column->addWidget(cboMelodies_, 1);
  column->addWidget(lblPleaseWait_);
  column->addLayout(progress);
  column->addLayout(buttons);
  SayWhatToDo();
  cboMelodies_->setFocus();
}

void FrmOpen::SayWhatToDo() {
  lblPleaseWait_->setText(cboMelodies_->NothingFits() ? TuneCombo::WordsForNothing()
                                                      : tr("Choose a tune to load"));
}

bool FrmOpen::Load() {
  ConnectDatabase(connection_);
  if (Global().DatabaseFailed) return false;
  const auto rows = Recordset::OpenStatement(
      connection_, QStringLiteral("SELECT IIf([composer]='Various',[title],[title] & ' by ' & [composer]) AS "
                                  "MyTitle, CodeName "
                                  " FROM tblMelodies ORDER BY Title"));
  if (rows->Eof()) {
    ShowMessage(MessageIcon::kCritical,
                QStringLiteral("There are no tunes yet in this database. Create a tune using MENU -> EDIT -> "
                               "STAFF NOTATION VIEW, or import one from a MIDI file using MENU -> FILE -> "
                               "IMPORT MIDI FILE."),
                QStringLiteral("Unable to load anything."));
    return false;
  }
  // The statement says "by" of a composer that is a blank, too.
  static const QRegularExpression by_nobody(QStringLiteral(" by\\s+$"));
  const int title = rows->Field(QStringLiteral("MyTitle"));
  const int code_name = rows->Field(QStringLiteral("CodeName"));
  std::vector<TuneTitle> titles;
  for (; !rows->Eof(); rows->MoveNext())
    titles.push_back({rows->TextOrBlank(title).remove(by_nobody), rows->TextOrBlank(code_name)});
  cboMelodies_->SetTitles(std::move(titles));
  const QString& last = Global().RecentCodeNames[0];
  if (!last.isEmpty()) cboMelodies_->Select(last);
  return true;
}

void FrmOpen::reject() {
  if (!loading_) QDialog::reject();
}

void FrmOpen::keyPressEvent(QKeyEvent* event) {
  if (!PressesButton(*this, *event)) QDialog::keyPressEvent(event);
}

void FrmOpen::SetLoading(bool loading) {
  loading_ = loading;
  for (QWidget* widget : std::initializer_list<QWidget*>{cboMelodies_, cmdOK_, cmdCancel_, cmdHelp_})
    widget->setEnabled(!loading);
  for (QWidget* widget : std::initializer_list<QWidget*>{MyProgressBar_, lblPercent_, txtWait_})
    widget->setVisible(loading);
  if (loading) {
    MyProgressBar_->setValue(0);
    lblPercent_->clear();
    txtWait_->Restart();
    Timer1_->start();
    return;
  }
  Timer1_->stop();
  SayWhatToDo();
  cboMelodies_->setFocus();
}

void FrmOpen::ThisLoader_PercentCompleted(std::int16_t percent) {
  MyProgressBar_->setValue(percent);
  lblPercent_->setText(QString::number(percent) + QStringLiteral("%"));
  ServeEvents();
}

bool FrmOpen::LoadInto(QString& code_name) {
  const QPointer<FrmOpen> self(this);
  const Fetched outcome = FetchTune(code_name, [&self](std::int16_t percent) {
    if (self) self->ThisLoader_PercentCompleted(percent);
  });
  ServeEvents();
  return outcome == Fetched::kLoaded;
}

void FrmOpen::GetTune() {
  // The second half of a double click comes when the first has done it all.
  if (loading_ || result() == Accepted) return;
  QString code_name = cboMelodies_->SelectedCodeName();
  if (code_name.isEmpty()) {
    ShowMessage(MessageIcon::kInformation, QStringLiteral("Please select a melody from the drop-down list."));
    return;
  }
  // Nothing closes the dialogue behind the question.
  loading_ = true;
  const bool may_load = MayReplaceTune();
  loading_ = false;
  if (!may_load) return;
  SetLoading(true);
  lblPleaseWait_->setText(QStringLiteral("Please wait while tune is being loaded"));
  ServeEvents();
  Global().TuneLoadedFlag = false;
  // No window will have a button for it any more.
  StopRunningTunes();
  bool loaded = false;
  try {
    loaded = LoadInto(code_name);
  } catch (...) {
    Global().TuneLoadedFlag = false;
    SetLoading(false);
    throw;
  }
  if (!loaded) {
    // The loader may have got as far as the notes before it failed.
    Global().TuneLoadedFlag = false;
    SetLoading(false);
    ShowMessage(MessageIcon::kNone,
                QStringLiteral("Sorry, but this tune was not found in the database. Please select a tune "
                               "from the list."),
                code_name + QStringLiteral(" not in Zelmar database."));
    return;
  }
  lblPleaseWait_->setText(QStringLiteral("Now setting up the Playbar to play this tune"));
  ServeEvents();
  HandTuneToFrontPage();
  ResetChannels(ChannelReset::kAfterLoad);
  ServeEvents();
  SetLoading(false);
  connection_.reset();
  accept();
}

void FrmOpen::HandTuneToFrontPage() {
  Global().TuneLoadedFlag = true;
  auto* const front = qobject_cast<ChildWindow*>(FindLoadedForm(QStringLiteral("frmFront")));
  if (front != nullptr) {
    front->MyPlayBar()->SetTune(TheMainWindow().MyTune());
    front->ShowTitleOfTune();
  }
  ShowTuneInOtherWindows();
}

}  // namespace zelmar
