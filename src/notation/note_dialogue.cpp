#include "notation/note_dialogue.h"

namespace zelmar {

namespace {

NoteDialogue* dialogue_in_use = nullptr;

}  // namespace

NoteDialogue* TheNoteDialogue() {
  return dialogue_in_use;
}

void SetNoteDialogue(NoteDialogue* dialogue) {
  dialogue_in_use = dialogue;
}

}  // namespace zelmar
