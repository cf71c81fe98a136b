// A mistake in a text of the library, with the place where a person finds it.
#pragma once

#include <QString>

#include "platform/failure.h"

namespace zelmar {

// Line and column count from 1.
struct TextPosition {
  int line = 1;
  int column = 1;

  friend bool operator==(const TextPosition&, const TextPosition&) = default;
};

// Its description reads "file:line:column: sentence".
class TextError : public Failure {
 public:
  TextError(TextPosition position, const QString& sentence, const QString& file = {})
      : Failure(
            error_number::kInvalidCall,
            QStringLiteral("%1:%2:%3: %4").arg(file).arg(position.line).arg(position.column).arg(sentence)),
        file_(file),
        position_(position),
        sentence_(sentence) {}

  const QString& File() const { return file_; }
  TextPosition Position() const { return position_; }
  const QString& Sentence() const { return sentence_; }

 private:
  QString file_;
  TextPosition position_;
  QString sentence_;
};

}  // namespace zelmar
