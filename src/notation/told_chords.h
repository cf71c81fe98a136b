// Which chords of a tune have been told of as too large to be drawn.
//
// It lives and goes with its tune and is shared by all staves that show it: a chord is told of once a load,
// however often it is drawn.
#pragma once

#include <QObject>
#include <set>

#include "model/tune.h"
#include "notation/chord_store.h"

namespace zelmar {

class ToldChords : public QObject {
  Q_OBJECT

 public:
  // True at the first call for that place of the tune.
  static bool AreNews(Tune& tune, const ChordPlace& place);

 private:
  using QObject::QObject;

  std::set<ChordPlace> told_;
};

}  // namespace zelmar
