// What the commands of the main menu do that do more than show a window.
//
// They act on the main window in use, and do nothing without one.
#pragma once

#include "midi/widgets/play_bar.h"
#include "shell/active_play_bar.h"

namespace zelmar {

// --- File ---

// Lets the window in front open a tune in its own way; where it has none, shows the open dialogue.
void OpenTune();
void PrintWindowInFront();
void EndProgram();

// --- Play ---

// Plays in the transport bar in front, or says that no tune is loaded.
void PlayInFront();

// A command of the transport bar in front; nothing where there is none.
template <auto Command>
void OfBarInFront() {
  if (PlayBar* const bar = ActivePlayBar()) (bar->*Command)();
}

void ResetMidi();

// --- Options ---

void SetUpMidi();
void ResetControllers();

// --- Musicology ---

// With films or without, as the options say.
void ShowInstruments();

// --- Windows ---

void Cascade();
void TileSideBySide();
void TileAboveEachOther();
// The next and the previous child window, in the order in which they were opened, round and round.
void ShowNextWindow();
void ShowPreviousWindow();

// --- Help ---

void ShowHelpContents();
void ShowKeyboardShortcuts();
void ShowWebSite();

}  // namespace zelmar
