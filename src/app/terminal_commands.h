// The commands and settings that the program has for a terminal.
#pragma once

#include <span>

namespace zelmar {

struct TerminalRow;

// A new command is a row here.
std::span<const TerminalRow> TerminalRows();

}  // namespace zelmar
