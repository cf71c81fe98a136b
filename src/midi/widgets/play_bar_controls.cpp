// How the transport bar looks: its controls, their words and their places.

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "midi/widgets/play_bar.h"
#include "platform/widgets/folding_row.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/read_outs.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kLowestTempo = 20;
constexpr int kHighestTempo = 500;
constexpr int kTempoStep = 10;
constexpr int kTempoPage = 40;
constexpr QSize kButtonIcon(22, 22);
constexpr QSize kPlayIcon(30, 30);

QFont Scaled(const QFont& font, double factor, QFont::Weight weight = QFont::Normal) {
  QFont result = font;
  result.setPointSizeF(font.pointSizeF() * factor);
  result.setWeight(weight);
  return result;
}

QLabel* Heading(const QString& text, QWidget* parent) {
  auto* heading = new QLabel(text, parent);
  heading->setFont(Scaled(heading->font(), 0.8));
  heading->setForegroundRole(QPalette::PlaceholderText);
  heading->setAlignment(Qt::AlignHCenter);
  return heading;
}

// A read-out below its heading.
QLayout* Column(const QString& heading, QLabel* read_out, QWidget* parent) {
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  column->addWidget(Heading(heading, parent), 0, Qt::AlignHCenter);
  column->addWidget(read_out, 0, Qt::AlignHCenter);
  return column;
}

template <typename Label, typename... Arguments>
Label* Named(const char* name, Arguments... arguments) {
  auto* label = new Label(arguments...);
  label->setObjectName(QLatin1String(name));
  return label;
}

}  // namespace

QToolButton* PlayBar::MakeButton(const char* name, const char* icon, const char* caption, const char* hint,
                                 void (PlayBar::*act)()) {
  auto* button = Named<QToolButton>(name, this);
  button->setIcon(IconOf(QLatin1String(icon)));
  button->setIconSize(kButtonIcon);
  button->setText(QLatin1String(caption));
  button->setToolTip(QLatin1String(hint));
  button->setAccessibleDescription(QLatin1String(hint));
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setEnabled(false);
  button->setFont(Scaled(button->font(), 0.85));
  button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
  if (act != nullptr) connect(button, &QToolButton::clicked, this, act);
  return button;
}

QLayout* PlayBar::ReadOutRow() {
  lblTitle_ = Named<ElidedLabel>("lblTitle", this);
  lblTitle_->setFont(Scaled(font(), 1.15, QFont::DemiBold));
  lblFormName_ = Named<QLabel>("lblFormName", this);
  lblFormName_->hide();

  const QFont number = Scaled(font(), 1.35, QFont::DemiBold);
  const auto read_out = [this, &number](const char* name, int characters, const QString& meaning) {
    auto* label = Named<ReadOut>(name, characters, this);
    label->SetMeaning(meaning);
    label->setFont(number);
    return label;
  };
  lblMyBar_ = read_out("lblMyBar", 4, tr("Bar"));
  lblMyBeat_ = read_out("lblMyBeat", 2, tr("Beat"));
  lblTotalbars_ = read_out("lblTotalbars", 4, tr("Bars in all"));
  lblMyTempo_ = read_out("lblMyTempo", 4, tr("Tempo"));
  lblTimeSig_ = read_out("lblTimeSig", 6, tr("Time signature"));
  lblMidiMode_ = read_out("lblMidiMode", 4, tr("MIDI mode"));

  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kMedium);
  row->addWidget(lblTitle_, 1);
  row->addLayout(Column(tr("BAR"), lblMyBar_, this));
  row->addLayout(Column(tr("BARS"), lblTotalbars_, this));
  row->addLayout(Column(tr("BEAT"), lblMyBeat_, this));
  row->addLayout(Column(tr("TIME"), lblTimeSig_, this));
  row->addLayout(Column(tr("TEMPO"), lblMyTempo_, this));
  row->addLayout(Column(tr("MIDI"), lblMidiMode_, this));
  return row;
}

QLayout* PlayBar::ButtonRow() {
  cmdRewind_ = MakeButton("cmdRewind", "rewind", "Rewind", "Rewind tune to the begiining (Bar No. 1) ((F6)",
                          &PlayBar::Rewind);
  cmdBack_ = MakeButton("cmdBack", "back", "Back", "Go back one bar, then continue playing.(PageUp)",
                        &PlayBar::Back);
  cmdPlay_ = MakeButton("cmdPlay", "play", "Play", "Start playing current tune ((F2)", &PlayBar::Play);
  cmdPlay_->setIcon(IconOf(QStringLiteral("play"), IconTone::kAccent));
  cmdPlay_->setIconSize(kPlayIcon);
  cmdPlay_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  cmdPlay_->setFont(Scaled(font(), 1.0, QFont::DemiBold));
  cmdPause_ = MakeButton("cmdPause", "pause", "Pause",
                         "Pause playing, allowing restart with the play button at the beginning of the "
                         "current bar.",
                         &PlayBar::Pause);
  cmdStop_ = MakeButton("cmdStop", "stop", "Stop",
                        "Stop the tune, and reset so next click on Play will start at the beginning. (F3)",
                        &PlayBar::StopPlay);
  cmdForward_ = MakeButton("cmdForward", "forward", "Forward",
                           "Go forward one bar, then continue playing  (PageDn)", &PlayBar::Forward);
  cmdEnd_ = MakeButton("cmdEnd", "end", "Go to End", "Wind tune forward to the end (Last bar) (End)",
                       &PlayBar::GoToEnd);
  cmdGoTo_ = MakeButton("cmdGoTo", "go_to", "Go To", "Go to a specified bar number  (F5)", &PlayBar::GoToBar);
  cmdNewTune_ = MakeButton("cmdNewTune", "load", "Load New", "Open a new tune. (CTRL O)", nullptr);
  connect(cmdNewTune_, &QToolButton::clicked, this, [this] { LoadNewTune(); });

  chkMetronome_ = Named<QCheckBox>("chkMetronome", tr("Metronome on"), this);
  chkMetronome_->setEnabled(false);
  connect(chkMetronome_, &QCheckBox::clicked, this, &PlayBar::chkMetronome_Click);

  TempoSlider_ = Named<QSlider>("TempoSlider", Qt::Horizontal, this);
  TempoSlider_->setRange(kLowestTempo, kHighestTempo);
  TempoSlider_->setSingleStep(kTempoStep);
  TempoSlider_->setPageStep(kTempoPage);
  TempoSlider_->setToolTip(tr("slide right to increase tempo"));
  TempoSlider_->setAccessibleName(tr("Tempo"));
  TempoSlider_->setMinimumWidth(140);
  TempoSlider_->installEventFilter(this);
  connect(TempoSlider_, &QSlider::valueChanged, this, &PlayBar::TempoSlider_Change);
  auto* tempo = new QLabel(tr("Tempo"), this);

  const auto group = [](std::initializer_list<QWidget*> controls, int gap) {
    auto* made = new QHBoxLayout;
    made->setSpacing(gap);
    for (QWidget* control : controls) made->addWidget(control);
    return made;
  };
  auto* row = new FoldingRow(spacing::kSmall, spacing::kTight);
  row->AddGroup(
      group({cmdRewind_, cmdBack_, cmdPlay_, cmdPause_, cmdStop_, cmdForward_, cmdEnd_}, spacing::kHair));
  row->AddGroup(group({cmdGoTo_, cmdNewTune_}, spacing::kHair));
  QHBoxLayout* const beat = group({chkMetronome_, tempo, TempoSlider_}, spacing::kTight);
  beat->insertSpacing(1, spacing::kSmall);
  row->AddGroup(beat);
  return row;
}

void PlayBar::MakeControls() {
  // As high as its rows are when they have folded, which a fixed height would not allow.
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kLarge, spacing::kSmall, spacing::kLarge, spacing::kSmall);
  column->setSpacing(spacing::kTight);
  column->addLayout(ReadOutRow());
  PlaySlider_ = Named<QSlider>("PlaySlider", Qt::Horizontal, this);
  PlaySlider_->setRange(1, 2);
  PlaySlider_->setToolTip(tr("Slide to move to any bar - beat within this music."));
  PlaySlider_->setAccessibleName(tr("Position"));
  PlaySlider_->installEventFilter(this);
  connect(PlaySlider_, &QSlider::valueChanged, this, &PlayBar::PlaySlider_Change);
  column->addWidget(PlaySlider_);
  column->addLayout(ButtonRow());
  // The order of the eye: position, then the buttons from left to right, then the tempo.
  QWidget* before = PlaySlider_;
  for (QWidget* next :
       std::initializer_list<QWidget*>{cmdRewind_, cmdBack_, cmdPlay_, cmdPause_, cmdStop_, cmdForward_,
                                       cmdEnd_, cmdGoTo_, cmdNewTune_, chkMetronome_, TempoSlider_}) {
    setTabOrder(before, next);
    before = next;
  }
}

void PlayBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (background_.isValid()) painter.fillRect(rect(), background_);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  painter.drawLine(0, 0, width(), 0);
}

}  // namespace zelmar
