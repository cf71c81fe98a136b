#include "model/tune_statements.h"

#include <QSaveFile>

#include "model/tune.h"
#include "platform/failure.h"
#include "platform/paths.h"

namespace zelmar {

namespace {

QString Quoted(const QString& text) {
  return QLatin1Char('"') + text + QLatin1Char('"');
}

void AppendTone(QStringList& lines, const Tone& tone) {
  lines << QStringLiteral("Set MyTone = nothing") << QStringLiteral("set MyTone = new tone")
        << QStringLiteral("MyTone.pitch = ") + Quoted(tone.Pitch())
        << QStringLiteral("MyTone.bar = ") + QString::number(tone.Bar())
        << QStringLiteral("MyTone.beat = ") + QString::number(tone.Beat())
        << QStringLiteral("MyTone.tick = ") + QString::number(tone.Tick())
        << QStringLiteral("MyTone.duration = ") + QString::number(tone.Duration(), 'g', 15)
        << QStringLiteral("MyTone.instrument= ") + QString::number(tone.Instrument())
        << QStringLiteral("MyTone.track = ") + QString::number(tone.Track())
        << QStringLiteral("MyTone.AbsRef = ") + QString::number(tone.AbsRef())
        << QStringLiteral("MyNewTune.Add MyTone");
}

}  // namespace

void WriteTuneStatements(Tune& tune, const QString& base_name) {
  const QString name = base_name + QStringLiteral(".TUN");
  if (!StaysInside(ApplicationDirectory(), name))
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The file name %1 leads outside the application directory.").arg(name));
  QStringList lines = {QStringLiteral("Dim MyTone as tone, MyNewTune as tune"),
                       QStringLiteral("Set myNewTune = New Tune"),
                       QStringLiteral("MyNewTune.title=") + Quoted(tune.Title()),
                       QStringLiteral("MyNewTune.FileName = ") + Quoted(tune.FileName()),
                       QStringLiteral("MyNewTune.beatsperbar = ") + QString::number(tune.BeatsPerBar()),
                       QStringLiteral("MyNewTune.tempo = ") + QString::number(tune.Tempo())};
  for (const auto& tone : *tune.Tones()) AppendTone(lines, *tone);
  lines << QStringLiteral("mynewtune.MelodyStartTime=timer") << QStringLiteral("MyNewTune.Play");

  QSaveFile file(ResolvePath(name));
  if (!file.open(QIODevice::WriteOnly) ||
      file.write((lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8()) < 0 || !file.commit())
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The file %1 cannot be written: %2.").arg(name, file.errorString()));
}

}  // namespace zelmar
