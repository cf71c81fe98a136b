// The look of the program for as long as a test runs.
#pragma once

#include <QApplication>
#include <QPalette>
#include <ostream>

#include "shell/theme.h"

namespace zelmar {

inline void PrintTo(ColourScheme scheme, std::ostream* out) {
  *out << (scheme == ColourScheme::kDark ? "dark" : "light");
}

}  // namespace zelmar

namespace zelmar::testing_support {

class AppliedTheme {
 public:
  explicit AppliedTheme(ColourScheme scheme) { ApplyTheme(*qApp, scheme); }
  ~AppliedTheme() {
    qApp->setStyleSheet(QString());
    QApplication::setPalette(before_);
  }
  AppliedTheme(const AppliedTheme&) = delete;
  AppliedTheme& operator=(const AppliedTheme&) = delete;

 private:
  QPalette before_ = QApplication::palette();
};

}  // namespace zelmar::testing_support
