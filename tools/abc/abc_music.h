// Reads lines of music into voices.
#pragma once

#include <deque>
#include <map>
#include <optional>

#include "abc/abc_cursor.h"
#include "abc/abc_fields.h"
#include "abc/abc_voice.h"

namespace zelmar {

// How long an accidental lasts within its bar.
enum class AccidentalReach { kNote, kOctave, kAllOctaves };

class AbcMusic {
 public:
  // The metre of the tune, and the unit length and key with which each voice begins.
  AbcMusic(const AbcMetre& metre, const Fraction& unit_length, const AbcKey& key, AccidentalReach reach);

  // The value of a V: field: an id, then properties such as name="Soprano". Makes the voice when there is
  // none of that id. Gives its index.
  std::size_t DeclareVoice(AbcCursor& cursor);
  // The same, and music that follows belongs to the voice.
  void SelectVoice(AbcCursor& cursor);

  void ReadLine(AbcCursor& cursor);
  // A field within the music, its cursor at the value; true when the letter is one that has a meaning here.
  bool ReadField(QChar letter, TextPosition field, AbcCursor& cursor);
  // A command for the synthesiser, its cursor behind the word MIDI: it holds for the current voice from here
  // on.
  void ReadMidi(AbcCursor& cursor);
  // A line of words for the music line before it.
  void ReadWords(AbcCursor& cursor);
  // What must be closed when the tune ends.
  void Finish() const;

  const std::deque<AbcVoice>& Voices() const { return voices_; }
  std::deque<AbcVoice>& Voices() { return voices_; }

 private:
  struct Tuplet {
    Fraction factor{1};
    int left = 0;
    TextPosition position;
  };

  struct State {
    Fraction unit_length;
    AbcKey key;
    std::map<std::pair<int, int>, int> bar_accidentals;   // letter and octave, to alteration
    std::map<std::pair<int, int>, int> tied_accidentals;  // of the notes that are tied to the next
    Tuplet tuplet;
    std::optional<Fraction> broken;  // factor for the next note
    TextPosition broken_position;
    std::size_t line_start = 0;  // first item of the music line that words belong to
    int verse = 0;
    bool line_goes_on = false;
    int part = kNoPart;  // that the voice is in
  };

  // A P: field within the music, which labels what follows in every voice.
  struct Part {
    int letter = kNoPart;  // 0 for a label that is no capital letter
    TextPosition position;
  };
  static constexpr int kNoPart = -1;

  std::size_t VoiceIndex(const QString& id, TextPosition position);
  AbcVoice& CurrentVoice();
  State& CurrentState();
  AbcItem& AddItem(AbcItemKind kind, TextPosition position);
  void AddTimed(AbcItem item);
  void CarryTies();
  void StartWordsHere();
  void EnterPart();

  void ReadPart(TextPosition field, AbcCursor& cursor);
  void ReadElement(AbcCursor& cursor);
  void ReadBarLine(AbcCursor& cursor);
  void ReadBracket(AbcCursor& cursor);
  void ReadChord(AbcCursor& cursor);
  AbcNote ReadPitch(AbcCursor& cursor);
  void ReadNote(AbcCursor& cursor);
  void ReadRest(AbcCursor& cursor);
  void ReadParenthesis(AbcCursor& cursor);
  void ReadBroken(AbcCursor& cursor);
  void ReadDecoration(AbcCursor& cursor);
  void ReadTie(AbcCursor& cursor);
  Fraction ReadLength(AbcCursor& cursor);

  AbcMetre metre_;
  Fraction unit_length_;
  AbcKey key_;
  AccidentalReach reach_;
  std::deque<AbcVoice> voices_;
  std::deque<State> states_;
  std::optional<std::size_t> current_;
  Part part_;
};

}  // namespace zelmar
