// Draws one bar of one track of a tune: staff, clef, signatures, notes, rests, heading and words.
//
// Has no widget: it records into two drawings. Every length is a multiple of LineGap, the distance between
// two staff lines, which is a twelfth of the surface's height. Coordinates are twips.
#pragma once

#include <QHash>
#include <QPointF>
#include <QRectF>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "model/property.h"
#include "model/tune.h"
#include "notation/drawing.h"
#include "notation/staff_steps.h"

namespace zelmar {

// Colour words of notes.
inline constexpr const char16_t* kBlackWord = u"Black";
inline constexpr const char16_t* kRedWord = u"Red";
inline constexpr const char16_t* kBlueWord = u"Blue";

class BarDrawing {
 public:
  // A picture that is laid over the staff.
  struct Picture {
    QRectF place;
    bool visible = false;
  };

  // The system's colour of button texts.
  static constexpr std::uint32_t kButtonText = 0x80000012U;

  BarDrawing();
  virtual ~BarDrawing();

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
  float LineGap() const { return LineGap_; }
  float StaffWidth() const { return StaffWidth_; }
  float ClefWidth() const { return ClefWidth_; }
  float KeyWidth() const { return KeyWidth_; }
  float TimeWidth() const { return TimeWidth_; }
  float NotesLeft() const { return NotesLeft_; }
  // x of a place in the bar.
  float XOf(std::int16_t beat, std::int16_t tick) const;
  float YOfStep(int step) const { return 8.5F * LineGap_ - static_cast<float>(step) * LineGap_ / 2.0F; }
  // The natural pitch of the line or space at `y`; `pitch` stays as it is where there is none.
  void FindPitch(float x, float y, std::int16_t& pitch) const;

  // --- The bar ---

  // Takes over the tune: its rests, bar count and measure. Null for none.
  void Attach(std::shared_ptr<Tune> tune);
  // For a row of staves, which has counted the bars once for all of them.
  void Attach(std::shared_ptr<Tune> tune, std::int16_t bar_count);
  const std::shared_ptr<Tune>& ThisTune() const { return tune_; }
  std::int16_t BarCount() const { return bar_count_; }
  std::int16_t TicksPerBeat() const { return ticks_per_beat_; }
  std::int16_t BeatsPerBar() const { return beats_per_bar_; }

  virtual void ClearStaff();
  void DrawStaff();
  void DrawClef(const QString& clef);
  void DrawKey(const QString& clef);
  void DrawTime();
  // The indices are places in Tones of the notes to be shown in red and blue; 0 for none.
  virtual void DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index = 0,
                          std::int32_t blue_index = 0);
  void WriteInfo(std::int16_t bar);
  void DisplayRests(std::int16_t bar, std::int16_t track);
  void DrawRest(const Rest& rest);

  // --- Notes ---

  void SetupChordStore();
  void AddToChord(const std::shared_ptr<Tone>& tone, bool first_in_bar,
                  const QString& colour = QString::fromUtf16(kBlackWord));
  // A chord of more than 20 notes is not drawn; a message tells of it once in the life of the tune.
  void PrintChord();
  void DrawNote(const Tone& tone, const QString& colour = QString::fromUtf16(kBlackWord));
  void DrawNoteSymbol(const Tone& tone, const QString& colour);
  void DrawStem(std::int16_t pitch, int flags, const QString& colour);
  void CancelHangingQuaver(int flags, int which);
  void DrawNatural(const Tone& tone);
  void DrawSharp(const Tone& tone, bool in_key_signature);
  void DrawFlat(const Tone& tone, bool in_key_signature);

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
  float LineGap_ = 0.0F;
  float StaffWidth_ = 0.0F;
  float ClefWidth_ = 0.0F;
  float KeyWidth_ = 0.0F;
  float TimeWidth_ = 0.0F;
  float NotesLeft_ = 0.0F;

  static constexpr std::uint32_t kSystemColourBit = 0x80000000U;
  static constexpr std::size_t kLargestChord = 20;

  // Where a note waits for its beam partner: pen, stem and colour as they were when it was drawn.
  struct SavedStem {
    float pen_x = 0.0F;
    float pen_y = 0.0F;
    float end_x = 0.0F;
    float end_y = 0.0F;
    std::uint8_t direction = kUndecided;
    std::int16_t pitch = 0;
    QString colour;
    std::size_t line = 0;  // its place among the primitives
  };

  struct Position {
    std::int16_t bar = 0;
    std::int16_t beat = 0;
    std::int16_t tick = 0;
    bool operator==(const Position&) const = default;
  };

  static constexpr std::uint8_t kUndecided = 0;
  static constexpr std::uint8_t kUp = 1;
  static constexpr std::uint8_t kDown = 2;

  InkColour PenColour() const;
  std::int16_t KeySignature() const;
  bool CompoundTime() const { return ticks_per_beat_ == 60; }
  float BeatWidth() const;

  void StartBar();
  void EndBar();
  void DrawNotesOfBar(std::int16_t bar, std::int16_t track, std::int32_t red_index, std::int32_t blue_index);
  void ConfineTimeSignature();
  bool FillsBar(const Rest& rest) const;
  // Boxes of what was drawn for the notes of the bar, as far as they reach into `box`.
  std::vector<QRectF> NotesWithin(const QRectF& box) const;
  void WriteHeading(const QString& text, InkColour ink, double left);
  void WriteBarNumber(std::int16_t bar);
  void WriteWords(std::int16_t bar);
  QString TrackLabel() const;

  std::optional<int> ShownStep(const Tone& tone) const;
  std::uint8_t DirectionOfChord(const std::vector<std::shared_ptr<Tone>>& notes) const;
  // The chord that begins with `note`.
  void TellOfLargeChord(const Tone& note);
  const Tone* FlagBearer(const std::vector<std::shared_ptr<Tone>>& notes) const;
  void JoinStems(const std::vector<std::shared_ptr<Tone>>& notes, const QString& colour);
  void DrawAccidental(const Tone& tone);
  void DrawLedgerLines();

  double FirstValue(const Tone& tone) const;
  bool IsSplit(const Tone& tone) const;
  void DrawSplit(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawMinimLong(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawWritten(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawRestAfter(const Tone& tone);
  void DrawFlagged(const Tone& tone, int flags, const QString& colour);
  void DrawOfPair(const Tone& tone, int flags, const QString& colour);
  void DrawOfThree(const Tone& tone, const QString& colour);
  void DrawBeam(int flags, const QString& colour);
  void ReachBeam(const SavedStem& stem);
  bool Continues(const Tone& tone, double duration) const;
  void SettleHanging(const Tone& tone, double duration);
  void BreakGroup();
  SavedStem SaveStem(const Tone& tone, const QString& colour) const;

  float PenX_ = 0.0F;
  float PenY_ = 0.0F;
  float HeadX_ = 0.0F;
  bool HeadDisplaced_ = false;
  std::int16_t NoteStep_ = 0;
  std::uint8_t StemDirection_ = kUndecided;
  float StemEndX_ = 0.0F;
  float StemEndY_ = 0.0F;
  std::array<bool, kStepCount> AccidentalShown_{};  // by step, -4 first

  bool HangingQuaver_ = false;
  bool HangingSemiquaver_ = false;
  Tone HangingTone_;
  std::uint8_t HangingCount_ = 0;  // quavers of a group of three so far
  SavedStem first_hanging_;
  SavedStem second_hanging_;

  std::shared_ptr<Tune> ChordStore_;
  QHash<QString, QString> ChordColours_;  // colour word by AbsRef
  Position ChordPosition_;
  const Tone* flag_bearer_ = nullptr;  // of the chord being printed
  bool in_chord_ = false;
  bool rest_drawn_ = false;
  std::uint32_t turn_ = 0;      // counts the bars drawn
  std::size_t notes_from_ = 0;  // the first of the notes among the primitives of the bar
  // Gone when the drawing is: a message may outlive it.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);

  std::shared_ptr<Tune> tune_;
  std::shared_ptr<Rests> rests_;
  std::int16_t bar_count_ = 0;
  std::int16_t ticks_per_beat_ = 120;
  std::int16_t beats_per_bar_ = 4;

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
