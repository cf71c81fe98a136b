#include "tools/include_graph.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <functional>
#include <iterator>

namespace zelmar {

namespace {

QString UnitOf(const QString& path) {
  return path.left(path.lastIndexOf(u'.'));
}

int FloorOf(const QString& unit) {
  const QString folder = unit.section(u'/', 0, 0);
  const auto found = std::find_if(std::begin(kFloors), std::end(kFloors),
                                  [&folder](const char* floor) { return folder == QLatin1String(floor); });
  return found == std::end(kFloors) ? -1 : static_cast<int>(found - std::begin(kFloors));
}

bool NeedsNoWindow(const QString& unit) {
  if (unit.contains(QStringLiteral("/widgets/"))) return false;
  const QString folder = unit.section(u'/', 0, 0);
  return std::none_of(std::begin(kWindowFloors), std::end(kWindowFloors),
                      [&folder](const char* floor) { return folder == QLatin1String(floor); });
}

}  // namespace

IncludeGraph::IncludeGraph(const QDir& source) {
  static const QRegularExpression include(QStringLiteral("^#include \"([^\"]+)\""),
                                          QRegularExpression::MultilineOption);
  QDirIterator files(source.path(), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QString unit = UnitOf(source.relativeFilePath(file.fileName()));
    QSet<QString>& targets = included_[unit];
    auto found = include.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext()) {
      const QString target = UnitOf(found.next().captured(1));
      if (target != unit) targets.insert(target);
    }
  }
}

template <typename Breaks>
QStringList IncludeGraph::IncludesThat(Breaks breaks) const {
  QStringList lines;
  for (auto unit = included_.begin(); unit != included_.end(); ++unit)
    for (const QString& target : unit.value())
      if (breaks(unit.key(), target)) lines.append(QStringLiteral("%1 includes %2").arg(unit.key(), target));
  lines.sort();
  return lines;
}

QStringList IncludeGraph::UnknownFloors() const {
  QStringList lines;
  for (const QString& unit : included_.keys())
    if (FloorOf(unit) < 0) lines.append(unit);
  return lines;
}

QStringList IncludeGraph::UpwardIncludes() const {
  return IncludesThat(
      [](const QString& unit, const QString& target) { return FloorOf(target) > FloorOf(unit); });
}

QStringList IncludeGraph::WidgetsInTheCore() const {
  return IncludesThat([](const QString& unit, const QString& target) {
    return FloorOf(target) >= 0 && NeedsNoWindow(unit) && !NeedsNoWindow(target);
  });
}

// Tarjan's strongly connected components.
QStringList IncludeGraph::Circles() const {
  struct Mark {
    int number;
    int lowest;
    bool waiting;
  };
  QMap<QString, Mark> marks;
  QStringList waiting;
  QStringList circles;
  const std::function<int(const QString&)> visit = [&](const QString& unit) {
    const int number = static_cast<int>(marks.size());
    marks[unit] = {number, number, true};
    waiting.append(unit);
    int lowest = number;
    for (const QString& target : included_.value(unit)) {
      if (!marks.contains(target))
        lowest = std::min(lowest, visit(target));
      else if (marks[target].waiting)
        lowest = std::min(lowest, marks[target].number);
    }
    marks[unit].lowest = lowest;
    if (lowest == number) {
      QStringList circle;
      do {
        circle.append(waiting.takeLast());
        marks[circle.last()].waiting = false;
      } while (circle.last() != unit);
      circle.sort();
      if (circle.size() > 1) circles.append(circle.join(QStringLiteral(", ")));
    }
    return lowest;
  };
  for (const QString& unit : included_.keys())
    if (!marks.contains(unit)) visit(unit);
  circles.sort();
  return circles;
}

}  // namespace zelmar
