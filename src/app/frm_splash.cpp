#include "app/frm_splash.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "app/logo.h"
#include "app/product.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"
#include "platform/widgets/widget_services.h"
#include "shell/loaded_forms.h"

namespace zelmar {

namespace {

constexpr QSize kSize(440, 280);
constexpr QSize kLargestLogo(360, 150);
constexpr int kNotePicture = 72;

}  // namespace

FrmSplash::FrmSplash() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("frmSplash"));
  setWindowTitle(kApplicationTitle);
  AddLoadedForm(this);
  setFixedSize(kSize);

  auto* logo = new QLabel(this);
  logo->setObjectName(QStringLiteral("imgLogo"));
  const QPixmap picture = LogoWithin(kLargestLogo, devicePixelRatioF());
  logo->setPixmap(picture.isNull() ? IconOf(QStringLiteral("note"), IconTone::kAccent)
                                         .pixmap(QSize(kNotePicture, kNotePicture), devicePixelRatioF())
                                   : picture);
  auto* name = new QLabel(QString(kApplicationTitle), this);
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 3.0);
  large.setWeight(QFont::Bold);
  name->setFont(large);
  name->setVisible(picture.isNull());  // the logo is the name, written large
  auto* version = new QLabel(QStringLiteral("Version ") + VersionText(), this);
  version->setObjectName(QStringLiteral("lblVersion"));
  version->setForegroundRole(QPalette::PlaceholderText);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kHuge, spacing::kWide, spacing::kHuge, spacing::kWide);
  column->setSpacing(spacing::kSmall);
  column->addStretch(1);
  column->addWidget(logo, 0, Qt::AlignHCenter);
  column->addWidget(name, 0, Qt::AlignHCenter);
  column->addWidget(version, 0, Qt::AlignHCenter);
  column->addStretch(1);
  if (const QScreen* screen = QGuiApplication::primaryScreen())
    move(screen->availableGeometry().center() - rect().center());
}

void FrmSplash::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace zelmar
