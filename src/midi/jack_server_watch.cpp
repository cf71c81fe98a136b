#include "midi/jack_server_watch.h"

#include <thread>

#include "midi/quiet_libraries.h"

#ifdef ZELMAR_HAVE_JACK
#include <jack/jack.h>
#endif

namespace zelmar {

namespace {

std::atomic<int> lost_count{0};

}  // namespace

#ifdef ZELMAR_HAVE_JACK

struct JackServerWatch::Client {
  jack_client_t* handle = nullptr;
};

JackServerWatch::JackServerWatch() : client_(std::make_unique<Client>()) {}

std::unique_ptr<JackServerWatch> JackServerWatch::Start() {
  QuietSoundLibraries();
  if (AnyLost()) return nullptr;
  std::unique_ptr<JackServerWatch> watch(new JackServerWatch);
  jack_client_t* const handle = jack_client_open("Zelmar watch", JackNoStartServer, nullptr);
  if (handle == nullptr) return nullptr;
  watch->client_->handle = handle;
  jack_set_process_callback(
      handle,
      [](jack_nframes_t, void* self) {
        static_cast<JackServerWatch*>(self)->beats_.fetch_add(1, std::memory_order_acq_rel);
        return 0;
      },
      watch.get());
  jack_on_shutdown(
      handle, [](void* self) { static_cast<JackServerWatch*>(self)->GiveUp(); }, watch.get());
  if (jack_activate(handle) != 0) return nullptr;
  return watch;
}

JackServerWatch::~JackServerWatch() {
  if (client_->handle != nullptr) jack_client_close(client_->handle);
  if (!Alive()) --lost_count;
}

#else

struct JackServerWatch::Client {};

JackServerWatch::JackServerWatch() = default;

std::unique_ptr<JackServerWatch> JackServerWatch::Start() {
  return nullptr;
}

JackServerWatch::~JackServerWatch() = default;

#endif

bool JackServerWatch::WaitForBeat(std::chrono::milliseconds limit) const {
  const auto end = std::chrono::steady_clock::now() + limit;
  const std::uint32_t before = Beats();
  while (Alive() && std::chrono::steady_clock::now() < end) {
    if (Beats() != before) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

void JackServerWatch::GiveUp() {
  if (alive_.exchange(false, std::memory_order_acq_rel)) ++lost_count;
}

bool JackServerWatch::AnyLost() {
  return lost_count.load(std::memory_order_acquire) > 0;
}

}  // namespace zelmar
