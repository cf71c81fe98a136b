// A main window with a changed tune, and an eye on the status window of a save.
#pragma once

#include "app/main_window_fixture.h"

namespace zelmar {

class SavingCommand : public MainWindowTest {
 protected:
  void StartWithTune() {
    Start();
    LoadTune();
    main_->MyTune()->SetTitle(QStringLiteral("Changed"));
    WatchStatus();
  }

  // Keeps what the status window says at each serving.
  void WatchStatus() {
    platform_.events->on_serve = [this](int) {
      const QWidget* const window = FindLoadedForm(QStringLiteral("DialogWait"));
      if (window == nullptr) return;
      const QString caption = window->windowTitle();
      if (captions_.isEmpty() || captions_.last() != caption) captions_.append(caption);
      EXPECT_TRUE(window->isVisible());
      EXPECT_FALSE(window->isModal());
    };
  }

  bool StatusIsGone() const { return FindLoadedForm(QStringLiteral("DialogWait")) == nullptr; }
  QString StoredTitle(const char* code_name) const {
    return database_
        .Column(QStringLiteral("select Title from tblMelodies where CodeName = '%1'")
                    .arg(QString::fromLatin1(code_name)))
        .join(u',');
  }

  QStringList captions_;
};

}  // namespace zelmar
