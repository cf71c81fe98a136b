// What the save commands share: the status window that stands while a tune is written.
#pragma once

#include <QString>
#include <memory>

namespace zelmar {

class Tune;

// Shows the status window with a caption for its lifetime; the commands of the program stay usable.
class SaveStatusWindow {
 public:
  explicit SaveStatusWindow(const QString& caption);
  ~SaveStatusWindow();
  SaveStatusWindow(const SaveStatusWindow&) = delete;
  SaveStatusWindow& operator=(const SaveStatusWindow&) = delete;
};

// Saves all of a tune, or of the one in memory, under its FileName, with the status window in front. False
// when it failed and the person has been told why, or did not want it. Throws what SaveTune throws. Another
// tune may have taken the place of the current one when it returns.
bool SaveWholeTune(std::shared_ptr<Tune> tune, const QString& caption);
bool SaveWholeTune(const QString& caption);

}  // namespace zelmar
