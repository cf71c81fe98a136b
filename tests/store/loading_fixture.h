// A loader with its listeners, and a main window that keeps what it is told.
#pragma once

#include <QSqlDatabase>
#include <vector>

#include "model/main_window_link.h"
#include "store/store_fixture.h"
#include "store/tune_loader.h"

namespace zelmar::testing_support {

class KeepingWindow : public MainWindowLink {
 public:
  void RebuildRecentTunesMenu() override { ++menu_rebuilds; }
  void ShowWaitText(const QString& text) override { wait_texts.append(text); }

  int menu_rebuilds = 0;
  QStringList wait_texts;
};

class LoadingTest : public StoreTest {
 protected:
  LoadingTest() {
    SetMainWindowLink(&window);
    QObject::connect(&loader, &TuneLoader::PercentCompleted,
                     [this](std::int16_t percent) { percents.push_back(percent); });
    QObject::connect(&loader, &TuneLoader::Done, [this](const QString& name, const QString& caption) {
      done.append(name + u'|' + caption);
      percents_when_done = static_cast<int>(percents.size());
    });
  }
  ~LoadingTest() override { SetMainWindowLink(nullptr); }

  // Loads a tune of the database and gives what the main window then holds.
  std::shared_ptr<Tune> Load(QString code_name) {
    loader.DoLoad(code_name);
    return window.MyTune();
  }
  std::shared_ptr<Tune> Load(const SampleTune& tune) {
    database.AddTune(tune);
    return Load(tune.code_name);
  }

  KeepingWindow window;
  TuneLoader loader;
  std::vector<int> percents;
  QStringList done;
  int percents_when_done = 0;
};

}  // namespace zelmar::testing_support
