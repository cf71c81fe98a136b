#include "model/tune_text.h"

#include "model/tune.h"

namespace zelmar {

QString NamedComposer(const QString& composer) {
  return composer == u"Various" ? QString() : composer;
}

QString ComposerAndTitle(const QString& composer, const QString& title, const QString& between) {
  const QString named = NamedComposer(composer);
  return named.isEmpty() ? title : named + between + title;
}

QString ComposerAndTitle(const Tune& tune, const QString& between) {
  return ComposerAndTitle(tune.Composer(), tune.Title(), between);
}

QString NameInWindows(const Tune& tune) {
  return tune.Composer().trimmed().isEmpty() ? tune.Title() : ComposerAndTitle(tune);
}

QString TitleAndComposer(const QString& title, const QString& composer, const QString& between) {
  const QString named = NamedComposer(composer);
  return named.isEmpty() ? title : title + between + named;
}

QString TitleAndComposer(const Tune& tune, const QString& between) {
  return TitleAndComposer(tune.Title(), tune.Composer(), between);
}

}  // namespace zelmar
