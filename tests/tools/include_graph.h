// Which units of the source tree include which, and what breaks the order of its floors.
//
// A unit is a header with its .cpp, named by its path without the ending. Includes run downward only, in the
// order of kFloors; within a floor they make no circle, and what needs no window includes no widgets/.
#pragma once

#include <QDir>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace zelmar {

// From the bottom of the house to its roof.
inline constexpr const char* kFloors[] = {"platform", "model",    "store",   "midi",   "abc",     "midifile",
                                          "shell",    "notation", "editors", "themes", "library", "app"};
// Floors that are windows through and through; elsewhere windows stand in widgets/.
inline constexpr const char* kWindowFloors[] = {"shell", "notation", "editors", "app"};

class IncludeGraph {
 public:
  // Reads every .h and .cpp below the folder.
  explicit IncludeGraph(const QDir& source);

  qsizetype UnitCount() const { return included_.size(); }

  // Each as "a includes b", in the order of the alphabet.
  QStringList UnknownFloors() const;
  QStringList UpwardIncludes() const;
  QStringList WidgetsInTheCore() const;
  // The units of each circle, by their names, a line a circle.
  QStringList Circles() const;

 private:
  template <typename Breaks>
  QStringList IncludesThat(Breaks breaks) const;

  QMap<QString, QSet<QString>> included_;
};

}  // namespace zelmar
