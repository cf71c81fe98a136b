// What the windows ask of the main window: its area, its changing menus, and its commands.
#pragma once

#include <memory>

class QAction;
class QMdiArea;
class QMenu;
class QString;
class QWidget;

namespace zelmar {

class ChildWindow;
class PlayBar;
class TuneLoader;

class MainFrame {
 public:
  virtual ~MainFrame() = default;

  virtual QWidget* Window() = 0;
  virtual QMdiArea* Area() = 0;
  // The child window in front, also while the program is not; null when none is open.
  virtual ChildWindow* ActiveChild() = 0;
  virtual QMenu* WindowsMenu() = 0;
  virtual QMenu* FileMenu() = 0;
  virtual std::shared_ptr<TuneLoader> MyLoader() = 0;

  // Saves the tune in memory, or a portion of it: "ALL", "Info", "Words", "Tracks" or "Notes". See SaveTune.
  virtual void SaveFile(const QString& code_name, bool& failed, const QString& portion) = 0;

  virtual void mnuFileOpen_Click() = 0;
  virtual void mnuWindows_Click(int index) = 0;
  virtual void mnuRecentTunes_Click(int index) = 0;
  // Shows the open dialogue and returns when it is closed.
  virtual void ShowOpenDialogue() = 0;
  virtual void mnuFileIdentify_Click() = 0;
  virtual void mnuPlayJukeBox_Click() = 0;
  virtual void mnuPlayHits_Click() = 0;
  virtual void mnuPlayDictionary_Click() = 0;
  virtual void mnuPlayTuneQuiz_Click() = 0;
  virtual void mnuEditKeyboardInput_Click() = 0;
  virtual void mnuMusicologyHistory_Click() = 0;
  virtual void mnuHelpContents_Click() = 0;
  virtual void ResetMidi() = 0;
  virtual void PlayTuneFromMemory(bool hear_tick = false) = 0;
};

// The main window; null before it is loaded and after its end.
MainFrame* TheMainFrame();
void SetMainFrame(MainFrame* frame);

// The window that a new one is to stand in front of: the modal one at work, else the main window. Null
// without either.
QWidget* OwnerOfNewWindow();

// The transport bar of the child window in front; null when that has none.
PlayBar* ActivePlayBar();

}  // namespace zelmar
