// Rows in the table of windows and commands for as long as this object lives.
#pragma once

#include <utility>
#include <vector>

#include "shell/command_table.h"

namespace zelmar::testing_support {

class HandedCommands {
 public:
  explicit HandedCommands(std::vector<CommandRow> rows) : rows_(std::move(rows)) { AddCommands(rows_); }
  ~HandedCommands() { RemoveCommands(rows_); }
  HandedCommands(const HandedCommands&) = delete;
  HandedCommands& operator=(const HandedCommands&) = delete;

 private:
  const std::vector<CommandRow> rows_;
};

}  // namespace zelmar::testing_support
