#include "shell/bars_across_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kMostDigits = 3;

// Takes any short number, and brings it into the range when the field is left. The usual one passes over keys
// in silence that would lead out of the range.
class BarsField : public QSpinBox {
 public:
  explicit BarsField(QWidget* parent) : QSpinBox(parent) {
    setRange(BarsAcrossRow::kFewest, BarsAcrossRow::kMost);
    // A turn of the wheel over a field that scrolls by changes nothing in it.
    setFocusPolicy(Qt::StrongFocus);
    lineEdit()->setObjectName(QStringLiteral("txtBarsAcross"));
    lineEdit()->setMaxLength(kMostDigits);
  }

 protected:
  QValidator::State validate(QString& text, int&) const override {
    const bool digits =
        std::all_of(text.begin(), text.end(), [](QChar sign) { return sign >= u'0' && sign <= u'9'; });
    if (!digits) return QValidator::Invalid;
    const int bars = text.toInt();
    return bars >= minimum() && bars <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
  }
  void fixup(QString& text) const override {
    text = QString::number(text.isEmpty() ? value() : std::clamp(text.toInt(), minimum(), maximum()));
  }
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QSpinBox::wheelEvent(event);
    else
      event->ignore();
  }
};

}  // namespace

BarsAcrossRow::BarsAcrossRow(QWidget* parent)
    : QWidget(parent),
      UpDownBarsAcross_(new BarsField(this)),
      imgZoomPlus_(MakeButton("imgZoomPlus", "zoom_in", tr("Magnify or Zoom in (show fewer bars)"), -1)),
      imgZoomMinus_(MakeButton("imgZoomMinus", "zoom_out", tr("Diminish or zoom out (show more bars)"), 1)) {
  UpDownBarsAcross_->setObjectName(QStringLiteral("UpDownBarsAcross"));
  UpDownBarsAcross_->setAccessibleName(tr("Bars across"));
  UpDownBarsAcross_->setToolTip(tr("Bars across the window, %1 to %2").arg(kFewest).arg(kMost));
  connect(UpDownBarsAcross_, &QSpinBox::valueChanged, this, [this](int bars) {
    EnableButtons();
    Q_EMIT Changed(bars);
  });
  auto* const label = new QLabel(tr("Bars across"), this);
  label->setBuddy(UpDownBarsAcross_);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing::kSmall);
  for (QWidget* part : std::initializer_list<QWidget*>{label, UpDownBarsAcross_, imgZoomPlus_, imgZoomMinus_})
    row->addWidget(part);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  EnableButtons();
}

QToolButton* BarsAcrossRow::MakeButton(const char* name, const char* icon, const QString& hint, int step) {
  auto* const button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setIcon(IconOf(QLatin1String(icon)));
  button->setToolTip(hint);
  button->setAccessibleName(hint);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAutoRepeat(true);
  connect(button, &QToolButton::clicked, this,
          [this, step] { UpDownBarsAcross_->setValue(UpDownBarsAcross_->value() + step); });
  return button;
}

int BarsAcrossRow::BarsAcross() const {
  return UpDownBarsAcross_->value();
}

void BarsAcrossRow::SetBarsAcross(int bars) {
  const QSignalBlocker quiet(UpDownBarsAcross_);
  UpDownBarsAcross_->setValue(bars);
  EnableButtons();
}

void BarsAcrossRow::EnableButtons() {
  imgZoomPlus_->setEnabled(BarsAcross() > kFewest);
  imgZoomMinus_->setEnabled(BarsAcross() < kMost);
}

}  // namespace zelmar
