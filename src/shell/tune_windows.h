// What every open window shows of the tune in memory.
#pragma once

namespace zelmar {

// The windows fetch a tune that has come into memory without a command of their own.
void ShowTuneInWindows();

// The same for all windows but the one in front, whose command it is that brought the tune.
void ShowTuneInOtherWindows();

// The transport bars show the MIDI mode that is in force.
void ShowModeInWindows();

// Captions and transport bars show the title anew, and nothing else of them moves: the tune goes on playing,
// or stays paused.
void ShowTitleInWindows();

}  // namespace zelmar
