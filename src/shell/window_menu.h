// The two parts of the main menu that change while the program runs.
#pragma once

namespace zelmar {

// Items of the Windows menu from this number on list the open windows.
inline constexpr int kFirstListedWindow = 6;

// Lists every visible window but the main one, by caption; the item's data is the window's position among the
// loaded ones, and the window in front is checked.
void RebuildWindowMenu();

// Lists the recent tunes, newest first, behind the separator that opens them; the item's data is the
// CodeName. Leaves the menu alone while there is no recent tune.
void RebuildRecentTunesMenu();

}  // namespace zelmar
