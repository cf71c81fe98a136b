// Failures of the tune database in words for a person.
#pragma once

#include <QString>

namespace zelmar {

class Failure;

// What the failure means, with the engine's own words in brackets, as a sentence.
QString WordsForPerson(const Failure& failure);

}  // namespace zelmar
