#include "app/frm_front.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
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
#include "platform/paths.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"
#include "platform/widgets/widget_services.h"
#include "shell/help.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

constexpr int kHelpContext = 100;
constexpr int kLogoHeight = 72;
constexpr int kWidestLogo = 480;
constexpr int kDoorsInARow = 4;

struct Door {
  const char* name;
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
    {"cmdJukeBox", "juke_box", "&Juke Box", "Classical and folk music of your choice",
     "Listen to your selection of classical and folk music", &OfMainWindow<&MainFrame::mnuPlayJukeBox_Click>},
    {"cmdHits", "hits", "Hit &Parade", "The classical top 20", "Classical top 20 charts",
     &OfMainWindow<&MainFrame::mnuPlayHits_Click>},
    {"cmdPlayDictionary", "dictionary", "&Dictionary of Themes", "Every theme of the database, in a tree",
     "Click here to see all the themes in the Zelmar database",
     &OfMainWindow<&MainFrame::mnuPlayDictionary_Click>},
    {"cmdThemeQuiz", "quiz", "Theme &Quiz", "Hear a theme and name it",
     "Click to hear a theme played at random. Your task is to name it by selecting its title from a list of "
     "20 titles.",
     &OfMainWindow<&MainFrame::mnuPlayTuneQuiz_Click>},
    {"cmdThemeSearch", "search", "Theme &Search", "What's that tune called? Search by its first notes",
     "What's that tune called?  Enter the first few notes of a theme onto the staff, with the mouse, and "
     "search for it.",
     &OfMainWindow<&MainFrame::mnuFileIdentify_Click>},
    {"CmdPiano", "piano", "P&iano", "Pick a tune out on the keys",
     "Identify tunes by picking them out on the piano with your mouse",
     &OfMainWindow<&MainFrame::mnuEditKeyboardInput_Click>},
    {"cmdTimeLine", "time_line", "&Time-Line", "Composers beside the events of their days",
     "Click here for a history time-line, comparing composers' life-spans against various historical events.",
     &OfMainWindow<&MainFrame::mnuMusicologyHistory_Click>},
    {"cmdMusicology", "musicology", "&Musicology", "Composers, instruments, countries, styles",
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

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* page = new QVBoxLayout;
  page->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kWide);
  page->setSpacing(spacing::kWide);
  page->addLayout(Header());
  page->addStretch(1);
  page->addLayout(Doors(), 8);
  page->addStretch(1);
  column->addLayout(page, 1);
  column->addWidget(bar_);
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
  lblDatabaseTitle_ = new QLabel(this);
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
      SmallButton("cmdHelp", "help", tr("&Help"),
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
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kLarge);
  row->addWidget(logo);
  row->addLayout(words);
  row->addStretch(1);
  row->addWidget(lblVersion_, 0, Qt::AlignTop);
  row->addWidget(shortcuts, 0, Qt::AlignTop);
  row->addWidget(help, 0, Qt::AlignTop);
  return row;
}

QLayout* FrmFront::Doors() {
  auto* grid = new QGridLayout;
  grid->setSpacing(spacing::kLarge);
  int place = 0;
  for (const Door& door : kDoors) {
    auto* card = new CardButton(QLatin1String(door.icon), QLatin1String(door.title),
                                QLatin1String(door.description), this);
    card->setObjectName(QLatin1String(door.name));
    card->setToolTip(QLatin1String(door.tooltip));
    card->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    card->setMaximumHeight(200);
    connect(card, &QAbstractButton::clicked, this, door.open);
    grid->addWidget(card, place / kDoorsInARow, place % kDoorsInARow);
    ++place;
  }
  return grid;
}

void FrmFront::Activated() {
  setWindowTitle(QString(kApplicationTitle) + QStringLiteral(" - Front Screen - "));
  lblVersion_->setText(VersionText());
  lblDatabaseTitle_->setText(Global().DatabaseTitle);
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
  if (const auto tune = TheMainWindow().MyTune()) {
    if (tune->Composer() != QLatin1String("Various")) caption += tune->Composer() + QStringLiteral(" - ");
    caption += tune->Title();
  }
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

void FrmFront::changeEvent(QEvent* event) {
  ChildWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && bar_ != nullptr)
    bar_->SetBackGround(palette().color(QPalette::Base));
}

void FrmFront::MyPlayBar_NewTuneWanted(const QString& action) {
  if (action == QLatin1String("OpenDialog")) FrmOpen::ShowModal();
}

}  // namespace zelmar
