// Helpers of tests that show windows: controls by name, a tune made in memory, a hand at the mouse.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QStringList>
#include <QTest>
#include <memory>

#include "model/tune.h"

namespace zelmar::testing_support {

// The control of that system name. A missing one ends the test with a failure.
template <typename Control>
Control& Find(const QObject& window, const char* name) {
  auto* control = window.findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) throw std::runtime_error(std::string("no control named ") + name);
  return *control;
}

inline QString TextOf(const QObject& window, const char* name) {
  return Find<QLabel>(window, name).text();
}

inline bool IsEnabled(const QObject& window, const char* name) {
  return Find<QWidget>(window, name).isEnabled();
}

inline void Click(const QObject& window, const char* name) {
  QTest::mouseClick(&Find<QWidget>(window, name), Qt::LeftButton);
}

// The button does nothing any more but tell that it was pressed. Only that is cut: others hear of its end.
inline void CountOnly(QAbstractButton& button) {
  QObject::disconnect(&button, &QAbstractButton::clicked, nullptr, nullptr);
}

// A tune in 4/4 with a quarter note on each beat of `bars` bars, ready to play.
inline std::shared_ptr<Tune> TuneOfBars(int bars, const QString& composer = QStringLiteral("Bach")) {
  auto tune = std::make_shared<Tune>();
  tune->SetTitle(QStringLiteral("A Title"));
  tune->SetComposer(composer);
  QStringList pitches;
  for (int i = 0; i < bars * 4; ++i) pitches.append(QStringLiteral("C4"));
  tune->CreateMelody(0, 100, 1, pitches);
  tune->CalcNotesOff();
  tune->SortStartTimes();
  return tune;
}

// Windows that were closed are gone afterwards.
inline void LetClosedWindowsGo() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

}  // namespace zelmar::testing_support
