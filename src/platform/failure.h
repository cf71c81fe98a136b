// Failures: what a command throws when it cannot go on. Caught once, where an event is delivered, and shown
// with its description; the command ends and the program stays.
#pragma once

#include <QString>
#include <stdexcept>

namespace zelmar {

// The numbers that callers test for.
namespace error_number {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAccess = 75;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidNull = 94;
inline constexpr int kActiveWindowUnloaded = 364;
inline constexpr int kKeyInUse = 457;
inline constexpr int kTableNotFound = 3078;
}  // namespace error_number

// A failure with a number that code can test and a description that a person can read.
class Failure : public std::runtime_error {
 public:
  Failure(int number, const QString& description)
      : std::runtime_error(description.toStdString()), number_(number), description_(description) {}

  int Number() const { return number_; }
  const QString& Description() const { return description_; }

 private:
  int number_;
  QString description_;
};

// A value that does not fit the width of its field.
class OverflowError : public Failure {
 public:
  explicit OverflowError(const QString& description = QStringLiteral("Overflow"))
      : Failure(error_number::kOverflow, description) {}
};

// A division by a tempo, beat length or count of 0.
class DivisionError : public Failure {
 public:
  DivisionError() : Failure(error_number::kDivisionByZero, QStringLiteral("Division by zero")) {}
};

// A position outside a table or a collection, or a key that a collection does not hold.
class SubscriptError : public Failure {
 public:
  explicit SubscriptError(const QString& description = QStringLiteral("Subscript out of range"))
      : Failure(error_number::kSubscript, description) {}
};

// A command that needs a tune, and none is in memory.
class NoTuneInMemory : public Failure {
 public:
  NoTuneInMemory() : Failure(error_number::kObjectNotSet, QStringLiteral("There is no tune in memory.")) {}
};

// A key that a collection holds already.
class DuplicateKeyError : public Failure {
 public:
  explicit DuplicateKeyError(const QString& key)
      : Failure(error_number::kKeyInUse,
                QStringLiteral("This key is already associated with an element of this collection (%1)")
                    .arg(key)) {}
};

}  // namespace zelmar
