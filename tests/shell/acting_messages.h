// Scripted messages that act while a box stands: where a test presses keys, or closes a window under the box.
#pragma once

#include <functional>

#include "support/scripted_services.h"

namespace zelmar::testing_support {

class ActingMessages : public ScriptedMessages {
 public:
  MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                     MessageAnswer default_button) override {
    const MessageAnswer answer = ScriptedMessages::Show(icon, text, title, buttons, default_button);
    if (const auto act = on_show) act();
    return answer;
  }

  std::function<void()> on_show;
};

}  // namespace zelmar::testing_support
