#include "app/message_lines.h"

#include <cstdio>

namespace zelmar {

MessageAnswer MessageLines::Show(MessageIcon, const QString& text, const QString& title, MessageButtons,
                                 MessageAnswer default_button) {
  std::fprintf(stderr, "Zelmar: %s %s\n", qPrintable(title), qPrintable(text.simplified()));
  return default_button;
}

}  // namespace zelmar
