// What the save commands share: the status window that stands while a tune is written.
#pragma once

#include <QString>

namespace zelmar {

// Shows the status window with a caption for its lifetime; the commands of the program stay usable.
class SaveStatusWindow {
 public:
  explicit SaveStatusWindow(const QString& caption);
  ~SaveStatusWindow();
  SaveStatusWindow(const SaveStatusWindow&) = delete;
  SaveStatusWindow& operator=(const SaveStatusWindow&) = delete;
};

// Saves all of the tune in memory under its FileName, with the status window in front. False when it failed.
// Throws what SaveFile throws.
bool SaveWholeTune(const QString& caption);

}  // namespace zelmar
