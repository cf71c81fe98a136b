#include "app/menu_commands.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

#include "app/keyboard_memory.h"
#include "app/options/frm_options_midi_setup.h"
#include "app/product.h"
#include "midi/mode_commands.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/ignoring_failures.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/child_window.h"
#include "shell/dialog_wait.h"
#include "shell/help.h"
#include "shell/main_frame.h"
#include "shell/window_catalogue.h"

namespace zelmar {

// --- File ---

void OpenTune() {
  if (const std::shared_ptr<Tune> tune = TheMainWindow().MyTune())
    IgnoringFailures([&tune] { tune->Stopit(); });
  if (PlayBar* const bar = ActivePlayBar())
    bar->LoadNewTune(QStringLiteral("XX"), QStringLiteral("OpenDialog"));
  else
    ShowWindow(QStringLiteral("frmOpen"));
}

void PrintWindowInFront() {
  MainFrame* const frame = TheMainFrame();
  ChildWindow* const window = frame != nullptr ? frame->ActiveChild() : nullptr;
  if (window != nullptr && Platform().printer) Platform().printer->PrintLandscape(*window);
}

void EndProgram() {
  if (MainFrame* const frame = TheMainFrame()) frame->Window()->close();
}

// --- Play ---

void PlayInFront() {
  PlayBar* const bar = ActivePlayBar();
  if (bar == nullptr) return;
  if (Global().TuneLoadedFlag)
    bar->Play();
  else
    ShowMessage(MessageIcon::kInformation, QStringLiteral("No tune loaded."),
                QStringLiteral("Unable to play anything, because..."));
}

void ResetMidi() {
  if (MainFrame* const frame = TheMainFrame()) frame->ResetMidi();
}

// --- Options ---

void SetUpMidi() {
  ShowWindow(QLatin1String(FrmOptionsMidiSetup::kName));
  if (PlayBar* const bar = ActivePlayBar()) bar->SetDeviceID(Global().MidiDeviceNumber);
}

void ResetControllers() {
  ResetChannels(ChannelReset::kControllers);
  DialogWait::ShowUntilItCloses(QStringLiteral("Controllers Reset"));
}

// --- Musicology ---

void ShowInstruments() {
  ShowWindow(Global().MediaPlayerInstalled ? QStringLiteral("frmInstruments")
                                           : QStringLiteral("frmInstrumentsNoVideo"));
}

// --- Windows ---

namespace {

// A cascade gives each window the size that it likes best, whatever the area has room for.
void KeepWithinArea(const QMdiArea& area) {
  const QSize room = area.viewport()->size();
  for (QMdiSubWindow* window : area.subWindowList())
    if (window->isVisible() && !window->isMinimized())
      window->resize(window->size().boundedTo(room - QSize(window->x(), window->y())));
}

void PlaceSideBySide(const QMdiArea& area, Qt::Orientation orientation) {
  QList<QMdiSubWindow*> windows;
  for (QMdiSubWindow* window : area.subWindowList())
    if (window->isVisible() && !window->isMinimized()) windows.append(window);
  const QSize room = area.viewport()->size();
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    windows[i]->showNormal();
    if (orientation == Qt::Horizontal)
      windows[i]->setGeometry(room.width() * i / count, 0, room.width() / count, room.height());
    else
      windows[i]->setGeometry(0, room.height() * i / count, room.width(), room.height() / count);
  }
}

// Forward or backward by one, round and round. The control that had the keyboard in the window has it again,
// which the area alone would move on by one.
void StepThroughWindows(qsizetype step) {
  MainFrame* const frame = TheMainFrame();
  if (frame == nullptr) return;
  QList<QMdiSubWindow*> windows = frame->Area()->subWindowList();
  windows.removeIf([](const QMdiSubWindow* window) { return !window->isVisibleTo(window->parentWidget()); });
  if (windows.size() < 2) return;
  const qsizetype place = windows.indexOf(frame->Area()->currentSubWindow());
  QMdiSubWindow* const next = windows[(place + step + windows.size()) % windows.size()];
  const auto* const memory = frame->Area()->findChild<KeyboardMemory*>();
  const QPointer<QWidget> control = memory != nullptr ? memory->LastControlIn(*next) : nullptr;
  frame->Area()->setActiveSubWindow(next);
  if (control) control->setFocus();
}

}  // namespace

void Cascade() {
  MainFrame* const frame = TheMainFrame();
  if (frame == nullptr) return;
  for (QMdiSubWindow* window : frame->Area()->subWindowList())
    if (window->isVisible()) window->showNormal();
  frame->Area()->cascadeSubWindows();
  KeepWithinArea(*frame->Area());
}

void TileSideBySide() {
  if (MainFrame* const frame = TheMainFrame()) PlaceSideBySide(*frame->Area(), Qt::Horizontal);
}

void TileAboveEachOther() {
  if (MainFrame* const frame = TheMainFrame()) PlaceSideBySide(*frame->Area(), Qt::Vertical);
}

void ShowNextWindow() {
  StepThroughWindows(1);
}

void ShowPreviousWindow() {
  StepThroughWindows(-1);
}

// --- Help ---

void ShowHelpContents() {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
}

void ShowKeyboardShortcuts() {
  ShowHelpPage(ApplicationDirectory() + QStringLiteral("\\Help\\KeyboardShortcuts.htm"),
               HelpPlace::kModalWindow);
}

void ShowWebSite() {
  ShowHelpPage(kWebSite, HelpPlace::kWindow, kWebSiteTitle);
}

}  // namespace zelmar
