// Every note of every tune that ships sounds as long as it is written, also where it repeats the one before.
#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlQuery>

#include "model/main_window_link.h"
#include "store/tune_loader.h"
#include "support/sounding_notes.h"
#include "support/template_database.h"

namespace zelmar {
namespace {

using namespace testing_support;

class WrittenLengths : public ::testing::Test {
 protected:
  WrittenLengths() { platform_.events->step_microseconds = 0; }

  void Play(Tune& tune) {
    platform_.midi->sent.clear();
    tune.SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    // From what the single holds of the moment.
    start_ = tune.MelodyStartTime();
    tune.Play();
  }

  void ExpectEveryNoteAtItsLength(const Tune& tune) {
    const auto written = WrittenNotes(tune);
    const auto heard = HeardFor(written, HeardNotes(platform_.midi->sent, start_));
    ASSERT_EQ(heard.size(), written.size()) << "the notes that sound are not those that are written";
    for (std::size_t i = 0; i < written.size(); ++i) {
      const WrittenNote& note = written[i];
      const double length = heard[i].end - heard[i].start;
      EXPECT_GE(length, note.end - note.start - AllowedLoss(note, tune) - 0.01) << "note " << i + 1;
      EXPECT_NEAR(heard[i].start, note.start, AllowedLoss(note, tune) + 0.01) << "note " << i + 1;
    }
  }

  ScriptedPlatform platform_;
  double start_ = 0.0;
};

TEST_F(WrittenLengths, AreHeardInEveryTuneThatShips) {
  const TemplateDatabase library{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
  ASSERT_FALSE(library.Path().isEmpty()) << "the build made no template database";
  QStringList names;
  {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("lengths"));
    database.setDatabaseName(library.Path());
    ASSERT_TRUE(database.open());
    QSqlQuery query(database);
    ASSERT_TRUE(query.exec(QStringLiteral("SELECT CodeName FROM tblMelodies")));
    while (query.next()) names.append(query.value(0).toString());
  }
  QSqlDatabase::removeDatabase(QStringLiteral("lengths"));
  ASSERT_GE(names.size(), 16);
  for (QString name : names) {
    SCOPED_TRACE(qPrintable(name));
    TuneLoader loader;
    loader.DoLoad(name);
    ASSERT_TRUE(loader.LoadedOk());
    const auto tune = TheMainWindow().MyTune();
    Play(*tune);
    ExpectEveryNoteAtItsLength(*tune);
  }
}

// A tune of this test: notes by bar, beat, length in crotchets, pitch, track.
struct Row {
  std::int16_t bar, beat;
  double crotchets;
  const char* pitch;
  std::uint8_t track;
};

std::shared_ptr<Tune> TuneOf(std::initializer_list<Row> rows) {
  const auto tune = std::make_shared<Tune>();
  for (const Row& row : rows) {
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(tune->LastAbsRef() + 1);
    tone->SetBar(row.bar);
    tone->SetBeat(row.beat);
    tone->SetDuration(row.crotchets);
    tone->SetPitch(QString::fromLatin1(row.pitch));
    tone->SetTrack(row.track);
    tune->Add(tone);
  }
  tune->CalcNotesOff();
  return tune;
}

TEST_F(WrittenLengths, HoldAcrossTracksOfOneChannel) {
  const auto tune = TuneOf({{1, 1, 1.0, "C4", 2},
                            {1, 2, 1.0, "C4", 1},
                            {1, 3, 2.0, "C4", 2},
                            {2, 1, 1.0, "C4", 1},
                            {1, 1, 4.0, "G4", 3},
                            {2, 1, 4.0, "G4", 4}});
  Play(*tune);
  ExpectEveryNoteAtItsLength(*tune);
}

TEST_F(WrittenLengths, HoldBesideANoteWithoutLength) {
  const auto tune = TuneOf({{1, 1, 1.0, "C4", 1},
                            {1, 2, 1.0, "C4", 1},
                            {1, 2, 0.0, "C4", 2},
                            {1, 3, 0.0, "C4", 1},
                            {1, 3, 1.0, "E4", 1}});
  Play(*tune);
  ExpectEveryNoteAtItsLength(*tune);
  // The notes without length were heard too, for one step of the timer.
  int short_notes = 0;
  for (const HeardNote& note : HeardNotes(platform_.midi->sent, start_))
    short_notes += note.end - note.start < 2.1;
  EXPECT_EQ(short_notes, 2);
}

TEST_F(WrittenLengths, HoldAfterTheTuneIsSortedAnewInTheMiddle) {
  const auto tune = TuneOf({{1, 1, 1.0, "C4", 1}, {1, 2, 1.0, "C4", 1}, {1, 3, 1.0, "C4", 1}});
  tune->SortStartTimes();
  bool sorted = false;
  platform_.events->on_serve = [&](int) {
    if (sorted || SecondsSinceMidnight() < start_ + 0.7) return;
    sorted = true;
    tune->SortStartTimes();
  };
  Play(*tune);
  EXPECT_TRUE(sorted);
  ExpectEveryNoteAtItsLength(*tune);
}

}  // namespace
}  // namespace zelmar
