// What a staff asks of the window in which one note is edited.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "model/tune.h"

namespace zelmar {

class NoteDialogue {
 public:
  virtual ~NoteDialogue() = default;

  virtual void SetDataBasePath(const QString& path) = 0;
  virtual void SetHelpPath(const QString& path) = 0;
  virtual void SetThisTune(std::shared_ptr<Tune> tune) = 0;
  virtual void SetThisTone(std::shared_ptr<Tone> tone) = 0;
  virtual void SetThisWords(std::shared_ptr<Words> words) = 0;
  // Place of the word at the note in the words of the tune.
  virtual void SetThisWordIndex(std::int16_t index) = 0;
  virtual void SetThisAbsRef(std::int32_t abs_ref) = 0;

  // Fills the fields from the note, the choice of its spelling included.
  virtual void FillFields(const Tone& tone) = 0;
  virtual void ShowWord(const QString& text) = 0;
  virtual void HideWord() = 0;

  // Twips.
  virtual double Width() const = 0;
  virtual double Height() const = 0;
  virtual void MoveTo(double left, double top) = 0;

  // Returns when the dialogue has closed.
  virtual void ShowModal() = 0;
};

// The dialogue in use; null when there is none.
NoteDialogue* TheNoteDialogue();
void SetNoteDialogue(NoteDialogue* dialogue);

}  // namespace zelmar
