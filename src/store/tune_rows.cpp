#include "store/tune_rows.h"

#include "store/recordset.h"

namespace zelmar {

namespace {

// Null is no invalid mode to warn of: the row was written before tunes had one.
QString ModeOfRow(const Recordset& row) {
  const auto field = row.Field(QStringLiteral("MIDIMode"));
  return row.IsNull(field) ? QStringLiteral("GM") : row.Text(field);
}

// One of the texts of the catalogue that is never stored empty, and what stands for nothing.
struct CatalogueText {
  const char16_t* field;
  const QString& (Tune::*get)() const;
  void (Tune::*set)(const QString&);
  const char16_t* when_empty;
};

constexpr CatalogueText kCatalogueTexts[] = {
    {u"Description", &Tune::Description, &Tune::SetDescription, u" "},
    {u"Composer", &Tune::Composer, &Tune::SetComposer, u" "},
    {u"Country", &Tune::Country, &Tune::SetCountry, u" "},
    {u"Category", &Tune::Category, &Tune::SetCategory, u" "},
    {u"SoloInstrument", &Tune::SoloInstrument, &Tune::SetSoloInstrument, u" "},
    {u"Ensemble", &Tune::Ensemble, &Tune::SetEnsemble, u" "},
    {u"Length", &Tune::Length, &Tune::SetLength, u"Test"},
    {u"Style", &Tune::Style, &Tune::SetStyle, u" "},
};

}  // namespace

std::shared_ptr<Tune> TuneOfRow(const Recordset& row) {
  auto tune = std::make_shared<Tune>();
  tune->SetDescription(row.TextOrBlank(QStringLiteral("Description")));
  tune->SetBeatLength(row.Number<std::uint8_t>(QStringLiteral("BeatLength")));
  tune->SetBeatsPerBar(row.Number<std::int16_t>(QStringLiteral("BeatsPerBar")));
  tune->SetFileName(row.Text(QStringLiteral("CodeName")));
  tune->SetKeyMode(row.Number<std::uint8_t>(QStringLiteral("KeyMode")));
  tune->SetKeySignature(row.Number<std::int16_t>(QStringLiteral("KeySignature")));
  tune->SetTempo(row.Number<std::int16_t>(QStringLiteral("Tempo")));
  tune->SetMIDIMode(ModeOfRow(row));
  tune->SetTitle(row.TextOrBlank(QStringLiteral("Title")));
  tune->SetAccompPattern(row.Number<std::uint8_t>(QStringLiteral("AccompPattern")));
  tune->SetMelodyTrack(row.Number<std::uint8_t>(QStringLiteral("MelodyTrack")));
  tune->SetRank(row.Number<std::int16_t>(QStringLiteral("Rank")));
  tune->SetCountry(row.TextOrBlank(QStringLiteral("Country")));
  tune->SetSorted(false);
  tune->SetCategory(row.TextOrBlank(QStringLiteral("Category")));
  tune->SetComposer(row.TextOrBlank(QStringLiteral("Composer")));
  tune->SetSoloInstrument(row.TextOrBlank(QStringLiteral("SoloInstrument")));
  tune->SetEnsemble(row.TextOrBlank(QStringLiteral("Ensemble")));
  tune->SetLength(row.TextOrBlank(QStringLiteral("Length")));
  tune->SetStyle(row.TextOrBlank(QStringLiteral("Style")));
  return tune;
}

EventFields::EventFields(const Recordset& rows)
    : event_type(rows.Field(QStringLiteral("EventType"))),
      abs_ref(rows.Field(QStringLiteral("AbsRef"))),
      bar(rows.Field(QStringLiteral("Bar"))),
      beat(rows.Field(QStringLiteral("Beat"))),
      tick(rows.Field(QStringLiteral("Tick"))),
      track(rows.Field(QStringLiteral("Track"))),
      duration(rows.Field(QStringLiteral("Duration"))),
      instrument(rows.Field(QStringLiteral("Instrument"))),
      pitch(rows.Field(QStringLiteral("Pitch"))),
      volume(rows.Field(QStringLiteral("Volume"))),
      enharmonic(rows.Field(QStringLiteral("EnHarmonic"))) {}

std::shared_ptr<Tone> ToneOfRow(const Recordset& row, const EventFields& fields) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(row.Number<std::uint8_t>(fields.event_type));
  tone->SetAbsRef(row.Number<std::int32_t>(fields.abs_ref));
  tone->SetBar(row.Number<std::int16_t>(fields.bar));
  tone->SetBeat(row.Number<std::int16_t>(fields.beat));
  tone->SetTick(row.Number<std::int16_t>(fields.tick));
  tone->SetTrack(row.Number<std::uint8_t>(fields.track));
  tone->SetDuration(row.Number<double>(fields.duration));
  tone->SetInstrument(row.Number<std::uint8_t>(fields.instrument));
  tone->SetPitch(row.Text(fields.pitch));
  tone->SetVolume(row.Number<std::uint8_t>(fields.volume));
  tone->SetOldVolume(tone->Volume());
  tone->SetEnHarmonic(row.TextOrBlank(fields.enharmonic));
  return tone;
}

void FillCatalogueRow(Recordset& row, Tune& tune, const QString& code_name) {
  row.SetValue(QStringLiteral("Title"),
               tune.Title().isEmpty() ? QStringLiteral("No title for this piece") : tune.Title());
  row.SetValue(QStringLiteral("CodeName"), code_name);
  row.SetValue(QStringLiteral("Tempo"), tune.Tempo());
  row.SetValue(QStringLiteral("MIDIMode"), tune.MIDIMode());
  row.SetValue(QStringLiteral("BeatsPerBar"), tune.BeatsPerBar());
  row.SetValue(QStringLiteral("Rank"), tune.Rank());
  row.SetValue(QStringLiteral("BeatLength"), tune.BeatLength());
  row.SetValue(QStringLiteral("MelodyTrack"), tune.MelodyTrack());
  row.SetValue(QStringLiteral("LastAbsRef"), tune.LastAbsRef());
  for (const CatalogueText& text : kCatalogueTexts) {
    if ((tune.*text.get)().isEmpty()) (tune.*text.set)(QString::fromUtf16(text.when_empty));
    row.SetValue(QString::fromUtf16(text.field), (tune.*text.get)());
  }
  row.SetValue(QStringLiteral("KeySignature"), tune.KeySignature());
  row.SetValue(QStringLiteral("KeyMode"), tune.KeyMode());
  row.SetValue(QStringLiteral("AccompPattern"), tune.AccompPattern());
}

void FillWordRow(Recordset& row, const Word& word, const QString& code_name) {
  row.SetValue(QStringLiteral("FileName"), code_name);
  row.SetValue(QStringLiteral("Bar"), word.Bar());
  row.SetValue(QStringLiteral("Beat"), word.Beat());
  row.SetValue(QStringLiteral("Tick"), word.Tick());
  row.SetValue(QStringLiteral("WordText"), word.WordText());
}

void FillThemeRow(Recordset& row, const Theme& theme, const QString& code_name) {
  row.SetValue(QStringLiteral("CodeName"), code_name);
  row.SetValue(QStringLiteral("ThemeNo"), theme.ThemeNo());
  row.SetValue(QStringLiteral("ThemeStartBar"), theme.ThemeStartBar());
  row.SetValue(QStringLiteral("ThemeEndBar"), theme.ThemeEndBar());
  row.SetValue(QStringLiteral("ThemeNotes"),
               theme.ThemeNotes().isNull() ? QStringLiteral(" ") : theme.ThemeNotes());
  row.SetValue(QStringLiteral("ThemeTrackNo"), theme.TrackNumber());
  row.SetValue(QStringLiteral("Rank"), theme.Rank());
}

void FillTrackRow(Recordset& row, const Track& track, const QString& code_name) {
  row.SetValue(QStringLiteral("CodeName"), code_name);
  row.SetValue(QStringLiteral("trackno"), track.TrackNumber());
  row.SetValue(QStringLiteral("TrackName"),
               track.Description().isEmpty()
                   ? QStringLiteral("Track Number ") + QString::number(track.TrackNumber())
                   : track.Description());
  row.SetValue(QStringLiteral("Channel"), track.Channel());
  row.SetValue(QStringLiteral("DefaultInstrument"), track.Instrument());
  row.SetValue(QStringLiteral("Muted"), track.Muted());
  row.SetValue(QStringLiteral("DefaultBankMSB"), track.BankMSB0());
  row.SetValue(QStringLiteral("DefaultBankLSB"), track.BankLSB32());
}

void FillEventRow(Recordset& row, const EventFields& fields, const Tone& tone) {
  row.SetValue(fields.event_type, tone.EventType());
  row.SetValue(fields.track, tone.Track());
  row.SetValue(fields.pitch, tone.Pitch());
  row.SetValue(fields.enharmonic, tone.EnHarmonic());
  row.SetValue(fields.duration, tone.Duration());
  row.SetValue(fields.volume, tone.Volume());
  row.SetValue(fields.instrument, tone.Instrument());
  row.SetValue(fields.bar, tone.Bar());
  row.SetValue(fields.beat, tone.Beat());
  row.SetValue(fields.tick, tone.Tick());
  row.SetValue(fields.abs_ref, tone.AbsRef());
}

}  // namespace zelmar
