#include "model/main_window_link.h"

#include "model/globals.h"
#include "model/tune.h"

namespace zelmar {

namespace {

MainWindowLink* chosen = nullptr;

std::unique_ptr<MainWindowLink>& Default() {
  static auto link = std::make_unique<MainWindowLink>();
  return link;
}

}  // namespace

std::shared_ptr<Tune> MainWindowLink::MyTune() {
  return tune_;
}

void MainWindowLink::SetMyTune(std::shared_ptr<Tune> tune) {
  tune_ = std::move(tune);
}

MainWindowLink& TheMainWindow() {
  return chosen != nullptr ? *chosen : *Default();
}

std::shared_ptr<Tune> CurrentTune() {
  return Global().TuneLoadedFlag ? TheMainWindow().MyTune() : nullptr;
}

void SetMainWindowLink(MainWindowLink* link) {
  chosen = link;
  if (link == nullptr) Default() = std::make_unique<MainWindowLink>();
}

}  // namespace zelmar
