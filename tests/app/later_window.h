// A window of a later version, there for as long as this object lives.
#pragma once

#include "shell/child_window.h"
#include "support/handed_commands.h"

namespace zelmar {

class LaterWindow {
 public:
  explicit LaterWindow(const QString& name)
      : name_(name.toLatin1()),
        row_({{.window = name_.constData(), .make = [name] { return new ChildWindow(name); }}}) {}

 private:
  const QByteArray name_;
  const testing_support::HandedCommands row_;
};

}  // namespace zelmar
