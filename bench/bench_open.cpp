// The open dialogue over a catalogue of 10,000 tunes, from its making until a key that is typed stands in its
// field, against its statement alone, read to its end.

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "app/frm_open.h"
#include "app/zelmar_application.h"
#include "figure.h"
#include "platform/memory.h"
#include "platform/widgets/widget_services.h"
#include "sample_tune.h"
#include "shell/theme.h"

namespace {

using namespace zelmar;
using bench::Require;

constexpr int kTunes = 10000;
constexpr int kRounds = 21;

double OpenUntilTyped() {
  return bench::MillisecondsOf([] {
    FrmOpen dialogue;
    Require(dialogue.Load(), "the dialogue has nothing to show");
    dialogue.show();
    QCoreApplication::processEvents();
    auto* const field = dialogue.findChild<QLineEdit*>();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_9, Qt::NoModifier, QStringLiteral("9"));
    QCoreApplication::sendEvent(field, &key);
    QCoreApplication::processEvents();
    Require(field->text() == QLatin1String("9"), "the field does not take a key");
  });
}

double StatementAlone() {
  int rows = 0;
  qsizetype letters = 0;
  const double time = bench::MillisecondsOf([&] {
    QSqlQuery query(bench::SampleDatabase::Handle());
    query.setForwardOnly(true);
    query.exec(
        QStringLiteral("SELECT CASE WHEN composer='Various' THEN title ELSE title || ' by ' || composer END, "
                       "CodeName FROM tblMelodies ORDER BY Title"));
    for (; query.next(); ++rows)
      letters += query.value(0).toString().size() + query.value(1).toString().size();
  });
  Require(rows == kTunes && letters > 0, "the statement does not give its rows");
  return time;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  KeepFreedMemory();
  ZelmarApplication application(argc, argv);
  InstallWidgetServices();
  ApplyTheme(application, ColourScheme::kLight);
  bench::SampleDatabase database;
  database.FillCatalogue(kTunes);
  const auto pair = bench::RunInTurns(kRounds, &OpenUntilTyped, &StatementAlone);
  bench::PrintHeading();
  bench::PrintFigure("open dialogue of 10,000 tunes, typed in / its statement", pair.measured, pair.yardstick,
                     "ms", pair.measured / pair.yardstick, 3.0);
  return bench::over_limit ? 3 : 0;
}
