// A staff on the screen with a tune, and a hand at its mouse and keys: places are told by beat and step and
// become pixels.
#pragma once

#include <QPointer>
#include <QSignalSpy>

#include "notation/ctl_quil_staff.h"
#include "notation/note_dialogue.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {

// Keeps what the staff tells the dialogue of one note.
class KeptNoteDialogue : public NoteDialogue {
 public:
  KeptNoteDialogue() { SetNoteDialogue(this); }
  ~KeptNoteDialogue() override { SetNoteDialogue(nullptr); }

  void SetDataBasePath(const QString& path) override { database_path = path; }
  void SetHelpPath(const QString& path) override { help_path = path; }
  void SetThisTune(std::shared_ptr<Tune> given) override { tune = std::move(given); }
  void SetThisTone(std::shared_ptr<Tone> given) override { tone = std::move(given); }
  void SetThisWords(std::shared_ptr<Words>) override {}
  void SetThisWordIndex(std::int16_t index) override { word_index = index; }
  void SetThisAbsRef(std::int32_t given) override { abs_ref = given; }
  void FillFields(const Tone& filled) override { filled_pitch = filled.Pitch(); }
  void ShowWord(const QString& text) override {
    word = text;
    word_shown = true;
  }
  void HideWord() override { word_shown = false; }
  double Width() const override { return 4000.0; }
  double Height() const override { return 300.0; }
  void MoveTo(double left, double top) override { place = QPointF(left, top); }
  void ShowModal() override {
    ++shown;
    if (on_show) on_show();
  }

  QString database_path, help_path, word, filled_pitch;
  std::shared_ptr<Tune> tune;
  std::shared_ptr<Tone> tone;
  std::int16_t word_index = 0;
  std::int32_t abs_ref = 0;
  bool word_shown = false;
  QPointF place;
  int shown = 0;
  std::function<void()> on_show;
};

class StaffHand : public ::testing::Test {
 protected:
  StaffHand() : tune_(std::make_shared<Tune>()) {
    tune_->SetTitle(QStringLiteral("A Title"));
    tune_->SetComposer(QStringLiteral("Various"));
    tune_->Tracks()->Clear();
    tune_->Tracks()->Add(QStringLiteral("Flute"), 1, 3, 73, false, 0, 0, QStringLiteral("1"));
    tune_->Tracks()->Item(1)->SetDefaultVolume(90);
    tune_->SetChangedSinceLastSaved(false);
  }

  // Shows a staff of 600 by 200 pixels: 9000 by 3000 twips, so that two lines are 250 twips apart.
  void Show(int width = 600, int height = 200) {
    staff_ = new CtlQuilStaff(&window_);
    staff_->setGeometry(0, 0, width, height);
    window_.resize(width, height + 20);
    staff_->Setup(tune_);
    window_.show();
    window_.activateWindow();
    QCoreApplication::processEvents();
    // The window gave its only control the focus.
    staff_->clearFocus();
  }

  std::shared_ptr<Tone> AddNote(const QString& pitch, int beat, int tick = 0, double duration = 1.0,
                                int bar = 1, int track = 1) {
    const auto tone = std::make_shared<Tone>();
    tone->SetPitch(pitch);
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetBeat(static_cast<std::int16_t>(beat));
    tone->SetTick(static_cast<std::int16_t>(tick));
    tone->SetDuration(duration);
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tone->SetChannel(3);
    tone->SetInstrument(73);
    tone->SetVolume(100);
    tone->SetOldVolume(100);
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tune_->Add(tone);
    tune_->SetChangedSinceLastSaved(false);
    return tone;
  }

  // The pixel at a position in beats and a staff step.
  QPoint Pixel(double position, double step) const {
    const double g = staff_->LineGap();
    const double x = staff_->NotesLeft() +
                     (position - 1.0) / staff_->BeatsPerBar() * (staff_->StaffWidth() - staff_->NotesLeft());
    return QPointF(x / 15.0, (8.5 * g - step * g / 2.0) / 15.0).toPoint();
  }

  void Send(QEvent::Type type, QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, pixel, staff_->mapToGlobal(pixel), button, held, modifiers);
    QCoreApplication::sendEvent(staff_, &event);
  }
  void Press(QPoint pixel, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
    Send(QEvent::MouseButtonPress, pixel, button, modifiers);
  }
  void Release(QPoint pixel, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
    Send(QEvent::MouseButtonRelease, pixel, button, modifiers);
  }

  // Notes on only, in the order of the tune.
  QList<std::shared_ptr<Tone>> Notes() const {
    QList<std::shared_ptr<Tone>> notes;
    for (const auto& tone : *tune_)
      if (tone->EventType() == MUSIC_NOTE) notes.append(tone);
    return notes;
  }
  int NotesOff() const {
    int count = 0;
    for (const auto& tone : *tune_) count += tone->EventType() == MUSIC_NOTE_OFF ? 1 : 0;
    return count;
  }

  static std::uint32_t Word(int status, int data1, int data2 = 0) {
    return static_cast<std::uint32_t>(status + data1 * 256 + data2 * 65536);
  }
  static std::uint32_t NoteOn(int number, int volume, int channel = 3) {
    return Word(143 + channel, number, volume);
  }
  static std::uint32_t Patch(int patch, int channel = 3) { return Word(191 + channel, patch); }
  using Words = std::vector<std::uint32_t>;
  Words Sent() const { return platform_.midi->ShortMessages(); }

  testing_support::ScriptedPlatform platform_;
  KeptNoteDialogue dialogue_;
  std::shared_ptr<Tune> tune_;
  QWidget window_;
  QPointer<CtlQuilStaff> staff_;
};

}  // namespace zelmar
