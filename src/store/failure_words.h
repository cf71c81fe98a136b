// Failures of the tune database in words for a person.
#pragma once

#include <QString>

namespace zelmar {

class Failure;

// What the failure means, as a sentence.
QString WordsForPerson(const Failure& failure);

}  // namespace zelmar
