#include "app/frm_front.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "app/card_button.h"
#include "app/logo.h"
#include "app/product.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "model/tune_statements.h"
#include "model/tune_text.h"
#include "platform/mnemonics.h"
#include "platform/paths.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/page_area.h"
#include "platform/widgets/read_outs.h"
#include "platform/widgets/spacing.h"
#include "platform/widgets/widget_services.h"
#include "shell/command_table.h"
#include "shell/help.h"
#include "shell/main_frame.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

constexpr int kLogoHeight = 60;
constexpr int kWidestLogo = 480;
constexpr int kOpenHeight = 84;

// How many stand side by side, in a page of the usual width and in a narrow one.
struct Columns {
  int doors;
  int recent_tunes;
};
constexpr Columns kColumns = {4, 3};
constexpr Columns kFewColumns = {2, 2};
constexpr int kNarrowPage = 700;

// The commands that have a card, in the order of the cards.
std::vector<const CommandRow*> CommandsWithCard() {
  std::vector<const CommandRow*> rows = Commands();
  std::erase_if(rows, [](const CommandRow* row) { return row->card.place == 0; });
  std::stable_sort(rows.begin(), rows.end(),
                   [](const CommandRow* a, const CommandRow* b) { return a->card.place < b->card.place; });
  return rows;
}

QPushButton* SmallButton(const char* name, const char* icon, const QString& caption, const QString& tooltip,
                         QWidget* parent) {
  auto* button = new QPushButton(IconOf(QLatin1String(icon)), caption, parent);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tooltip);
  button->setIconSize(QSize(18, 18));
  return button;
}

}  // namespace

FrmFront::FrmFront() : TuneWindow(QStringLiteral("frmFront")) {
  setWindowTitle(QStringLiteral("Front Screen."));
  Global().HelpPath = ApplicationDirectory() + QStringLiteral("\\Help");

  // On a screen that is smaller than any that is expected the page moves within its place.
  auto* words = new QWidget;
  auto* view = new PageArea(words, this);
  view->setObjectName(QStringLiteral("Page"));
  auto* page = new QVBoxLayout(words);
  page->setContentsMargins(spacing::kWide, spacing::kLarge, spacing::kWide, spacing::kLarge);
  page->setSpacing(spacing::kMedium);
  page->addLayout(Header());
  page->addLayout(Opening());
  page->addLayout(Doors(), 1);
  page->addStretch();
  SetPage(view);
  PlaceInColumns();
  SetTabOrder();
  ShowRecentTunes();
  ShowWhatIsThere();
}

QLayout* FrmFront::Header() {
  auto* logo = new QLabel(this);
  logo->setObjectName(QStringLiteral("imgLogo"));
  const QPixmap picture = LogoWithin(QSize(kWidestLogo, kLogoHeight), devicePixelRatioF());
  logo->setPixmap(picture);
  logo->setVisible(!picture.isNull());
  auto* name = new QLabel(QString(kApplicationTitle), this);
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 2.4);
  large.setWeight(QFont::Bold);
  name->setFont(large);
  name->setVisible(picture.isNull());  // the logo is the name, written large
  lblDatabaseTitle_ = new ElidedLabel(this);
  lblDatabaseTitle_->setObjectName(QStringLiteral("lblDatabaseTitle"));
  QFont medium = lblDatabaseTitle_->font();
  medium.setPointSizeF(medium.pointSizeF() * 1.3);
  lblDatabaseTitle_->setFont(medium);
  lblVersion_ = new QLabel(this);
  lblVersion_->setObjectName(QStringLiteral("lblVersion"));
  for (QLabel* label : {lblDatabaseTitle_, lblVersion_}) label->setForegroundRole(QPalette::PlaceholderText);

  auto* shortcuts = SmallButton("cmdKeyboardShortcuts", "keyboard", tr("&Keyboard Shortcuts"),
                                tr("Get a list of shortcut keys (Function keys and CTRL keys)"), this);
  connect(shortcuts, &QPushButton::clicked, this, [] {
    ShowHelpPage(ApplicationDirectory() + QStringLiteral("\\Help\\ZelmarHelp\\KeyboardShortcuts.htm"),
                 HelpPlace::kModalWindow);
  });
  auto* help =
      SmallButton("cmdHelp", "help", tr("He&lp"),
                  tr("Hit this button, or press F1 for context-sensitive help about any screen"), this);
  connect(help, &QPushButton::clicked, this, [] { ShowHelpTopic(QStringLiteral("Introduction.htm")); });
  auto* statements = new QPushButton(tr("Write Statements"), this);
  statements->setObjectName(QStringLiteral("cmdGenCode"));
  statements->hide();
  connect(statements, &QPushButton::clicked, this, [] {
    if (const auto tune = TheMainWindow().MyTune()) WriteTuneStatements(*tune, tune->FileName());
  });

  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->addWidget(name);
  words->addWidget(lblDatabaseTitle_);
  words->addWidget(lblVersion_);
  auto* name_plate = new QHBoxLayout;
  name_plate->setSpacing(spacing::kLarge);
  name_plate->addWidget(logo);
  name_plate->addLayout(words, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(spacing::kSmall);
  buttons->addWidget(shortcuts, 0, Qt::AlignTop);
  buttons->addWidget(help, 0, Qt::AlignTop);
  buttons->addStretch();
  header_ = new QBoxLayout(QBoxLayout::LeftToRight);
  header_->setSpacing(spacing::kSmall);
  header_->addLayout(name_plate, 1);
  header_->addLayout(buttons);
  return header_;
}

// The way in that everybody takes: a tune of the library, or one of those that were opened last.
QLayout* FrmFront::Opening() {
  auto* open =
      new CardButton(QStringLiteral("load"), tr("Open Tu&ne"), tr("From the library (Ctrl+O)"), this);
  open->setObjectName(QStringLiteral("cmdOpenTune"));
  open->setToolTip(tr("Open a tune of the library (Ctrl+O)"));
  open->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  open->setMaximumHeight(kOpenHeight);
  connect(open, &QAbstractButton::clicked, this, [] { RunCommand(QStringLiteral("mnuFileOpen")); });

  lblRecentTunes_ = new ElidedLabel(this);
  lblRecentTunes_->setObjectName(QStringLiteral("lblRecentTunes"));
  lblRecentTunes_->setForegroundRole(QPalette::PlaceholderText);
  recent_tunes_ = new QGridLayout;
  recent_tunes_->setSpacing(spacing::kSmall);
  for (int i = 0; i < kRecentTuneCount; ++i) {
    auto* button = new ElidedButton(this);
    button->setObjectName(QStringLiteral("cmdRecentTune%1").arg(i + 1));
    connect(button, &QPushButton::clicked, this, [this, i] { OpenRecentTune(i); });
    cmdRecentTunes_.append(button);
  }
  auto* tunes = new QVBoxLayout;
  tunes->setSpacing(spacing::kTight);
  tunes->addWidget(lblRecentTunes_);
  tunes->addLayout(recent_tunes_);
  tunes->addStretch(1);
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kLarge);
  row->addWidget(open);
  row->addLayout(tunes, 1);
  return row;
}

QLayout* FrmFront::Doors() {
  doors_ = new QGridLayout;
  doors_->setSpacing(spacing::kMedium);
  for (const CommandRow* row : CommandsWithCard()) {
    auto* card = new CardButton(QLatin1String(row->card.icon), QLatin1String(row->card.title),
                                QLatin1String(row->card.description), this);
    card->setObjectName(QLatin1String(row->card.name));
    card->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    card->setMaximumHeight(200);
    connect(card, &QAbstractButton::clicked, this, [name = NameOf(*row)] { RunCommand(name); });
    cards_.append(card);
  }
  return doors_;
}

void FrmFront::PlaceInColumns() {
  const bool narrow = width() < kNarrowPage;
  header_->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  const Columns& columns = narrow ? kFewColumns : kColumns;
  const auto place = [](QGridLayout& grid, const auto& controls, int across) {
    for (int i = 0; i < controls.size(); ++i) grid.addWidget(controls[i], i / across, i % across);
    for (int column = 0; column < kColumns.doors; ++column)
      grid.setColumnStretch(column, column < across ? 1 : 0);
  };
  place(*doors_, cards_, columns.doors);
  place(*recent_tunes_, cmdRecentTunes_, columns.recent_tunes);
}

void FrmFront::SetTabOrder() {
  // The order of use: tunes first, then the rooms of the program, then its help and the transport bar.
  QList<QWidget*> order = {findChild<QWidget*>(QStringLiteral("cmdOpenTune"))};
  for (QPushButton* const button : std::as_const(cmdRecentTunes_)) order.append(button);
  for (CardButton* const card : std::as_const(cards_)) order.append(card);
  for (const char* name : {"cmdKeyboardShortcuts", "cmdHelp", "PlaySlider"})
    order.append(findChild<QWidget*>(QLatin1String(name)));
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
  order.first()->setFocus();
}

void FrmFront::ShowRecentTunes() {
  opened_ = OpenedTunes();
  for (qsizetype i = 0; i < cmdRecentTunes_.size(); ++i) {
    QPushButton& button = *cmdRecentTunes_[i];
    button.setVisible(i < opened_.size());
    if (i >= opened_.size()) continue;
    const QString& caption = opened_[i].caption;
    button.setText(QStringLiteral("&%1  ").arg(i + 1) +
                   QString(caption).replace(QLatin1Char('&'), QLatin1String("&&")));
    button.setAccessibleName(caption);
  }
  lblRecentTunes_->setText(opened_.isEmpty() ? tr("The tunes that you open will stand here.")
                                             : tr("Opened last"));
}

void FrmFront::OpenRecentTune(int button) {
  const OpenedTune tune = opened_.value(button);
  if (MainFrame* const frame = TheMainFrame()) frame->OpenTune(tune.code_name, tune.caption);
}

void FrmFront::ShowWhatIsThere() {
  for (const CommandRow* row : CommandsWithCard()) {
    auto* const card = findChild<CardButton*>(QLatin1String(row->card.name));
    if (card == nullptr) continue;
    const bool missing = IsMissing(NameOf(*row));
    const QString words = missing ? WordsForMissing(card->text()) : QString();
    card->SetDimmed(missing);
    card->setToolTip(missing ? words : QLatin1String(row->card.tooltip));
    card->setAccessibleName(missing ? words : WithoutMnemonic(card->text()));
  }
}

QString FrmFront::CaptionFor(const Tune* tune) const {
  const QString page = QString(kApplicationTitle) + QStringLiteral(" - Front Screen - ");
  return tune == nullptr ? page : page + NameInWindows(*tune);
}

void FrmFront::Activated() {
  setWindowTitle(CaptionFor(nullptr));
  lblVersion_->setText(VersionText());
  lblDatabaseTitle_->setText(Global().DatabaseTitle);
  ShowWhatIsThere();
  ShowRecentTunes();
  TuneWindow::Activated();
}

// The open dialogue hands the tune to this page itself.
void FrmFront::NewTuneWanted(const QString& action, const QString&) {
  if (action == QLatin1String("OpenDialog")) ShowWindow(QStringLiteral("frmOpen"));
}

void FrmFront::showEvent(QShowEvent* event) {
  ChildWindow::showEvent(event);
  lblDatabaseTitle_->setText(Global().DatabaseTitle);
}

void FrmFront::resizeEvent(QResizeEvent* event) {
  ChildWindow::resizeEvent(event);
  const bool was_narrow = event->oldSize().width() < kNarrowPage;
  if (was_narrow != (width() < kNarrowPage)) PlaceInColumns();
}

}  // namespace zelmar
