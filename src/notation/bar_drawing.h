// Draws one bar of one track of a tune: staff, clef, signatures, notes, rests, heading and words.
//
// Has no widget and asks nobody anything: it records into two drawings, and tells what it could not draw.
// Every length is a multiple of LineGap, the distance between two staff lines, which is a twelfth of the
// surface's height. Coordinates are twips.
#pragma once

#include <QPointF>
#include <QRectF>
#include <memory>
#include <vector>

#include "model/property.h"
#include "model/tune.h"
#include "notation/bar_frame.h"
#include "notation/bar_notes.h"
#include "notation/drawing.h"
#include "notation/staff_steps.h"

namespace zelmar {

class BarDrawing {
 public:
  // A picture that is laid over the staff.
  struct Picture {
    QRectF place;
    bool visible = false;
  };

  // The system's colour of button texts.
  static constexpr std::uint32_t kButtonText = 0x80000012U;

  virtual ~BarDrawing() = default;

  // --- Surfaces ---

  // Size of the staff's surface and height of the whole control, in twips.
  void SetSurfaceSize(double width, double height, double control_height);
  const Drawing& StaffDrawing() const { return staff_; }
  const Drawing& WordsDrawing() const { return words_; }
  const Picture& imgTreble() const { return imgTreble_; }
  const Picture& imgBass() const { return imgBass_; }

  // --- Geometry ---

  // Recomputes LineGap and StaffWidth from the surface.
  void SetScale();
  // SetScale, and the widths at the head of the staff with NotesLeft.
  void MeasureHead();
  float LineGap() const { return frame_.line_gap; }
  float StaffWidth() const { return frame_.staff_width; }
  float ClefWidth() const { return ClefWidth_; }
  float KeyWidth() const { return KeyWidth_; }
  float TimeWidth() const { return TimeWidth_; }
  float NotesLeft() const { return frame_.notes_left; }
  // x of a place in the bar.
  float XOf(std::int16_t beat, std::int16_t tick) const { return frame_.XOf(beat, tick); }
  float YOfStep(int step) const { return frame_.YOfStep(step); }
  // The natural pitch of the line or space at `y`; `pitch` stays as it is where there is none.
  void FindPitch(float x, float y, std::int16_t& pitch) const;

  // --- The bar ---

  // Takes over the tune: its rests, bar count and measure. Null for none.
  void Attach(std::shared_ptr<Tune> tune);
  // For a row of staves, which has counted the bars once for all of them.
  void Attach(std::shared_ptr<Tune> tune, std::int16_t bar_count);
  const std::shared_ptr<Tune>& ThisTune() const { return tune_; }
  std::int16_t BarCount() const { return bar_count_; }
  std::int16_t TicksPerBeat() const { return frame_.ticks_per_beat; }
  std::int16_t BeatsPerBar() const { return frame_.beats_per_bar; }

  virtual void ClearStaff();
  void DrawStaff();
  void DrawClef(const QString& clef);
  void DrawKey(const QString& clef);
  void DrawTime();
  // The indices are places in Tones of the notes to be shown in red and blue; 0 for none. Gives the places of
  // the chords that were too large to be drawn.
  std::vector<ChordPlace> DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index = 0,
                                     std::int32_t blue_index = 0);
  // What draws notes into the bar, on top of what is there. Good until the measures, the tune or the bar
  // change.
  BarNotes StartNotes();
  void WriteInfo(std::int16_t bar);
  void DisplayRests(std::int16_t bar, std::int16_t track);
  void DrawRest(const Rest& rest);

  // --- Alignment ---

  void AlignNote(Tone& tone, bool save_durations, bool align_boundaries) const;
  void RoundBoundary(Tone& tone, std::int16_t grid) const;

 protected:
  void SetBarCount(std::int16_t count) { bar_count_ = count; }
  Drawing& StaffSurfaceDrawing() { return staff_; }
  Drawing& WordsSurfaceDrawing() { return words_; }
  // Colour of the system with that number's low byte, for ForeColor.
  virtual InkColour SystemColour(std::uint32_t colour) const;

 private:
  Drawing staff_;
  Drawing words_;
  Picture imgTreble_;
  Picture imgBass_;
  double surface_width_ = 0.0;
  double surface_height_ = 0.0;
  double control_height_ = 0.0;
  BarFrame frame_;
  float ClefWidth_ = 0.0F;
  float KeyWidth_ = 0.0F;
  float TimeWidth_ = 0.0F;

  static constexpr std::uint32_t kSystemColourBit = 0x80000000U;

  InkColour PenColour() const;
  std::int16_t KeySignature() const;

  void CollectNotes(BarNotes& notes, std::int16_t bar, std::int16_t track, std::int32_t red_index,
                    std::int32_t blue_index) const;
  void ConfineTimeSignature();
  // Boxes of what was drawn for the notes of the bar, as far as they reach into `box`.
  std::vector<QRectF> NotesWithin(const QRectF& box) const;
  void WriteHeading(const QString& text, InkColour ink, double left);
  void WriteBarNumber(std::int16_t bar);
  void WriteWords(std::int16_t bar);
  QString TrackLabel() const;

  std::size_t notes_from_ = 0;  // the first of the notes among the primitives of the bar
  std::shared_ptr<Tune> tune_;
  std::shared_ptr<Rests> rests_;
  std::int16_t bar_count_ = 0;

  ZELMAR_PROPERTY(bool, ShowClef, true)
  ZELMAR_PROPERTY(bool, ShowTime, true)
  ZELMAR_PROPERTY(bool, ShowTitle, true)
  ZELMAR_PROPERTY(bool, ShowWords, false)
  ZELMAR_PROPERTY(bool, ShowRests, false)
  ZELMAR_PROPERTY(bool, ShowTrack, true)
  ZELMAR_PROPERTY(bool, BeamingOn, true)
  ZELMAR_PROPERTY(bool, SaveDurations, false)
  ZELMAR_PROPERTY(bool, AlignBoundaries, false)
  ZELMAR_PROPERTY(std::uint32_t, ForeColor, kButtonText)
  ZELMAR_PROPERTY(std::int16_t, BarOffset, 0)  // place of this staff in a row
  ZELMAR_PROPERTY(std::uint8_t, MiddleLedgerLines, 2)
  ZELMAR_PROPERTY(std::uint8_t, SelectedTrack, 1)
  ZELMAR_PROPERTY(std::int32_t, NoteColour1, 0)  // place in Tones of the note shown in red
  ZELMAR_PROPERTY(std::int32_t, NoteColour2, 0)  // and in blue
  ZELMAR_PROPERTY(QString, Clef, QStringLiteral("Treble"))
};

}  // namespace zelmar
