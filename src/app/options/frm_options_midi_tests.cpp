#include "app/options/frm_options_midi_tests.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <utility>

#include "app/options/demonstrations.h"
#include "app/options/mode_row.h"
#include "midi/mode_commands.h"
#include "midi/play_from_now.h"
#include "midi/running_tunes.h"
#include "midi/variation_banks.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/ignoring_failures.h"
#include "platform/services.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/page_area.h"
#include "platform/widgets/read_outs.h"
#include "platform/widgets/spacing.h"
#include "shell/help_topics.h"
#include "shell/tune_fetch.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_changes.h"

namespace zelmar {

namespace {

constexpr int kColumns = 2;
constexpr int kButtonHeight = 44;
constexpr int kWidestPage = 760;
constexpr int kLinesOfDescription = 3;
constexpr int kLinesOfNotice = 2;

// Several lines of text, whose room is kept so that the buttons above stand still.
QLabel* MakeText(QWidget* parent, const char* name, int lines) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setMinimumHeight(lines * label->fontMetrics().lineSpacing());
  return label;
}

// Why a tune that lives by bank selects sounds as if it had none; empty for any other.
QString NoticeFor(const Tune& tune) {
  if (!SelectsBanks(tune)) return {};
  switch (BankSelectsNow()) {
    case BankSelects::kNoOtherBanks:
      return QStringLiteral(
          "The SoundFont of the built-in synthesiser has no variation banks, so this piece sounds as it "
          "would "
          "without bank selects. MIDI Setup (F7) can choose another SoundFont or device.");
    case BankSelects::kHeldBack:
      return QStringLiteral(
          "Bank controller messages are suppressed, so this piece sounds as it would without bank selects. "
          "The "
          "tick for that is in MIDI Setup (F7).");
    case BankSelects::kSent:
      break;
  }
  return {};
}

void StopEverything() {
  if (const auto tune = TheMainWindow().MyTune()) tune->Stopit();
  // A tune that is no longer the current one may still play.
  StopRunningTunes();
}

}  // namespace

FrmOptionsMidiTests::FrmOptionsMidiTests()
    : ChildWindow(QLatin1String(kName)),
      mode_row_(new ModeRow(this)),
      lblTitle_(new ElidedLabel(this)),
      lblDescription_(MakeText(this, "lblDescription", kLinesOfDescription)),
      lblNotice_(MakeText(this, "lblNotice", kLinesOfNotice)) {
  setWindowTitle(QStringLiteral("Midi test your sound card or module."));
  setWindowIcon(IconOf(QStringLiteral("note"), IconTone::kAccent));
  lblTitle_->setObjectName(QStringLiteral("lblTitle"));
  lblTitle_->setTextFormat(Qt::PlainText);
  lblTitle_->setText(tr("Choose a demonstration. Another one, or closing this window, ends it."));
  lblDescription_->setForegroundRole(QPalette::PlaceholderText);

  auto* grid = new QGridLayout;
  grid->setSpacing(spacing::kSmall);
  int place = 0;
  for (const Demonstration& demonstration : Demonstrations()) {
    auto* button = new QPushButton(QLatin1String(demonstration.caption), this);
    button->setObjectName(QLatin1String(demonstration.button));
    button->setToolTip(QLatin1String(demonstration.tooltip));
    connect(button, &QPushButton::clicked, this, [this, &demonstration] { PlayDemo(demonstration); });
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    grid->addWidget(button, place / kColumns, place % kColumns);
    grid->setRowMinimumHeight(place / kColumns, kButtonHeight);
    ++place;
  }

  auto* help = new QPushButton(QStringLiteral("He&lp"), this);
  help->setObjectName(QStringLiteral("cmdHelp"));
  help->setToolTip(tr("What this window is for (F1)"));
  connect(help, &QPushButton::clicked, this, [this] { ShowHelpContext(HelpContext()); });
  auto* back = new QPushButton(QStringLiteral("&Back"), this);
  back->setObjectName(QStringLiteral("cmdBack"));
  back->setToolTip(tr("Close this window (Esc)"));
  connect(back, &QPushButton::clicked, this, &FrmOptionsMidiTests::Unload);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(spacing::kSmall);
  buttons->addWidget(help);
  buttons->addStretch(1);
  buttons->addWidget(back);

  // In a wide window the buttons stay together in the middle.
  auto* middle = new QVBoxLayout;
  middle->setSpacing(spacing::kLarge);
  middle->addWidget(mode_row_);
  middle->addLayout(grid);
  middle->addWidget(lblTitle_);
  middle->addWidget(lblDescription_);
  middle->addWidget(lblNotice_);
  auto* page = new QWidget;
  page->setMaximumWidth(kWidestPage);
  page->setLayout(middle);
  // The demonstrations move in a window that is too low for them; Help and Back stay.
  auto* sheet = new QWidget;
  auto* view = new PageArea(sheet, this);
  view->setObjectName(QStringLiteral("Page"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kMedium);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(page, 100);
  row->addStretch(1);
  auto* lines = new QVBoxLayout(sheet);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->addStretch(1);
  lines->addLayout(row);
  lines->addStretch(2);
  column->addWidget(view, 1);
  column->addLayout(buttons);
}

void FrmOptionsMidiTests::Activated() {
  mode_row_->ShowMode();
  // Not before the area has given the window its place, which takes it out of sight for a moment: the
  // keyboard would go to another window, and that one to the front.
  if (!std::exchange(begun_, true))
    findChild<QPushButton*>(QLatin1String(Demonstrations().front().button))->setFocus();
}

void FrmOptionsMidiTests::ResetControllers() {
  ResetChannels(ChannelReset::kControllers);
}

void FrmOptionsMidiTests::PlayDemo(const Demonstration& demonstration) {
  next_ = &demonstration;
  if (running_) {
    StopEverything();
    return;
  }
  const QPointer<FrmOptionsMidiTests> self(this);
  running_ = true;
  try {
    while (self && !closed_ && next_ != nullptr) Run(*std::exchange(next_, nullptr));
  } catch (...) {
    if (self) running_ = false;
    throw;
  }
  if (self) running_ = false;
}

void FrmOptionsMidiTests::Run(const Demonstration& demonstration) {
  const QPointer<FrmOptionsMidiTests> self(this);
  if (!MayReplaceTune() || !self || closed_) return;
  StopEverything();
  ResetControllers();
  std::shared_ptr<Tune> tune;
  if (demonstration.make != nullptr) {
    tune = demonstration.make();
    TheMainWindow().SetMyTune(tune);
  } else {
    tune = Load(QLatin1String(demonstration.code_name));
    if (tune) Global().TuneLoadedFlag = true;
  }
  // The load has served events: the window, or the program, may be on its way out.
  if (!tune || !self || closed_ || next_ != nullptr || Global().MainFormLoaded) return;
  ShowDetails(*tune);
  ShowTuneInOtherWindows();
  if (!self || closed_) return;
  playing_ = tune;
  PlayFromNow(*tune);
  if (!self) return;
  playing_.reset();
  mode_row_->ShowMode();
}

std::shared_ptr<Tune> FrmOptionsMidiTests::Load(const QString& code_name) {
  QString name = code_name;
  switch (FetchTune(name)) {
    case Fetched::kLoaded:
      return CurrentTune();
    case Fetched::kNotInCatalogue:
      ShowMessage(MessageIcon::kNone, QStringLiteral("Sorry, but this tune was not found in the database."),
                  code_name + QStringLiteral(" not in Zelmar database."));
      break;
    case Fetched::kFailed:
      break;
  }
  return nullptr;
}

void FrmOptionsMidiTests::ShowDetails(Tune& tune) {
  lblTitle_->setText(tune.Title());
  lblDescription_->setText(tune.Description());
  lblNotice_->setText(NoticeFor(tune));
}

void FrmOptionsMidiTests::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    Unload();
  else
    ChildWindow::keyPressEvent(event);
}

void FrmOptionsMidiTests::closeEvent(QCloseEvent* event) {
  ChildWindow::closeEvent(event);
  if (!event->isAccepted()) return;
  closed_ = true;
  if (const auto tune = playing_.lock(); tune && tune->Playing())
    IgnoringFailures([&tune] { tune->Stopit(); });
}

}  // namespace zelmar
