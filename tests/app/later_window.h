// A window of a later version, there for as long as this object lives.
#pragma once

#include "shell/child_window.h"
#include "shell/window_catalogue.h"

namespace zelmar {

class LaterWindow {
 public:
  explicit LaterWindow(const QString& name) : name_(name) {
    RegisterWindow(name, [name]() -> ChildWindow* { return new ChildWindow(name); });
  }
  ~LaterWindow() { RegisterWindow(name_, nullptr); }
  LaterWindow(const LaterWindow&) = delete;
  LaterWindow& operator=(const LaterWindow&) = delete;

 private:
  QString name_;
};

}  // namespace zelmar
