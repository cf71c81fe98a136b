#include "app/frm_about.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/logo.h"
#include "app/product.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/spacing.h"
#include "shell/help.h"
#include "shell/page_view.h"

namespace zelmar {

namespace {

constexpr QSize kLargestLogo(200, 90);
constexpr int kWidest = 760;

void WriteToUs() {
  if (const auto pages = Platform().pages)
    pages->OpenWebAddress(QStringLiteral("mailto:%1?subject=%2")
                              .arg(kEnquiryAddress, QString::fromLatin1(QUrl::toPercentEncoding(
                                                        QStringLiteral("Enquiry about Zelmar")))));
}

void ShowText(const QString& name) {
  ShowHelpPage(QStringLiteral("Texts\\%1.htm").arg(name), HelpPlace::kModalWindow, name);
}

QString CurrentMelody() {
  const auto tune = CurrentTune();
  if (!tune) return QStringLiteral("No melody currently loaded");
  return tune->Title() + QStringLiteral("  (") + tune->FileName() + QStringLiteral(").");
}

}  // namespace

FrmAbout::FrmAbout() : ChildWindow(QStringLiteral("frmAbout")), view_(new PageView(this)) {
  setWindowTitle(QStringLiteral("About Zelmar"));
  resize(680, 500);
  view_->setObjectName(QStringLiteral("WebAbout"));
  view_->document()->setDocumentMargin(0);
  // A part of the window, not a page of its own.
  view_->setStyleSheet(QStringLiteral("background: transparent; border: none"));
  view_->ShowPage(ApplicationDirectory() + QStringLiteral("\\Help\\Texts\\AboutBox.htm"));

  // Lines of a width that can be read stay in the middle of a large window.
  auto* middle = new QWidget(this);
  middle->setMaximumWidth(kWidest);
  auto* across = new QHBoxLayout(this);
  across->setContentsMargins(0, 0, 0, 0);
  across->addWidget(middle);
  auto* column = new QVBoxLayout(middle);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kLarge);
  column->addLayout(Header());
  column->addLayout(Facts());
  column->addWidget(view_, 1);
  column->addLayout(Buttons());
}

QLayout* FrmAbout::Header() {
  auto* logo = new QLabel(this);
  logo->setObjectName(QStringLiteral("imgLogo"));
  const QPixmap picture = LogoWithin(kLargestLogo, devicePixelRatioF(), kLogoOfTheWeb);
  logo->setPixmap(picture);
  logo->setVisible(!picture.isNull());
  lblVersion_ = new QLabel(this);
  lblVersion_->setObjectName(QStringLiteral("lblVersion"));
  QFont large = lblVersion_->font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  large.setWeight(QFont::DemiBold);
  lblVersion_->setFont(large);
  lblComments_ = new QLabel(this);
  lblComments_->setObjectName(QStringLiteral("lblComments"));
  lblComments_->setForegroundRole(QPalette::PlaceholderText);
  auto* words = new QVBoxLayout;
  words->setSpacing(spacing::kTight);
  words->addStretch(1);
  words->addWidget(lblVersion_);
  words->addWidget(lblComments_);
  words->addStretch(1);
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kWide);
  row->addWidget(logo);
  row->addLayout(words);
  row->addStretch(1);
  return row;
}

QLabel* FrmAbout::AddFact(QGridLayout* grid, const QString& heading, const char* name) {
  auto* words = new QLabel(heading, this);
  words->setForegroundRole(QPalette::PlaceholderText);
  auto* fact = new QLabel(this);
  fact->setObjectName(QLatin1String(name));
  fact->setTextFormat(Qt::PlainText);
  fact->setWordWrap(true);
  fact->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  fact->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  fact->setAccessibleName(heading);
  const int row = grid->rowCount();
  grid->addWidget(words, row, 0, Qt::AlignTop);
  grid->addWidget(fact, row, 1);
  return fact;
}

QLayout* FrmAbout::Facts() {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(spacing::kLarge);
  grid->setVerticalSpacing(spacing::kTight);
  grid->setColumnStretch(1, 1);
  lblCurrentMelody_ = AddFact(grid, tr("Current tune"), "lblCurrentMelody");
  lblPath_ = AddFact(grid, tr("Database"), "lblPath");
  lblMidiOutputDevice_ = AddFact(grid, tr("MIDI output"), "lblMidiOutputDevice");
  lblMidiMode_ = AddFact(grid, tr("MIDI mode"), "lblMidiMode");
  return grid;
}

QLayout* FrmAbout::Buttons() {
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kSmall);
  const auto button = [this, row](const char* name, const QString& caption, const QString& hint, auto act) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(name));
    made->setToolTip(hint);
    connect(made, &QPushButton::clicked, this, act);
    row->addWidget(made);
  };
  button("cmdEmail", tr("E-ma&il"), tr("Write to us in your mail program"), &WriteToUs);
  button("cmdWWW", tr("Web &Site"), tr("Open our site in your browser"),
         [] { ShowHelpPage(kWebSite, HelpPlace::kWindow, kWebSiteTitle); });
  button("cmdQualifications", tr("&Qualifications"), tr("What Zelmar is good for, and what not"),
         [] { ShowText(QStringLiteral("Qualifications")); });
  button("cmdAcknowledgments", tr("&Acknowledgments"), tr("On whose work Zelmar stands"),
         [] { ShowText(QStringLiteral("Acknowledgments")); });
  row->addStretch(1);
  button("cmdBack", tr("&Back"), tr("Close this window"), [this] { Unload(); });
  return row;
}

void FrmAbout::Activated() {
  const QStringList version = VersionText().split(QLatin1Char('.'));
  lblVersion_->setText(QStringLiteral("Version ") + version.value(0) + QLatin1Char('.') + version.value(1) +
                       QStringLiteral("  Revision: ") + version.value(2));
  lblComments_->setText(VersionText());
  lblCurrentMelody_->setText(CurrentMelody());
  lblPath_->setText(Global().DatabasePath);
  lblMidiOutputDevice_->setText(Global().MidiDeviceName);
  lblMidiMode_->setText(Global().MidiMode);
}

void FrmAbout::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    Unload();
  else
    ChildWindow::keyPressEvent(event);
}

}  // namespace zelmar
