// Every tune that ships, played whole on the virtual clock: the full list of messages and their moments
// against one worked out here from the rows of the database alone.
#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>
#include <map>

#include "model/main_window_link.h"
#include "model/tune.h"
#include "store/tune_loader.h"
#include "support/scripted_services.h"
#include "support/template_database.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;
using testing_support::SentMessage;

// One thing that playback does: when it is due and what goes out for it. A tempo change sends nothing.
struct Expected {
  double due_ms = 0.0;
  double not_before_ms = 0.0;  // after the bangs that others take
  std::vector<QByteArray> messages;
};

struct Row {
  int type;
  double pulse;
  int track;
  double crotchets;
  int instrument;
  QString pitch;
  int volume;
};

QByteArray Bytes(std::initializer_list<int> values) {
  QByteArray bytes;
  for (const int value : values) bytes.append(static_cast<char>(value));
  return bytes;
}

int MidiNumber(const QString& pitch) {
  static const std::map<QChar, int> letters = {{u'C', 0}, {u'D', 2}, {u'E', 4}, {u'F', 5},
                                               {u'G', 7}, {u'A', 9}, {u'B', 11}};
  int number = letters.at(pitch.front()) + 12 * (pitch.back().digitValue() + 1);
  if (pitch.contains(u'#')) ++number;
  if (pitch.contains(u'b')) --number;
  return number;
}

class ShippedTunes : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(library_.Path().isEmpty()) << "the build made no template database";
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("shipped"));
    database.setDatabaseName(library_.Path());
    ASSERT_TRUE(database.open()) << qPrintable(database.lastError().text());
    platform_.events->step_microseconds = 0;
  }
  void TearDown() override { QSqlDatabase::removeDatabase(QStringLiteral("shipped")); }

  static QSqlQuery Select(const QString& statement) {
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("shipped")));
    EXPECT_TRUE(query.exec(statement)) << qPrintable(query.lastError().text());
    return query;
  }

  static QStringList CodeNames() {
    QStringList names;
    for (auto query = Select(QStringLiteral("SELECT CodeName FROM tblMelodies")); query.next();)
      names.append(query.value(0).toString());
    return names;
  }

  ScriptedPlatform platform_;
  testing_support::TemplateDatabase library_{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
};

// The rows of a tune in pulses of 120 to the crotchet.
std::vector<Row> ReadRows(QSqlQuery query, int beats_per_bar, int beat_length) {
  std::vector<Row> rows;
  while (query.next()) {
    const double beats = (query.value(1).toInt() - 1) * beats_per_bar + query.value(2).toInt() - 1;
    rows.push_back({query.value(0).toInt(), beats * 480.0 / beat_length + query.value(3).toInt(),
                    query.value(4).toInt(), query.value(5).toDouble(), query.value(6).toInt(),
                    query.value(7).toString(), query.value(8).toInt()});
  }
  return rows;
}

// Milliseconds from the start to a pulse, through the tempo changes.
double MillisecondsAt(double pulse, int tempo, const std::vector<Row>& rows) {
  std::map<double, int> changes;
  for (const Row& row : rows)
    if (row.type == 133) changes[row.pulse] = row.volume * 128 + row.instrument;
  double time = 0.0, from = 0.0, crotchet = std::round(60000.0 / tempo);
  for (const auto& [place, new_tempo] : changes) {
    if (place >= pulse) break;
    time += (place - from) * crotchet / 120.0;
    from = place;
    crotchet = std::round(60000.0 / new_tempo);
  }
  return time + (pulse - from) * crotchet / 120.0;
}

std::vector<Expected> WorkOut(const std::vector<Row>& rows, const std::map<int, int>& channels, int tempo) {
  std::vector<Expected> list;
  for (const Row& row : rows) {
    const int channel = channels.contains(row.track) ? channels.at(row.track) - 1 : 0;
    Expected expected;
    expected.due_ms = MillisecondsAt(row.pulse, tempo, rows);
    if (row.type == 128) {
      const int number = MidiNumber(row.pitch);
      expected.messages = {Bytes({0xC0 + channel, row.instrument}),
                           Bytes({0x90 + channel, number, row.volume})};
      Expected end;
      end.due_ms = MillisecondsAt(row.pulse + row.crotchets * 120.0, tempo, rows);
      end.messages = {Bytes({0x90 + channel, number, 0})};
      list.push_back(end);
    } else if (row.type < 128) {
      expected.messages = {Bytes({0xB0 + channel, row.type, row.volume})};
    } else if (row.type == 131) {
      expected.messages = {Bytes({0xE0 + channel, row.instrument, row.volume})};
    }
    list.push_back(expected);
  }
  std::stable_sort(list.begin(), list.end(),
                   [](const Expected& a, const Expected& b) { return a.due_ms < b.due_ms - 0.01; });
  double bang = -2.0;
  for (Expected& expected : list) {
    bang = std::max(bang + 2.0, std::ceil(expected.due_ms / 2.0 - 1e-6) * 2.0);
    expected.not_before_ms = bang;
  }
  return list;
}

// Messages of one moment may leave in any order, so each moment is compared as a set.
struct Moment {
  double first_ms;
  double last_ms;
  std::vector<QByteArray> messages;
};

std::vector<Moment> Moments(const std::vector<Expected>& list) {
  std::vector<Moment> moments;
  double due = -1.0;
  for (const Expected& expected : list) {
    if (moments.empty() || expected.due_ms > due + 0.01) moments.push_back({expected.not_before_ms, 0.0, {}});
    due = expected.due_ms;
    moments.back().last_ms = expected.not_before_ms;
    for (const QByteArray& message : expected.messages) moments.back().messages.push_back(message);
  }
  return moments;
}

TEST_F(ShippedTunes, SendEveryMessageAtItsMoment) {
  const QStringList names = CodeNames();
  ASSERT_GE(names.size(), 24);
  for (QString name : names) {
    SCOPED_TRACE(qPrintable(name));
    auto tune_row =
        Select(QStringLiteral("SELECT BeatsPerBar, BeatLength, Tempo, MIDIMode FROM tblMelodies WHERE "
                              "CodeName = '%1'")
                   .arg(name));
    ASSERT_TRUE(tune_row.next());
    const int tempo = tune_row.value(2).toInt();
    const auto rows =
        ReadRows(Select(QStringLiteral("SELECT EventType, Bar, Beat, Tick, Track, Duration, Instrument, "
                                       "Pitch, Volume FROM [%1]")
                            .arg(name)),
                 tune_row.value(0).toInt(), tune_row.value(1).toInt());
    std::map<int, int> channels;
    std::vector<QByteArray> prelude;
    for (int channel = 0; channel < 16; ++channel) {
      prelude.push_back(Bytes({0xB0 + channel, 7, 127}));
      prelude.push_back(Bytes({0xB0 + channel, 11, 127}));
    }
    if (tune_row.value(3).toString() == QLatin1String("GM2"))
      prelude.push_back(Bytes({0xF0, 0x7E, 0x7F, 9, 1, 0xF7}));
    if (tune_row.value(3).toString() == QLatin1String("GS"))
      prelude.push_back(Bytes({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0, 0x7F, 0, 0x41, 0xF7}));
    for (auto query =
             Select(QStringLiteral("SELECT TrackNo, Channel, DefaultBankMSB, DefaultBankLSB FROM tblTracks "
                                   "WHERE CodeName = '%1' ORDER BY TrackNo")
                        .arg(name));
         query.next();) {
      const int channel = query.value(1).toInt();
      channels[query.value(0).toInt()] = channel;
      prelude.push_back(Bytes({0xB0 + channel - 1, 0, query.value(2).toInt()}));
      prelude.push_back(Bytes({0xB0 + channel - 1, 32, query.value(3).toInt()}));
    }

    TuneLoader loader;
    loader.DoLoad(name);
    ASSERT_TRUE(loader.LoadedOk());
    const auto tune = TheMainWindow().MyTune();
    platform_.midi->sent.clear();
    const double start = SecondsSinceMidnight();
    tune->SetMelodyStartTime(static_cast<float>(start));
    tune->Play();

    const auto& sent = platform_.midi->sent;
    ASSERT_GE(sent.size(), prelude.size());
    for (std::size_t i = 0; i < prelude.size(); ++i) ASSERT_EQ(sent[i].bytes, prelude[i]) << "message " << i;
    std::size_t next = prelude.size();
    int number = 0;
    for (Moment& moment : Moments(WorkOut(rows, channels, tempo))) {
      ++number;
      std::vector<QByteArray> came;
      for (std::size_t i = 0; i < moment.messages.size() && next < sent.size(); ++i, ++next) {
        const double at = (sent[next].seconds - start) * 1000.0;
        // A position is rounded to a whole millisecond before it is compared, which may move it by one bang.
        ASSERT_GE(at, moment.first_ms - 2.1) << "moment " << number;
        ASSERT_LE(at, moment.last_ms + 2.1) << "moment " << number;
        came.push_back(sent[next].bytes);
      }
      std::sort(came.begin(), came.end());
      std::sort(moment.messages.begin(), moment.messages.end());
      ASSERT_EQ(came, moment.messages) << "moment " << number;
    }
    EXPECT_EQ(next, sent.size());
  }
}

}  // namespace
}  // namespace zelmar
