// Every tune that ships is saved and loaded again, and is the same.
#include "store/saving_fixture.h"
#include "support/template_database.h"

namespace zelmar::testing_support {
namespace {

// All that a tune is, as lines; events by their number, since those of one moment come in any order.
QStringList LinesOf(Tune& tune) {
  const auto line = [](const auto&... values) {
    QStringList fields;
    (fields.append(QVariant(values).toString()), ...);
    return fields.join(u'|');
  };
  QStringList lines;
  lines << line(tune.FileName(), tune.Title(), tune.Description(), tune.Composer(), tune.Category(),
                tune.SoloInstrument(), tune.Ensemble(), tune.Style(), tune.Country(), tune.Length())
        << line(tune.Rank(), tune.Tempo(), tune.BeatsPerBar(), tune.BeatLength(), tune.KeySignature(),
                tune.KeyMode(), tune.MIDIMode(), tune.MelodyTrack(), tune.AccompPattern());
  for (const auto& track : *tune.Tracks())
    lines << line(track->TrackNumber(), track->Description(), track->Channel(), track->Instrument(),
                  track->Muted(), track->BankMSB0(), track->BankLSB32());
  for (const auto& word : *tune.Words())
    lines << line(word->Bar(), word->Beat(), word->Tick(), word->WordText());
  for (const auto& theme : *tune.Themes())
    lines << line(theme->ThemeNo(), theme->ThemeStartBar(), theme->ThemeEndBar(), theme->ThemeNotes(),
                  theme->TrackNumber(), theme->Rank());
  std::map<std::int32_t, QString> events;
  for (const auto& tone : tune)
    if (tone->EventType() != MUSIC_NOTE_OFF)
      events[tone->AbsRef()] = line(tone->AbsRef(), tone->EventType(), tone->Pitch(), tone->EnHarmonic(),
                                    QString::number(tone->Duration(), 'g', 17), tone->Volume(),
                                    tone->OldVolume(), tone->Instrument(), tone->Bar(), tone->Beat(),
                                    tone->Tick(), tone->Track(), tone->Channel(), tone->BeatsPerBar());
  for (const auto& [abs_ref, event] : events) lines << event;
  return lines;
}

TEST_F(SavingTest, EveryTuneThatShipsIsTheSameAfterASave) {
  const TemplateDatabase shipped(QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb"));
  ASSERT_FALSE(shipped.Path().isEmpty()) << "the build made no template database";
  QStringList names;
  {
    const auto rows = Recordset::OpenTable(Connection::Open(shipped.Path()), QStringLiteral("tblMelodies"));
    for (; !rows->Eof(); rows->MoveNext()) names.append(rows->Text(QStringLiteral("CodeName")));
  }
  EXPECT_GE(names.size(), 10);
  for (const QString& name : names) {
    const auto tune = Load(name);
    ASSERT_NE(tune, nullptr);
    const QStringList before = LinesOf(*tune);
    const qsizetype count = tune->Count();
    bool failed = true;
    SaveTune(tune, name, failed, SavePortion::kAll);
    EXPECT_FALSE(failed);
    EXPECT_EQ(LinesOf(*tune), before) << name.toStdString();
    const auto again = Load(name);
    EXPECT_NE(again, tune);
    EXPECT_EQ(again->Count(), count);
    EXPECT_EQ(LinesOf(*again), before) << name.toStdString();
  }
  EXPECT_TRUE(Boxes().isEmpty());
}

}  // namespace
}  // namespace zelmar::testing_support
