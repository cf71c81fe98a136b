// What is heard, on the scripted clock: notes of the tunes that ship that sound shorter than they are
// written, and clicks of the metronome beside the notes of the same beats, in ten minutes at 140 with a
// ritardando.

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>

#include "figure.h"
#include "midi/tune_player.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "store/tune_loader.h"
#include "support/sounding_notes.h"

namespace {

using namespace zelmar;
using namespace testing_support;

// Plays the tune and gives the moment in seconds from which its times count.
double Play(ScriptedPlatform& platform, Tune& tune) {
  platform.midi->sent.clear();
  tune.SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune.Play();
  return tune.MelodyStartTime();
}

QStringList CodeNames() {
  QStringList names;
  {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("names"));
    database.setDatabaseName(Global().DatabasePath);
    database.open();
    QSqlQuery query(database);
    query.exec(QStringLiteral("SELECT CodeName FROM tblMelodies"));
    while (query.next()) names.append(query.value(0).toString());
  }
  QSqlDatabase::removeDatabase(QStringLiteral("names"));
  return names;
}

// False when a tune does not load or its notes are not those that are heard.
bool CountShortNotes(ScriptedPlatform& platform, int& notes, int& short_notes) {
  for (QString name : CodeNames()) {
    TuneLoader loader;
    loader.DoLoad(name);
    if (!loader.LoadedOk()) return false;
    const auto tune = TheMainWindow().MyTune();
    const double start = Play(platform, *tune);
    const auto written = WrittenNotes(*tune);
    const auto heard = HeardFor(written, HeardNotes(platform.midi->sent, start));
    if (heard.size() != written.size()) return false;
    for (std::size_t i = 0; i < written.size(); ++i) {
      ++notes;
      const double lost = (written[i].end - written[i].start) - (heard[i].end - heard[i].start);
      short_notes += lost > AllowedLoss(written[i], *tune) + 0.001;
    }
  }
  return notes > 0;
}

void Add(Tune& tune, EventType type, int bar, int beat, int tick, int tempo = 0) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetAbsRef(tune.LastAbsRef() + 1);
  tone->SetBar(static_cast<std::int16_t>(bar));
  tone->SetBeat(static_cast<std::int16_t>(beat));
  tone->SetTick(static_cast<std::int16_t>(tick));
  tone->SetDuration(0.1);
  tone->SetBeatLength(tune.BeatLength());
  if (type == TEMPO_CHANGE) {
    tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
  }
  tune.Add(tone);
}

// A short note on each beat; in the last fifth of the bars each half bar is slower than the one before.
std::shared_ptr<Tune> TenMinutes(int beats_per_bar, int beat_length) {
  auto tune = std::make_shared<Tune>();
  tune->SetBeatsPerBar(static_cast<std::int16_t>(beats_per_bar));
  tune->SetBeatLength(static_cast<std::uint8_t>(beat_length));
  tune->SetTempo(140);
  const int bars = 1400 * beat_length / 4 / beats_per_bar;
  const int slower_from = bars * 4 / 5;
  for (int bar = 1; bar <= bars; ++bar) {
    for (int beat = 1; beat <= beats_per_bar; ++beat) Add(*tune, MUSIC_NOTE, bar, beat, 0);
    if (bar < slower_from) continue;
    const double share = static_cast<double>(bar - slower_from) / (bars - slower_from);
    Add(*tune, TEMPO_CHANGE, bar, 1, 0, 140 - static_cast<int>(79 * share));
    Add(*tune, TEMPO_CHANGE, bar, beats_per_bar / 2 + 1, 17, 139 - static_cast<int>(79 * share));
  }
  tune->CalcNotesOff();
  tune->SortStartTimes();
  tune->BarCount();
  tune->SetHearTick(1);
  tune->SetMetroVolume(127);
  return tune;
}

// The longest distance in milliseconds of a click from the note of its beat; below 0 when they do not pair.
double FarthestClick(ScriptedPlatform& platform, Tune& tune) {
  Play(platform, tune);
  std::vector<double> notes, clicks;
  for (const SentMessage& message : platform.midi->sent) {
    if (message.kind != SentMessage::Kind::kShort || message.packed >> 16U == 0) continue;
    if ((message.packed & 0xFFU) == 0x90U) notes.push_back(message.seconds * 1000.0);
    if ((message.packed & 0xFFU) == 0x99U) clicks.push_back(message.seconds * 1000.0);
  }
  if (notes.empty() || clicks.size() < notes.size()) return -1.0;
  double farthest = 0.0;
  for (std::size_t i = 0; i < notes.size(); ++i)
    farthest = std::max(farthest, std::abs(notes[i] - clicks[i]));
  return farthest;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  MakeTunesSound();
  ScriptedPlatform platform;
  platform.events->step_microseconds = 0;
  // A moment that a single does not hold exactly, as most are.
  platform.clock->SetSeconds(45000.1237);
  Global().DatabasePath = QCoreApplication::applicationDirPath() + QStringLiteral("/../ZelmarTemplate.mdb");

  int notes = 0, short_notes = 0;
  if (!CountShortNotes(platform, notes, short_notes)) {
    std::fprintf(stderr, "the tunes that ship were not heard\n");
    return 1;
  }
  bench::PrintHeading();
  bench::PrintFigure("notes that ship and sound shorter than written / all", short_notes, notes, "notes",
                     short_notes, 0.0);
  struct Metre {
    const char* what;
    int beats_per_bar, beat_length;
  };
  for (const Metre& metre : {Metre{"clicks from their notes, ten minutes of 4/4, / a step", 4, 4},
                             {"clicks from their notes, ten minutes of 2/2, / a step", 2, 2},
                             {"clicks from their notes, ten minutes of 6/8, / a step", 6, 8}}) {
    const auto tune = TenMinutes(metre.beats_per_bar, metre.beat_length);
    const double farthest = FarthestClick(platform, *tune);
    if (farthest < 0.0) {
      std::fprintf(stderr, "clicks and notes do not pair\n");
      return 1;
    }
    const double step = tune->TimerInterval();
    bench::PrintFigure(metre.what, farthest, step, "ms", farthest / step, 1.0);
  }
  return bench::over_limit ? 3 : 0;
}
