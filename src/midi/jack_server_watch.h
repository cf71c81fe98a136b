// An own client at the JACK server that tells whether the server still works. The library behind a MIDI port
// cannot say so: its list of ports outlives the server, and its ring of waiting messages is then never
// emptied.
//
// Hold one as long as any other JACK client of the process is open, and let it go after that client.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

namespace zelmar {

class JackServerWatch {
 public:
  // Null when no server answers, and where the program was built without JACK.
  static std::unique_ptr<JackServerWatch> Start();
  ~JackServerWatch();
  JackServerWatch(const JackServerWatch&) = delete;
  JackServerWatch& operator=(const JackServerWatch&) = delete;

  // False once the server has gone or was given up.
  bool Alive() const { return alive_.load(std::memory_order_acquire); }
  // Rounds of the server so far: every client empties its waiting messages once a round.
  std::uint32_t Beats() const { return beats_.load(std::memory_order_acquire); }
  // True as soon as a new round comes, false when none does within `limit` or the server goes.
  bool WaitForBeat(std::chrono::milliseconds limit) const;
  // Takes the server for lost.
  void GiveUp();

  // True while a client of a lost server is still held. Opening another client then would pull the lost one
  // away from under its owner.
  static bool AnyLost();

 private:
  struct Client;
  JackServerWatch();

  std::unique_ptr<Client> client_;
  std::atomic<bool> alive_{true};
  std::atomic<std::uint32_t> beats_{0};
};

}  // namespace zelmar
