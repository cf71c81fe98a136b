#include "store/failure_words.h"

#include "platform/failure.h"

namespace zelmar {

QString WordsForPerson(const Failure& failure) {
  const QString words = failure.Description();
  return words.endsWith(u'.') ? words : words + u'.';
}

}  // namespace zelmar
