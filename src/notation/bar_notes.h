// Draws the notes of one bar: chords, heads, stems, flags, beams, dots, ties, signs and ledger lines.
//
// Made for each bar and gone with it, it holds what one note leaves to those behind it: the chord that is
// being collected, the notes that wait for a beam, the signs that the bar has shown. It asks nobody anything:
// what could not be drawn it tells at the end. Coordinates are twips.
#pragma once

#include <QString>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "model/tone.h"
#include "notation/bar_frame.h"
#include "notation/chord_store.h"
#include "notation/drawing.h"
#include "notation/hanging_notes.h"
#include "notation/staff_steps.h"

namespace zelmar {

// Colour words of notes.
inline constexpr const char16_t* kBlackWord = u"Black";
inline constexpr const char16_t* kRedWord = u"Red";
inline constexpr const char16_t* kBlueWord = u"Blue";

class BarNotes {
 public:
  // How the staff of the bar is written.
  struct Style {
    ClefKind clef = ClefKind::kTreble;
    std::int16_t key_signature = 0;
    std::uint8_t middle_ledger_lines = 2;
    bool beaming_on = true;
    InkColour rest_ink = kBlackInk;
  };

  // Draws on `staff`, which must outlive it.
  BarNotes(Drawing& staff, const BarFrame& frame, const Style& style);

  // --- The notes in order ---

  void SetupChordStore() { chord_.Clear(); }
  // Collects the note. One of another place than those before has these drawn first.
  void AddToChord(const std::shared_ptr<Tone>& tone, bool first_in_bar,
                  const QString& colour = QString::fromUtf16(kBlackWord));
  // Draws what is collected. A chord of more than 20 notes is not drawn and stays in the store.
  void PrintChord();
  // Behind the last chord: nothing waits beyond the bar line.
  void EndBar();
  // The places of the chords that were too large to be drawn.
  const std::vector<ChordPlace>& LargeChords() const { return large_chords_; }

  // --- One note ---

  void DrawNote(const Tone& tone, const QString& colour = QString::fromUtf16(kBlackWord));
  void DrawNoteSymbol(const Tone& tone, const QString& colour);
  void DrawStem(std::int16_t pitch, int flags, const QString& colour);
  void DrawNatural(const Tone& tone);
  void DrawSharp(const Tone& tone, bool in_key_signature);
  void DrawFlat(const Tone& tone, bool in_key_signature);

  // Gives a note that waits for a beam of so many lines its flags.
  void CancelHangingQuaver(int flags, HangingStem which);

 private:
  // --- Chords ---
  std::optional<int> ShownStep(const Tone& tone) const;
  StemDirection DirectionOfChord() const;
  const Tone* FlagBearer() const;
  std::vector<bool> DisplacedHeads() const;
  void JoinStems(const QString& colour);
  void DrawAccidental(const Tone& tone);
  bool& ShownSign();
  void DrawLedgerLines();

  // --- Symbols ---
  double FirstValue(const Tone& tone) const;
  bool IsSplit(const Tone& tone) const;
  void DrawSplit(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawMinimLong(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawWritten(const Tone& tone, bool carries_flags, const QString& colour);
  void DrawRestAfter(const Tone& tone);

  // --- Beams ---
  void DrawFlagged(const Tone& tone, int flags, const QString& colour);
  void DrawOfPair(const Tone& tone, int flags, const QString& colour);
  void DrawOfThree(const Tone& tone, const QString& colour);
  void DrawBeam(int flags, const QString& colour);
  void ReachBeam(const SavedStem& stem);
  void SettleHanging(const Tone& tone, double duration);
  void BreakGroup();
  SavedStem SaveStem(const Tone& tone, const QString& colour) const;

  Drawing& staff_;
  const BarFrame frame_;
  const Style style_;

  float PenX_ = 0.0F;
  float PenY_ = 0.0F;
  float HeadX_ = 0.0F;
  bool HeadDisplaced_ = false;
  std::int16_t NoteStep_ = 0;
  StemDirection StemDirection_ = StemDirection::kUndecided;
  float StemEndX_ = 0.0F;
  float StemEndY_ = 0.0F;
  std::array<bool, kStepCount> AccidentalShown_{};  // by step, -4 first

  ChordStore chord_;
  HangingNotes hanging_;
  const Tone* flag_bearer_ = nullptr;  // of the chord being printed
  bool in_chord_ = false;
  bool rest_drawn_ = false;
  std::vector<ChordPlace> large_chords_;
};

}  // namespace zelmar
