// What the presses on a staff do to its tune: notes are found, added, heard, changed and removed.

#include <algorithm>
#include <array>

#include "notation/ctl_quil_staff.h"
#include "notation/note_dialogue.h"
#include "platform/numbers.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

// A letter that the key signature alters, from `signature` sharps or flats on.
struct AlteredLetter {
  int signature;
  char16_t letter;
};

constexpr std::array<AlteredLetter, 7> kFlattened = {
    {{-1, u'B'}, {-2, u'E'}, {-3, u'A'}, {-4, u'D'}, {-5, u'G'}, {-6, u'C'}, {-7, u'F'}}};
constexpr std::array<AlteredLetter, 7> kSharpened = {
    {{1, u'F'}, {2, u'C'}, {3, u'G'}, {4, u'D'}, {5, u'A'}, {6, u'E'}, {7, u'B'}}};

// Each rule reads the note as the rules before it have left it. The last one of a row asks for its very
// signature.
void ApplyKeySignature(Tone& tone, int signature) {
  const bool flats = signature < 0;
  const QChar letter_clicked = tone.Pitch().front();
  const int key_pitch = tone.Number() + (flats ? -1 : 1);
  for (const auto& [limit, letter] : flats ? kFlattened : kSharpened) {
    const bool last = limit == -7 || limit == 7;
    const bool applies = last ? signature == limit : flats ? signature <= limit : signature >= limit;
    if (!applies || tone.Pitch().front() != letter) continue;
    tone.SetNumber(static_cast<std::int16_t>(tone.Number() + (flats ? -1 : 1)));
  }
  // What the key gives to a step is written on that step: C flat, which is B, stands with C. A note that two
  // rules have moved is another one, and stands where its pitch does.
  if (tone.Number() == key_pitch && tone.Pitch().front() != letter_clicked)
    tone.SetEnHarmonic(flats ? QStringLiteral("b") : QStringLiteral("#"));
}

// Letter and octave of a pitch, without its accidental.
bool HasLetterAndOctave(const QString& pitch, const QString& natural) {
  return natural.size() == 2 && pitch.front() == natural.front() && pitch.back() == natural.back();
}

}  // namespace

void CtlQuilStaff::FindMatchingNote(std::int16_t pitch, double position, std::int32_t& index) {
  index = MatchAt({.pitch = pitch, .position = position});
  ThisTone_ = index == 0 ? nullptr : ThisTune()->Tones()->Item(index);
}

// A note is looked for where it is shown. By the letter of its pitch it is found on an empty line too: C
// flat, which is shown with C, on that of B.
std::int32_t CtlQuilStaff::MatchAt(const NotePlace& wanted) const {
  if (!ThisTune()) return 0;
  Tone scratch;
  scratch.SetNumber(wanted.pitch);
  const QString natural = scratch.Pitch();
  const Tones& tones = *ThisTune()->Tones();
  const auto count = tones.Count();
  std::int32_t by_pitch = 0;
  for (qsizetype place = 1; place <= count; ++place) {
    const std::shared_ptr<Tone>& tone = tones.Item(place);
    if (tone->EventType() != MUSIC_NOTE) continue;
    if (tone->Bar() > CurrentBar()) break;
    if (tone->Bar() != CurrentBar() || tone->Track() != SelectedTrack()) continue;
    const double at =
        NearestQuarterBeat(tone->Beat() + Quotient(tone->Tick(), std::max<int>(TicksPerBeat(), 1)));
    if (at != wanted.position) continue;
    if (HasLetterAndOctave(tone->EnharmonicName(), natural)) return Narrow<std::int32_t>(place);
    if (by_pitch == 0 && HasLetterAndOctave(tone->Pitch(), natural)) by_pitch = Narrow<std::int32_t>(place);
  }
  return by_pitch;
}

void CtlQuilStaff::PutAt(Tone& tone, double position) const {
  const auto beat = IntegerPart<std::int16_t>(position);
  tone.SetBar(CurrentBar());
  tone.SetBeat(beat);
  tone.SetTick(RoundHalfEven<std::int16_t>((position - beat) * TicksPerBeat()));
}

void CtlQuilStaff::Sound(Tone& tone) {
  EndSound();
  tone.SetSendPatch(true);
  tone.Play();
  sounding_pitch_ = tone.Number();
  sounding_channel_ = tone.Channel();
}

// --- The rows of buttons ---

void CtlQuilStaff::HearNote(float, float) {
  Sound(*ThisTone_);
}

void CtlQuilStaff::HalveNote(float, float) {
  ThisTone_->SetDuration(ThisTone_->Duration() / 2.0);
  ThisTune()->SetChangedSinceLastSaved(true);
  Sound(*ThisTone_);
  RePaint();
}

void CtlQuilStaff::TakeUpNote(float, float) {
  setCursor(Qt::CrossCursor);
  Sound(*ThisTone_);
  DraggingNote_ = true;
}

void CtlQuilStaff::EditNote(float x, float y) {
  Sound(*ThisTone_);
  FillDialogBox(x, y);
}

void CtlQuilStaff::DoubleNote(float, float) {
  Sound(*ThisTone_);
  ThisTone_->SetDuration(ThisTone_->Duration() * 2.0);
  ThisTune()->SetChangedSinceLastSaved(true);
  RePaint();
}

void CtlQuilStaff::RemoveNote(float, float) {
  ThisTune()->Remove(QString::number(ThisTone_->AbsRef()));
  ThisTune()->SetChangedSinceLastSaved(true);
  const QPointer<CtlQuilStaff> self(this);
  Q_EMIT ChangedBarNumbers();
  if (self) RePaint();
}

void CtlQuilStaff::AddNote(const NotePlace& place) {
  const std::shared_ptr<Tune> tune = ThisTune();
  const auto tone = std::make_shared<Tone>();
  ThisTone_ = tone;
  tone->SetNumber(place.pitch);
  ApplyKeySignature(*tone, tune->KeySignature());
  PutAt(*tone, place.position);
  tone->SetDuration(1.0);
  tone->SetTrack(SelectedTrack());
  for (const auto& track : *tune->Tracks())
    if (track->TrackNumber() == SelectedTrack()) last_track_ = *track;
  tone->SetChannel(last_track_.Channel());
  tone->SetInstrument(last_track_.Instrument());
  tone->SetVolume(last_track_.DefaultVolume());
  tone->SetOldVolume(last_track_.DefaultVolume());
  tone->SetAbsRef(CheckedAdd<std::int32_t>(tune->LastAbsRef(), 1));
  tone->SetBeatLength(tune->BeatLength());
  tone->SetBeatsPerBar(tune->BeatsPerBar());
  tune->Add(tone);

  tune->CalcNotesOff();
  tune->SortStartTimes();
  const QPointer<CtlQuilStaff> self(this);
  RePaint();
  if (self) Q_EMIT NoteAdded(CurrentBar());
  if (self) Sound(*tone);
}

// --- The dialogue of one note ---

void CtlQuilStaff::FillDialogBox(float x, float y) {
  if (!ThisTone_ || !ThisTune()) return;
  const QPointer<CtlQuilStaff> self(this);
  if (NoteDialogue* const dialogue = TheNoteDialogue())
    ShowDialogue(*dialogue, x, y);
  else
    SayNotPartOfThisVersion();
  if (!self) return;
  Q_EMIT ChangedBarNumbers();
  if (self) RePaint();
}

void CtlQuilStaff::ShowDialogue(NoteDialogue& dialogue, float x, float y) {
  const Tone& tone = *ThisTone_;
  dialogue.SetThisTune(ThisTune());
  const auto words = ThisTune()->Words();
  dialogue.SetThisWords(words);
  dialogue.HideWord();
  std::int16_t place = 0;
  for (const auto& word : *words) {
    ++place;
    if (word->Bar() != tone.Bar() || word->Beat() != tone.Beat() || word->Tick() != tone.Tick()) continue;
    dialogue.ShowWord(word->WordText());
    dialogue.SetThisWordIndex(place);
    break;
  }
  dialogue.SetThisTone(ThisTone_);
  dialogue.SetThisAbsRef(tone.AbsRef());
  // The width of the dialogue, not that of the staff.
  const double width = dialogue.Width();
  dialogue.MoveTo(static_cast<double>(x) - width / 4.0 + BarOffset() * width,
                  static_cast<double>(y) + dialogue.Height());
  dialogue.FillFields(tone);
  dialogue.ShowModal();
}

}  // namespace zelmar
