#include "notation/ctl_piano.h"

#include <QKeyEvent>
#include <QPointer>
#include <algorithm>

#include "platform/ignoring_failures.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

constexpr std::int16_t kHighestMidiNote = 127;
constexpr int kMiddleOctave = 4;

// The letters of both rows in the order of the keys, from the C of their octave.
constexpr std::array kLowerRow = {Qt::Key_Z, Qt::Key_S, Qt::Key_X, Qt::Key_D, Qt::Key_C, Qt::Key_V,
                                  Qt::Key_G, Qt::Key_B, Qt::Key_H, Qt::Key_N, Qt::Key_J, Qt::Key_M};
constexpr std::array kUpperRow = {Qt::Key_Q, Qt::Key_2, Qt::Key_W, Qt::Key_3, Qt::Key_E, Qt::Key_R,
                                  Qt::Key_5, Qt::Key_T, Qt::Key_6, Qt::Key_Y, Qt::Key_7, Qt::Key_U};

// Semitones above the lower row's C, -1 for a letter that plays nothing.
int StepOfLetter(int letter) {
  const auto lower = std::find(kLowerRow.begin(), kLowerRow.end(), letter);
  if (lower != kLowerRow.end()) return static_cast<int>(lower - kLowerRow.begin());
  const auto upper = std::find(kUpperRow.begin(), kUpperRow.end(), letter);
  if (upper != kUpperRow.end()) return kPianoKeysInAnOctave + static_cast<int>(upper - kUpperRow.begin());
  return -1;
}

// Mouse buttons stand beside the letters among the things that hold a key down.
int SourceOf(Qt::MouseButton button) {
  return -static_cast<int>(button);
}

// Ends or begins a note where there is one in MIDI for it: the top keys of a keyboard set high have none.
void Sound(Tone& tone) {
  if (tone.Number() <= kHighestMidiNote) tone.Play();
}

}  // namespace

CtlPiano::CtlPiano(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAccessibleName(tr("Piano keyboard"));
  setToolTip(
      tr("Click a key, or play with the keyboard: Z to M and Q to U are the white keys, the row above each "
         "has the black ones, [ and ] change the octave."));
  CreateKeys();
}

CtlPiano::~CtlPiano() {
  // Who listened may be half gone: the notes end and nobody is told.
  for (const Held& held : std::as_const(held_)) {
    IgnoringFailures([&held] {
      held.tone->SetVolume(0);
      Sound(*held.tone);
    });
  }
}

void CtlPiano::SetBottomOctave(std::uint8_t octave) {
  if (!ReleaseAll()) return;
  bottom_octave_ = std::clamp<std::uint8_t>(octave, 1, 7);
  CreateKeys();
}

void CtlPiano::SetWhiteNoteCount(std::uint8_t count) {
  if (!ReleaseAll()) return;
  white_note_count_ = count < 13 ? 8 : std::min<std::uint8_t>(count, 31);
  CreateKeys();
  HideKeys();
  updateGeometry();
}

void CtlPiano::CreateKeys() {
  if (!ReleaseAll()) return;
  for (int index = 0; index < KeyCount(); ++index)
    key_[static_cast<std::size_t>(index)] = {.visible = true, .down = false, .text = {}};
  octave_in_use_ = std::clamp(kMiddleOctave - bottom_octave_, 0, (KeyCount() - 1) / kPianoKeysInAnOctave);
  // Both rows of letters are to reach keys where the keyboard has two octaves.
  octave_in_use_ = std::min(octave_in_use_, std::max(0, KeyCount() / kPianoKeysInAnOctave - 2));
  TellKeys();
  update();
}

void CtlPiano::HideKeys() {
  for (int index = KeyCount(); index < kMostPianoKeys; ++index) key_[static_cast<std::size_t>(index)] = {};
  update();
}

std::int16_t CtlPiano::BottomNote() const {
  return static_cast<std::int16_t>((bottom_octave_ + 1) * kPianoKeysInAnOctave);
}

bool CtlPiano::IsKeyDown(int index) const {
  return index >= 0 && index < kMostPianoKeys && key_[static_cast<std::size_t>(index)].down;
}

bool CtlPiano::IsKeyVisible(int index) const {
  return index >= 0 && index < kMostPianoKeys && key_[static_cast<std::size_t>(index)].visible;
}

QString CtlPiano::KeyText(int index) const {
  return index >= 0 && index < kMostPianoKeys ? key_[static_cast<std::size_t>(index)].text : QString();
}

PianoLayout CtlPiano::Layout() const {
  return {white_note_count_, size(), devicePixelRatioF()};
}

QRectF CtlPiano::KeyRect(int index) const {
  return Layout().KeyRect(index);
}

QSize CtlPiano::sizeHint() const {
  constexpr int kWhiteWidth = 26, kHeight = 130;
  return {kWhiteWidth * white_note_count_, kHeight};
}

QSize CtlPiano::minimumSizeHint() const {
  constexpr int kWhiteWidth = 12, kHeight = 60;
  return {kWhiteWidth * white_note_count_, kHeight};
}

// --- Lighting ---

int CtlPiano::IndexOf(const Tone& tone) const {
  const int index = tone.Number() - BottomNote();
  return index >= 0 && index < kMostPianoKeys ? index : -1;
}

void CtlPiano::DepressKey(const Tone& tone) {
  if (const int index = IndexOf(tone); index >= 0) SetDown(index, tone);
}

void CtlPiano::ReleaseKey(const Tone& tone) {
  if (const int index = IndexOf(tone); index >= 0) SetUp(index);
}

void CtlPiano::ResetKeysUp() {
  for (int index = 0; index < kMostPianoKeys; ++index) SetUp(index);
}

void CtlPiano::SetDown(int index, const Tone& tone) {
  Key& key = key_[static_cast<std::size_t>(index)];
  key.down = true;
  if (ShowKeyNames()) key.text = tone.Pitch().chopped(1);
  update(KeyRect(index).toAlignedRect());
}

void CtlPiano::SetUp(int index) {
  Key& key = key_[static_cast<std::size_t>(index)];
  if (!key.down && key.text.isEmpty()) return;
  key.down = false;
  key.text.clear();
  update(KeyRect(index).toAlignedRect());
}

// --- Playing ---

void CtlPiano::Press(int source, int index) {
  if (index < 0 || index >= KeyCount() || held_.contains(source)) return;
  if (key_[static_cast<std::size_t>(index)].down) return;
  const auto tone = std::make_shared<Tone>();
  tone->SetNumber(Narrow<std::int16_t>(BottomNote() + index));
  tone->SetInstrument(Instrument());
  SetDown(index, *tone);
  held_.insert(source, {index, tone});
  const QPointer<CtlPiano> self(this);
  Q_EMIT KeyPressed(tone);
  // A listener may have closed the control, or taken the key up again.
  if (self && held_.contains(source)) Sound(*tone);
}

void CtlPiano::Release(int source) {
  const auto found = held_.constFind(source);
  if (found == held_.constEnd()) return;
  const Held held = *found;
  held_.erase(found);
  SetUp(held.index);
  held.tone->SetVolume(0);
  Sound(*held.tone);
  Q_EMIT KeyReleased(held.tone);
}

bool CtlPiano::ReleaseAll() {
  const QPointer<CtlPiano> self(this);
  for (const int source : held_.keys()) {
    Release(source);
    if (!self) return false;
  }
  return true;
}

void CtlPiano::mousePressEvent(QMouseEvent* event) {
  Press(SourceOf(event->button()), Layout().KeyAt(event->position()));
}

// A second press in quick succession is a press like the first.
void CtlPiano::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void CtlPiano::mouseReleaseEvent(QMouseEvent* event) {
  Release(SourceOf(event->button()));
}

void CtlPiano::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  const int step = StepOfLetter(event->key());
  if (plain && step >= 0) {
    if (!event->isAutoRepeat()) Press(event->key(), octave_in_use_ * kPianoKeysInAnOctave + step);
    return;
  }
  if (plain && (event->key() == Qt::Key_BracketLeft || event->key() == Qt::Key_BracketRight)) {
    MoveOctave(event->key() == Qt::Key_BracketLeft ? -1 : 1);
    return;
  }
  QWidget::keyPressEvent(event);
}

void CtlPiano::keyReleaseEvent(QKeyEvent* event) {
  if (StepOfLetter(event->key()) < 0) {
    QWidget::keyReleaseEvent(event);
    return;
  }
  if (!event->isAutoRepeat()) Release(event->key());
}

void CtlPiano::MoveOctave(int by) {
  octave_in_use_ = std::clamp(octave_in_use_ + by, 0, (KeyCount() - 1) / kPianoKeysInAnOctave);
  TellKeys();
  update();
}

// Which keys there are, and where the letters play, for a screen reader.
void CtlPiano::TellKeys() {
  const auto name_of = [this](int index) {
    Tone tone;
    tone.SetNumber(Narrow<std::int16_t>(BottomNote() + index));
    return tone.Pitch();
  };
  setAccessibleDescription(
      tr("Keys %1 to %2. The letters Z to M play from %3 on.")
          .arg(name_of(0), name_of(KeyCount() - 1), name_of(octave_in_use_ * kPianoKeysInAnOctave)));
}

QString CtlPiano::LetterOf(int index) const {
  const int step = index - octave_in_use_ * kPianoKeysInAnOctave;
  if (step < 0 || step >= 2 * kPianoKeysInAnOctave) return {};
  const auto place = static_cast<std::size_t>(step % kPianoKeysInAnOctave);
  return QChar(static_cast<char16_t>(step < kPianoKeysInAnOctave ? kLowerRow[place] : kUpperRow[place]));
}

void CtlPiano::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CtlPiano::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
  ReleaseAll();
}

void CtlPiano::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  ReleaseAll();
}

}  // namespace zelmar
