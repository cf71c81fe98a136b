// What the layers below ask of the main window: the tune it holds, its recent-tune menu, its wait text, the
// mode label of the transport bars. The main window fills it in; without one, the default keeps the
// tune and no more.
#pragma once

#include <QString>
#include <memory>

namespace zelmar {

class Tune;

class MainWindowLink {
 public:
  virtual ~MainWindowLink() = default;
  // The one current tune; null when none is held.
  virtual std::shared_ptr<Tune> MyTune();
  virtual void SetMyTune(std::shared_ptr<Tune> tune);
  virtual void RebuildRecentTunesMenu() {}
  // A text that stays until the long work it tells of is done; an empty text takes it away.
  virtual void ShowWaitText(const QString&) {}
  // Refreshes the active window's transport bar, if it has one, and the mode label of every other.
  virtual void WakeUpPlayBar() {}

 private:
  std::shared_ptr<Tune> tune_;
};

// The link in use, never null.
MainWindowLink& TheMainWindow();

// The tune that is loaded, as TuneLoadedFlag has it; null when none is, whatever the main window still holds.
std::shared_ptr<Tune> CurrentTune();

// Puts another link in place, not owned; null returns to a fresh default.
void SetMainWindowLink(MainWindowLink* link);

}  // namespace zelmar
