#include "store/tune_rows.h"

#include "store/recordset.h"

namespace zelmar {

namespace {

// Null is no invalid mode to warn of: the row was written before tunes had one.
QString ModeOfRow(const Recordset& row) {
  const auto field = row.Field(QStringLiteral("MIDIMode"));
  return row.IsNull(field) ? QStringLiteral("GM") : row.Text(field);
}

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

}  // namespace zelmar
