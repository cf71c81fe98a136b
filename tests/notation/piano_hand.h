// A piano keyboard on the screen, and a hand at its mouse and keys.
#pragma once

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QTest>
#include <memory>
#include <vector>

#include "notation/ctl_piano.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {

inline constexpr int kMiddleC = 24;  // the key, with the lowest one as it is at first

class PianoHand : public ::testing::Test {
 protected:
  PianoHand() : piano_(std::make_unique<CtlPiano>()) {
    piano_->resize(806, 140);
    piano_->show();
    QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_,
                     [this](const std::shared_ptr<Tone>& tone) { pressed_.append(tone); });
    QObject::connect(piano_.get(), &CtlPiano::KeyReleased, &context_,
                     [this](const std::shared_ptr<Tone>& tone) { released_.append(tone); });
  }

  // A place on the key that no black key covers.
  QPoint Place(int index) const {
    const QRectF key = piano_->KeyRect(index);
    return QPointF(key.center().x(), key.bottom() - 4).toPoint();
  }
  void Press(int index) { QTest::mousePress(piano_.get(), Qt::LeftButton, {}, Place(index)); }
  void Release(int index) { QTest::mouseRelease(piano_.get(), Qt::LeftButton, {}, Place(index)); }

  static std::uint32_t NoteOn(int number, int volume, int channel = 1) {
    return static_cast<std::uint32_t>(143 + channel + number * 256 + volume * 65536);
  }
  std::vector<std::uint32_t> Sent() const { return platform_.midi->ShortMessages(); }
  void TakeFocus() {
    piano_->activateWindow();
    QCoreApplication::processEvents();
    piano_->setFocus();
  }
  // An event at that very place; Qt's own helper takes the corner for the middle.
  void Send(QEvent::Type type, QPoint place) {
    QMouseEvent event(type, place, place, Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(piano_.get(), &event);
  }
  using Words = std::vector<std::uint32_t>;

  static Tone ToneOf(int number) {
    Tone tone;
    tone.SetNumber(static_cast<std::int16_t>(number));
    return tone;
  }

  testing_support::ScriptedPlatform platform_;
  std::unique_ptr<CtlPiano> piano_;
  QList<std::shared_ptr<Tone>> pressed_, released_;
  QObject context_;
};

}  // namespace zelmar
