#include "app/frm_front.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

#include "app/card_button.h"
#include "app/frm_open.h"
#include "app/logo.h"
#include "app/mdi_parent.h"
#include "app/product.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
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
#include "shell/help.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

constexpr int kHelpContext = 100;
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

struct Door {
  const char* name;
  const char* leads_to;  // a window, or a command that leads to none of its own
  const char* icon;
  const char* title;
  const char* description;
  const char* tooltip;
  void (*open)();
};

// A command of the main window, for a page that may be there without one.
template <auto Command>
void OfMainWindow() {
  if (MainFrame* const frame = TheMainFrame()) (frame->*Command)();
}

void ShowMusicology() {
  ShowWindow(QStringLiteral("frmMusicology"));
}

constexpr Door kDoors[] = {
    {"cmdJukeBox", "frmPlayJukeBox", "juke_box", "&Juke Box", "Classical and folk music of your choice",
     "Listen to your selection of classical and folk music", &OfMainWindow<&MainFrame::mnuPlayJukeBox_Click>},
    {"cmdHits", "frmPlayHits", "hits", "Hit P&arade", "The classical top 20", "Classical top 20 charts",
     &OfMainWindow<&MainFrame::mnuPlayHits_Click>},
    {"cmdPlayDictionary", "frmPlayDictionary", "dictionary", "&Dictionary of Themes",
     "Every theme of the database, in a tree", "Click here to see all the themes in the Zelmar database",
     &OfMainWindow<&MainFrame::mnuPlayDictionary_Click>},
    {"cmdThemeQuiz", "frmPlayTuneQuiz", "quiz", "Theme &Quiz", "Hear a theme and name it",
     "Click to hear a theme played at random. Your task is to name it by selecting its title from a list of "
     "20 titles.",
     &OfMainWindow<&MainFrame::mnuPlayTuneQuiz_Click>},
    {"cmdThemeSearch", "mnuFileIdentify", "search", "Theme &Search",
     "What's that tune called? Search by its first notes",
     "What's that tune called?  Enter the first few notes of a theme onto the staff, with the mouse, and "
     "search for it.",
     &OfMainWindow<&MainFrame::mnuFileIdentify_Click>},
    {"CmdPiano", "frmEditKeyboardInput", "piano", "P&iano", "Pick a tune out on the keys",
     "Identify tunes by picking them out on the piano with your mouse",
     &OfMainWindow<&MainFrame::mnuEditKeyboardInput_Click>},
    {"cmdTimeLine", "frmMusicologyHistory", "time_line", "&Time-Line",
     "Composers beside the events of their days",
     "Click here for a history time-line, comparing composers' life-spans against various historical events.",
     &OfMainWindow<&MainFrame::mnuMusicologyHistory_Click>},
    {"cmdMusicology", "frmMusicology", "musicology", "M&usicology",
     "Composers, instruments, countries, styles",
     "Click here to browse composers, instruments, ensembles, music categories, geography of music, and "
     "musical periods or styles.",
     &ShowMusicology},
};

QPushButton* SmallButton(const char* name, const char* icon, const QString& caption, const QString& tooltip,
                         QWidget* parent) {
  auto* button = new QPushButton(IconOf(QLatin1String(icon)), caption, parent);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tooltip);
  button->setIconSize(QSize(18, 18));
  return button;
}

}  // namespace

FrmFront::FrmFront() : ChildWindow(QStringLiteral("frmFront"), kHelpContext) {
  setWindowTitle(QStringLiteral("Front Screen."));
  Global().HelpPath = ApplicationDirectory() + QStringLiteral("\\Help");

  bar_ = new PlayBar(this);
  bar_->setObjectName(QStringLiteral("MyPlayBar"));
  bar_->SetNewTuneEnabled();
  connect(bar_, &PlayBar::NewTuneWanted, this, &FrmFront::MyPlayBar_NewTuneWanted);

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
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(view, 1);
  column->addWidget(bar_);
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
  connect(open, &QAbstractButton::clicked, this, &OfMainWindow<&MainFrame::mnuFileOpen_Click>);

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
  for (const Door& door : kDoors) {
    auto* card = new CardButton(QLatin1String(door.icon), QLatin1String(door.title),
                                QLatin1String(door.description), this);
    card->setObjectName(QLatin1String(door.name));
    card->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    card->setMaximumHeight(200);
    connect(card, &QAbstractButton::clicked, this, door.open);
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
  if (auto* const main = dynamic_cast<MDIParent*>(TheMainFrame()))
    main->OpenTune(tune.code_name, tune.caption);
}

void FrmFront::ShowWhatIsThere() {
  for (qsizetype i = 0; i < cards_.size(); ++i) {
    const Door& door = kDoors[i];
    CardButton* const card = cards_[i];
    const bool missing = IsMissing(QLatin1String(door.leads_to));
    const QString words = missing ? WordsForMissing(card->text()) : QString();
    card->SetDimmed(missing);
    card->setToolTip(missing ? words : QLatin1String(door.tooltip));
    card->setAccessibleName(missing ? words : WithoutMnemonic(card->text()));
  }
}

void FrmFront::Activated() {
  setWindowTitle(QString(kApplicationTitle) + QStringLiteral(" - Front Screen - "));
  lblVersion_->setText(VersionText());
  lblDatabaseTitle_->setText(Global().DatabaseTitle);
  ShowWhatIsThere();
  ShowRecentTunes();
  bar_->SetBackGround(palette().color(QPalette::Base));
  bar_->SetFormName(objectName());
  bar_->SetDeviceID(Global().MidiDeviceNumber);
  const auto tune = TheMainWindow().MyTune();
  if (!Global().TuneLoadedFlag || !tune) return;
  ShowTuneInCaption();
  bar_->SetTune(tune);
  bar_->SetPlayStatus(tune->Playing());
}

void FrmFront::ShowTuneInCaption() {
  QString caption = QString(kApplicationTitle) + QStringLiteral(" - Front Screen - ");
  if (const auto tune = TheMainWindow().MyTune()) caption += NameInWindows(*tune);
  setWindowTitle(caption);
}

void FrmFront::ShowTitleOfTune() {
  ChildWindow::ShowTitleOfTune();
  if (Global().TuneLoadedFlag) ShowTuneInCaption();
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

void FrmFront::changeEvent(QEvent* event) {
  ChildWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && bar_ != nullptr)
    bar_->SetBackGround(palette().color(QPalette::Base));
}

void FrmFront::MyPlayBar_NewTuneWanted(const QString& action) {
  if (action == QLatin1String("OpenDialog")) FrmOpen::ShowModal();
}

}  // namespace zelmar
