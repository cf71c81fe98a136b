// What the windows ask of the main window: its area, its changing menus, and what it does with the tune in
// memory. Commands go by their names: see shell/window_catalogue.h.
#pragma once

#include <memory>

class QAction;
class QMdiArea;
class QMenu;
class QString;
class QWidget;

namespace zelmar {

class ChildWindow;
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

  // Opens a recent tune, by the index of its menu item.
  virtual void mnuRecentTunes_Click(int index) = 0;
  // The same for a tune that is told by its name, with what stands for it in captions.
  virtual void OpenTune(const QString& code_name, const QString& caption) = 0;
  // Silences everything and puts the synthesiser into its mode again.
  virtual void ResetMidi() = 0;
  // Plays the tune in memory from the start and returns at its end.
  virtual void PlayTuneFromMemory(bool hear_tick = false) = 0;
};

// The main window; null before it is loaded and after its end.
MainFrame* TheMainFrame();
void SetMainFrame(MainFrame* frame);

// The window that a new one is to stand in front of: the modal one at work, else the main window. Null
// without either.
QWidget* OwnerOfNewWindow();

}  // namespace zelmar
