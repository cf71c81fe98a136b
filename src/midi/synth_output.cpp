#include "midi/synth_output.h"

#include <fluidsynth.h>

#include <QFile>
#include <array>
#include <set>
#include <utility>

#include "midi/jack_server_watch.h"
#include "midi/midi_error_words.h"
#include "midi/midi_numbers.h"
#include "midi/quiet_libraries.h"
#include "midi/sound_font.h"
#include "model/event_type.h"

namespace zelmar {

namespace {

constexpr int kAllChannels = -1;
constexpr double kAllOfTheSound = 1000.0;  // tenths of a per cent
constexpr int kFirstBank = 0;
constexpr int kDrumBank = 128;   // the library's number for the drums of channel 10
constexpr int kPolyphony = 128;  // voices at a time, twice what General MIDI asks of an instrument

template <auto destroy>
struct Destroyer {
  template <typename T>
  void operator()(T* object) const {
    destroy(object);
  }
};

// Tried in this order where the library has them. Sound servers come before bare devices, which they hold.
constexpr std::array<const char*, 9> kDrivers = {"pipewire", "pulseaudio", "jack",    "alsa", "coreaudio",
                                                 "wasapi",   "dsound",     "waveout", "oss"};

std::set<std::string> CompiledDrivers(fluid_settings_t* settings) {
  std::set<std::string> names;
  fluid_settings_foreach_option(settings, "audio.driver", &names,
                                [](void* found, const char*, const char* option) {
                                  static_cast<std::set<std::string>*>(found)->insert(option);
                                });
  return names;
}

QString FromEnvironment(const char* name) {
  return qEnvironmentVariable(name);
}

bool IsResetMessage(const QByteArray& bytes) {
  const auto at = [&bytes](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
  // The second or third byte is the number of a device, and is not looked at.
  const bool general_midi = bytes.size() == 6 && at(1) == 0x7E && at(3) == 0x09 && at(4) >= 1 && at(4) <= 3;
  const bool roland = bytes.size() == 11 && at(1) == 0x41 && at(3) == 0x42 && at(4) == 0x12 &&
                      at(5) == 0x40 && at(6) == 0x00 && at(7) == 0x7F;
  const bool yamaha = bytes.size() == 9 && at(1) == 0x43 && (at(2) & 0xF0U) == 0x10 && at(3) == 0x4C &&
                      at(4) == 0 && at(5) == 0 && at(6) == 0x7E;
  return general_midi || roland || yamaha;
}

// The library's own rule gives a fifth of the sound to the reverb when its controller is at full; here it is
// all, as on the modules that tunes are made for.
void HearAllOfTheReverb(fluid_synth_t* synth) {
  const std::unique_ptr<fluid_mod_t, Destroyer<delete_fluid_mod>> rule(new_fluid_mod());
  if (!rule) return;
  fluid_mod_set_source1(rule.get(), EXTERNAL_FX_DEPTH,
                        FLUID_MOD_CC | FLUID_MOD_LINEAR | FLUID_MOD_UNIPOLAR | FLUID_MOD_POSITIVE);
  fluid_mod_set_source2(rule.get(), 0, 0);
  fluid_mod_set_dest(rule.get(), GEN_REVERBSEND);
  fluid_mod_set_amount(rule.get(), kAllOfTheSound);
  fluid_synth_add_default_mod(synth, rule.get(), FLUID_SYNTH_OVERWRITE);
}

}  // namespace

// What is alive while the device is open. Members end in the reverse of this order.
struct SynthOutput::Engine {
  EngineOrder order;
  bool font_loaded = false;
  std::unique_ptr<JackServerWatch> watch;  // keeps others from opening clients at a lost server
  std::unique_ptr<fluid_settings_t, Destroyer<delete_fluid_settings>> settings;
  std::unique_ptr<fluid_synth_t, Destroyer<delete_fluid_synth>> synth;
  std::unique_ptr<fluid_audio_driver_t, Destroyer<delete_fluid_audio_driver>> driver;
  QString driver_name;
  std::set<std::pair<int, int>> pinned;  // bank and patch of instruments that stay in memory
  double reverb_level = 0.0;
  double chorus_level = 0.0;
  bool effects_held = false;

  bool StartDriver(const std::string& name) {
    if (name == "jack") {
      watch = JackServerWatch::Start();
      if (!watch) return false;
    }
    fluid_settings_setstr(settings.get(), "audio.driver", name.c_str());
    driver.reset(new_fluid_audio_driver(settings.get(), synth.get()));
    if (!driver) {
      watch.reset();
      return false;
    }
    driver_name = QString::fromStdString(name);
    return true;
  }

  bool StartAnyDriver() {
    const std::set<std::string> compiled = CompiledDrivers(settings.get());
    for (const char* const name : kDrivers)
      if (compiled.contains(name) && StartDriver(name)) return true;
    return false;
  }

  // An instrument once used stays in memory, so that a return to it reads no file.
  void PinInstrument(int channel) {
    fluid_preset_t* const preset = fluid_synth_get_channel_preset(synth.get(), channel);
    if (preset == nullptr) return;
    const std::pair<int, int> which{fluid_preset_get_banknum(preset), fluid_preset_get_num(preset)};
    if (!pinned.insert(which).second) return;
    fluid_synth_pin_preset(synth.get(), fluid_sfont_get_id(fluid_preset_get_sfont(preset)), which.first,
                           which.second);
  }

  // Echoes that are still on their way are not heard while the effects are held.
  void HoldEffects(bool hold) {
    effects_held = hold;
    fluid_synth_set_reverb_group_level(synth.get(), kAllChannels, hold ? 0.0 : reverb_level);
    fluid_synth_set_chorus_group_level(synth.get(), kAllChannels, hold ? 0.0 : chorus_level);
  }

  void NoteOn(int channel, int pitch, int velocity) {
    if (effects_held && velocity > 0) HoldEffects(false);
    fluid_synth_noteon(synth.get(), channel, pitch, velocity);
  }
};

SynthOutput::SynthOutput() = default;

SynthOutput::~SynthOutput() = default;

QString SynthOutput::AudioDriver() const {
  return engine_ ? engine_->driver_name : QString();
}

bool SynthOutput::HasVariationBanks() const {
  if (!engine_) return false;
  fluid_synth_t* const synth = engine_->synth.get();
  for (int number = 0; number < fluid_synth_sfcount(synth); ++number) {
    fluid_sfont_t* const font = fluid_synth_get_sfont(synth, static_cast<unsigned int>(number));
    fluid_sfont_iteration_start(font);
    while (fluid_preset_t* const preset = fluid_sfont_iteration_next(font)) {
      const int bank = fluid_preset_get_banknum(preset);
      if (bank != kFirstBank && bank != kDrumBank) return true;
    }
  }
  return false;
}

QString SynthOutput::DeviceName(int device) {
  return device == 0 ? QStringLiteral("Zelmar synthesiser") : QString();
}

int SynthOutput::Fail(const QString& words) {
  failure_words_ = QStringLiteral("The built-in synthesiser could not be started: ") + words;
  return kNotEnabled;
}

SynthOutput::EngineOrder SynthOutput::Order() const {
  const bool own = !sound_font_.isEmpty() && FromEnvironment("ZELMAR_SOUNDFONT").isEmpty();
  return {own ? sound_font_ : SoundFontInUse(), gain_, FromEnvironment("ZELMAR_AUDIO_FILE")};
}

std::unique_ptr<SynthOutput::Engine> SynthOutput::MakeEngine(const EngineOrder& order) {
  auto engine = std::make_unique<Engine>();
  engine->order = order;
  engine->settings.reset(new_fluid_settings());
  fluid_settings_t* const settings = engine->settings.get();
  fluid_settings_setint(settings, "synth.dynamic-sample-loading", 1);
  fluid_settings_setint(settings, "synth.polyphony", kPolyphony);
  fluid_settings_setnum(settings, "synth.gain", order.gain);
  fluid_settings_setint(settings, "synth.reverb.active", 1);
  fluid_settings_setint(settings, "synth.chorus.active", 1);
  fluid_settings_setstr(settings, "audio.jack.id", "Zelmar synthesiser");
  fluid_settings_setint(settings, "audio.jack.autoconnect", 1);
  if (!order.sound_file.isEmpty())
    fluid_settings_setstr(settings, "audio.file.name", QFile::encodeName(order.sound_file).constData());

  engine->synth.reset(new_fluid_synth(settings));
  if (!engine->synth) return engine;
  HearAllOfTheReverb(engine->synth.get());
  const QByteArray font_path = QFile::encodeName(order.font);
  engine->font_loaded = fluid_is_soundfont(font_path.constData()) != 0 &&
                        fluid_synth_sfload(engine->synth.get(), font_path.constData(), 1) != FLUID_FAILED;
  return engine;
}

void SynthOutput::LoadAhead() {
  QuietSoundLibraries();
  const EngineOrder order = Order();
  if (order.font.isEmpty()) return;
  ahead_ = std::async(std::launch::async, [order] { return MakeEngine(order); });
}

int SynthOutput::Open(int device) {
  Close();
  if (device != 0) return kBadDeviceNumber;
  QuietSoundLibraries();
  TakeSynthComplaint();

  const EngineOrder order = Order();
  if (order.font.isEmpty()) return Fail(QStringLiteral("no SoundFont is installed."));
  auto engine = ahead_.valid() ? ahead_.get() : nullptr;
  if (!engine || engine->order != order) engine = MakeEngine(order);
  if (!engine->synth) return Fail(QString::fromStdString(TakeSynthComplaint()));
  if (!engine->font_loaded)
    return Fail(QStringLiteral("the SoundFont \"%1\" cannot be read.").arg(order.font));
  fluid_synth_get_reverb_group_level(engine->synth.get(), kAllChannels, &engine->reverb_level);
  fluid_synth_get_chorus_group_level(engine->synth.get(), kAllChannels, &engine->chorus_level);

  const QString driver = FromEnvironment("ZELMAR_AUDIO_DRIVER");
  if (driver.isEmpty()) {
    if (!engine->StartAnyDriver())
      return Fail(QStringLiteral("no sound card and no sound server is there. The program runs in silence."));
  } else if (!engine->StartDriver(driver.toStdString())) {
    return Fail(QStringLiteral("the audio driver \"%1\" does not start.").arg(driver));
  }
  engine_ = std::move(engine);
  return kSuccess;
}

void SynthOutput::Close() {
  engine_.reset();
}

void SynthOutput::Reset() {
  if (!engine_) return;
  fluid_synth_t* const synth = engine_->synth.get();
  for (int channel = 0; channel < kChannelCount; ++channel) fluid_synth_cc(synth, channel, DAMPER_PEDAL, 0);
  fluid_synth_all_sounds_off(synth, kAllChannels);
  engine_->HoldEffects(true);
}

void SynthOutput::ShortMessage(std::uint32_t packed) {
  if (!engine_) return;
  fluid_synth_t* const synth = engine_->synth.get();
  const int channel = static_cast<int>(packed & kChannelBits);
  const int data1 = static_cast<int>((packed >> 8U) & 0xFFU);
  const int data2 = static_cast<int>((packed >> 16U) & 0xFFU);
  switch (packed & kKindBits) {
    case kNoteOff:
      fluid_synth_noteoff(synth, channel, data1);
      break;
    case kNoteOn:
      engine_->NoteOn(channel, data1, data2);
      break;
    case kKeyPressure:
      fluid_synth_key_pressure(synth, channel, data1, data2);
      break;
    case kController:
      fluid_synth_cc(synth, channel, data1, data2);
      break;
    case kProgramChange:
      fluid_synth_program_change(synth, channel, data1);
      engine_->PinInstrument(channel);
      break;
    case kChannelPressure:
      fluid_synth_channel_pressure(synth, channel, data1);
      break;
    case kPitchBend:
      fluid_synth_pitch_bend(synth, channel, data1 + data2 * kDataValues);
      break;
    default:
      break;  // system messages have no effect on a synthesiser that is played live
  }
}

void SynthOutput::LongMessage(const QByteArray& bytes) {
  if (!engine_ || bytes.size() < 2) return;
  fluid_synth_t* const synth = engine_->synth.get();
  // The library knows one of the resets, and would then pass over every bank message to come.
  if (IsResetMessage(bytes)) {
    fluid_synth_system_reset(synth);
    return;
  }
  // Without the first and the last byte, which only frame the message.
  fluid_synth_sysex(synth, bytes.constData() + 1, static_cast<int>(bytes.size()) - 2, nullptr, nullptr,
                    nullptr, 0);
}

QString SynthOutput::ErrorText(int code) {
  return code == kNotEnabled && !failure_words_.isEmpty() ? failure_words_ : MidiErrorWords(code);
}

}  // namespace zelmar
