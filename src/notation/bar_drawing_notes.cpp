#include "notation/bar_drawing.h"
#include "notation/staff_alignment.h"

namespace zelmar {
void BarDrawing::DisplayBar(std::int16_t, std::int16_t, std::int32_t, std::int32_t) {
  MeasureHead();
  ClearStaff();
  DrawStaff();
  if (ShowClef()) DrawClef(Clef());
}
void BarDrawing::WriteInfo(std::int16_t) {}
void BarDrawing::DisplayRests(std::int16_t, std::int16_t) {}
void BarDrawing::DrawRest(const Rest&) {}
void BarDrawing::SetupChordStore() {}
void BarDrawing::AddToChord(const std::shared_ptr<Tone>&, bool, const QString&) {}
void BarDrawing::PrintChord() {}
void BarDrawing::DrawNote(const Tone&, const QString&) {}
void BarDrawing::DrawNoteSymbol(const Tone&, const QString&) {}
void BarDrawing::DrawStem(std::int16_t, int, const QString&) {}
void BarDrawing::CancelHangingQuaver(int, int) {}
void BarDrawing::DrawNatural(const Tone&) {}
void BarDrawing::DrawSharp(const Tone&, bool) {}
void BarDrawing::DrawFlat(const Tone&, bool) {}
void BarDrawing::AlignNote(Tone& tone, bool save_durations, bool align_boundaries) const {
  zelmar::AlignNote(tone, {ticks_per_beat_, beats_per_bar_}, save_durations, align_boundaries);
}
void BarDrawing::RoundBoundary(Tone& tone, std::int16_t grid) const {
  zelmar::RoundBoundary(tone, {ticks_per_beat_, beats_per_bar_}, grid);
}
}  // namespace zelmar
