// The built-in synthesiser: one General MIDI device that sounds on the machine's own sound card or server.
//
// The environment overrides for one run of the program: ZELMAR_SOUNDFONT names the file of the instruments,
// ZELMAR_AUDIO_DRIVER the way the sound goes ("file" writes a WAV file in real time), ZELMAR_AUDIO_FILE that
// file.
#pragma once

#include <QString>
#include <future>
#include <memory>

#include "platform/services.h"

namespace zelmar {

class SynthOutput : public MidiOutput {
 public:
  // Loudness at which a chord of ten notes of a usual instrument, at full volume, stays below the limit.
  static constexpr double kDefaultGain = 0.2;

  SynthOutput();
  ~SynthOutput() override;

  // The file of the instruments; empty for the one that the person chose, or the best that is installed.
  // Counts from the next Open on.
  void SetSoundFont(const QString& path) { sound_font_ = path; }
  const QString& SoundFont() const { return sound_font_; }
  // 0 to 10. Counts from the next Open on.
  void SetGain(double gain) { gain_ = gain; }
  double Gain() const { return gain_; }
  // How the sound goes out, empty while closed.
  QString AudioDriver() const;
  // Whether the instruments that are open have more than the first bank and the drums; false while closed.
  bool HasVariationBanks() const;

  // Begins to load the instruments, on a thread that the next Open waits for: a program calls this first of
  // all and has its windows ready meanwhile.
  void LoadAhead();

  int DeviceCount() override { return 1; }
  QString DeviceName(int device) override;
  int Open(int device) override;
  void Close() override;
  void Reset() override;
  void ShortMessage(std::uint32_t packed) override;
  void LongMessage(const QByteArray& bytes) override;
  QString ErrorText(int code) override;

 private:
  struct Engine;
  // What an engine is made of.
  struct EngineOrder {
    QString font;
    double gain = kDefaultGain;
    QString sound_file;
    bool operator==(const EngineOrder&) const = default;
  };

  EngineOrder Order() const;
  static std::unique_ptr<Engine> MakeEngine(const EngineOrder& order);
  int Fail(const QString& words);

  QString sound_font_;
  double gain_ = kDefaultGain;
  std::unique_ptr<Engine> engine_;
  std::future<std::unique_ptr<Engine>> ahead_;
  QString failure_words_;
};

}  // namespace zelmar
