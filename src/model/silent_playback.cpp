// The playback of a tune where no engine makes it heard.
#include "model/sound_link.h"
#include "model/tune.h"

namespace zelmar {

namespace {

class SilentPlayback : public TunePlayback {
 public:
  explicit SilentPlayback(Tune& tune) : tune_(tune) {}

  void Play(std::int16_t&) override {}
  void JumpTo(std::int16_t) override {}
  void Stopit() override {
    tune_.SetPlaying(false);
    Q_EMIT tune_.Finished();
  }
  void MelodyTest() override {}
  void NewBeat() override {}

  std::int32_t PlayIndex() const override { return 0; }
  std::int16_t PlayStartBar() const override { return 0; }
  const std::shared_ptr<Tone>& CurrentTone() const override { return no_tone_; }
  const std::shared_ptr<QuilTimer>& Timer() const override { return no_timer_; }

 private:
  Tune& tune_;
  const std::shared_ptr<Tone> no_tone_;
  const std::shared_ptr<QuilTimer> no_timer_;
};

}  // namespace

std::unique_ptr<TunePlayback> SoundLink::PlaybackOf(Tune& tune) {
  return std::make_unique<SilentPlayback>(tune);
}

}  // namespace zelmar
