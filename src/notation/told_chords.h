// Which chords of a tune have been told of as too large to be drawn.
//
// It lives and goes with its tune and is shared by all staves that show it: a chord is told of once a load,
// however often it is drawn.
#pragma once

#include <QObject>
#include <cstdint>
#include <set>

#include "model/tune.h"

namespace zelmar {

class ToldChords : public QObject {
  Q_OBJECT

 public:
  struct Place {
    std::uint8_t track = 0;
    std::int16_t bar = 0;
    std::int16_t beat = 0;
    std::int16_t tick = 0;
    auto operator<=>(const Place&) const = default;
  };

  // True at the first call for that place of the tune.
  static bool AreNews(Tune& tune, const Place& place);

 private:
  using QObject::QObject;

  std::set<Place> told_;
};

}  // namespace zelmar
