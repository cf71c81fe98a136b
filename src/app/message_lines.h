// Message boxes for where nobody sees any: lines on the error stream.
#pragma once

#include "platform/services.h"

namespace zelmar {

// Nobody is asked: the default button is the answer.
class MessageLines : public MessageService {
 public:
  MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                     MessageAnswer default_button) override;
};

}  // namespace zelmar
