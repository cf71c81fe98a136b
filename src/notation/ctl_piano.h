// The piano keyboard on the screen: a press of a key, by the mouse or by the letters of the computer's own
// keyboard, sounds a note and hands out its tone; a window can light keys while a tune plays.
//
// Keys are counted from 0, which is the C of note number (BottomOctave + 1) x 12. The two rows of letters
// begin with Z and Q; the brackets move both by an octave. A note ends with its press: when the button or key
// rises wherever it does, and also when the control loses the focus, is hidden or goes away.
#pragma once

#include <QHash>
#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>

#include "model/property.h"
#include "model/tone.h"
#include "notation/piano_layout.h"

namespace zelmar {

class CtlPiano : public QWidget {
  Q_OBJECT

 public:
  explicit CtlPiano(QWidget* parent = nullptr);
  ~CtlPiano() override;

  // 1 to 7; values beyond are brought to the nearer end.
  std::uint8_t BottomOctave() const { return bottom_octave_; }
  void SetBottomOctave(std::uint8_t octave);
  // 8, or 13 to 31: every value below 13 becomes 8, every value above 31 becomes 31.
  std::uint8_t WhiteNoteCount() const { return white_note_count_; }
  void SetWhiteNoteCount(std::uint8_t count);

  // Makes the keys that the control has to have, all up.
  void CreateKeys();
  // Hides the keys beyond those.
  void HideKeys();
  // Light and darken the key of a tone; a tone of no key does nothing.
  void DepressKey(const Tone& tone);
  void ReleaseKey(const Tone& tone);
  void ResetKeysUp();

  int KeyCount() const { return PianoKeyCount(white_note_count_); }
  std::int16_t BottomNote() const;
  // True for a key that is down or lit.
  bool IsKeyDown(int index) const;
  bool IsKeyVisible(int index) const;
  QString KeyText(int index) const;
  QRectF KeyRect(int index) const;
  // Octaves from the lowest key to where the lower row of letters begins.
  int OctaveInUse() const { return octave_in_use_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // Raised before the tone sounds, so that a listener may still give it a channel, a volume, a patch.
  void KeyPressed(const std::shared_ptr<zelmar::Tone>& tone);
  void KeyReleased(const std::shared_ptr<zelmar::Tone>& tone);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Key {
    bool visible = false;
    bool down = false;
    QString text;
  };
  // A key that is held down by a mouse button or a letter, and what it sounds.
  struct Held {
    int index = -1;
    std::shared_ptr<Tone> tone;
  };

  PianoLayout Layout() const;
  int IndexOf(const Tone& tone) const;
  void SetDown(int index, const Tone& tone);
  void SetUp(int index);
  // Sources are letters by their key code, and mouse buttons below.
  void Press(int source, int index);
  void Release(int source);
  // False when a listener has closed the control: nothing of it may be touched then.
  bool ReleaseAll();
  void MoveOctave(int by);
  void TellKeys();
  QString LetterOf(int index) const;
  void PaintKey(QPainter& painter, int index) const;

  std::array<Key, kMostPianoKeys> key_;
  QHash<int, Held> held_;
  std::uint8_t bottom_octave_ = 2;
  std::uint8_t white_note_count_ = 31;
  int octave_in_use_ = 2;

  // Lit keys carry the names of their notes.
  ZELMAR_PROPERTY(bool, ShowKeyNames, false)
  ZELMAR_PROPERTY(std::uint8_t, Instrument, 0)
};

}  // namespace zelmar
