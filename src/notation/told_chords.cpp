#include "notation/told_chords.h"

namespace zelmar {

bool ToldChords::AreNews(Tune& tune, const ChordPlace& place) {
  auto* told = tune.findChild<ToldChords*>(QString(), Qt::FindDirectChildrenOnly);
  if (told == nullptr) told = new ToldChords(&tune);
  return told->told_.insert(place).second;
}

}  // namespace zelmar
