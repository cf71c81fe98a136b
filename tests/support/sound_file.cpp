#include "support/sound_file.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace zelmar::testing_support {

namespace {

constexpr double kWindowSeconds = 0.005;
constexpr double kQuietSeconds = 0.05;
constexpr double kPitchSeconds = 0.1;
constexpr double kLowestPitch = 60.0;
constexpr double kHighestPitch = 1200.0;

double Mean(std::span<const double> values) {
  return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

// How alike the samples and their copy `lag` samples later are, 1 for the same.
double Likeness(std::span<const double> x, std::size_t lag) {
  double product = 0.0;
  double energy = 0.0;
  double later_energy = 0.0;
  for (std::size_t i = 0; i + lag < x.size(); ++i) {
    product += x[i] * x[i + lag];
    energy += x[i] * x[i];
    later_energy += x[i + lag] * x[i + lag];
  }
  const double scale = std::sqrt(energy * later_energy);
  return scale > 0.0 ? product / scale : 0.0;
}

}  // namespace

SoundFile::SoundFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return;
  const QByteArray bytes = file.readAll();
  if (bytes.size() < 44 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE") return;
  const auto word = [&bytes](qsizetype at) {
    return qFromLittleEndian<std::uint32_t>(bytes.constData() + at);
  };
  const auto half = [&bytes](qsizetype at) {
    return qFromLittleEndian<std::uint16_t>(bytes.constData() + at);
  };
  std::size_t channels = 0;
  for (qsizetype at = 12; at + 8 <= bytes.size(); at += 8 + static_cast<qsizetype>(word(at + 4))) {
    const QByteArray name = bytes.mid(at, 4);
    if (name == "fmt ") {
      channels = half(at + 10);
      rate_ = word(at + 12);
      if (half(at + 22) != 16) return;
    }
    if (name != "data" || channels == 0) continue;
    const auto size = std::min<qsizetype>(word(at + 4), bytes.size() - at - 8);
    const std::size_t frames = static_cast<std::size_t>(size) / 2 / channels;
    for (std::size_t frame = 0; frame < frames; ++frame) {
      double sum = 0.0;
      for (std::size_t channel = 0; channel < channels; ++channel) {
        const auto place = at + 8 + static_cast<qsizetype>(2 * (frame * channels + channel));
        const double sample = static_cast<std::int16_t>(half(place)) / 32768.0;
        peak_ = std::max(peak_, std::abs(sample));
        sum += sample;
        if (channel == 0) left_.push_back(sample);
        if (channel + 1 == channels) right_.push_back(sample);
      }
      samples_.push_back(sum / static_cast<double>(channels));
    }
    return;
  }
}

std::size_t SoundFile::At(double seconds) const {
  const double place = std::clamp(seconds * rate_, 0.0, static_cast<double>(samples_.size()));
  return static_cast<std::size_t>(place);
}

double SoundFile::LevelOf(const Samples& samples, double from, double to) const {
  const std::size_t first = At(from);
  const std::size_t last = At(to);
  if (first >= last) return 0.0;
  double squares = 0.0;
  for (std::size_t i = first; i < last; ++i) squares += samples[i] * samples[i];
  return std::sqrt(squares / static_cast<double>(last - first));
}

double SoundFile::Level(double from, double to) const {
  return LevelOf(samples_, from, to);
}

double SoundFile::LeftLevel(double from, double to) const {
  return LevelOf(left_, from, to);
}

double SoundFile::RightLevel(double from, double to) const {
  return LevelOf(right_, from, to);
}

double SoundFile::Peak() const {
  return peak_;
}

double SoundFile::OnsetAfter(double from, double level) const {
  for (double t = from; t + kWindowSeconds <= Seconds(); t += kWindowSeconds / 5)
    if (Level(t, t + kWindowSeconds) > level) return t + kWindowSeconds / 2;
  return -1.0;
}

double SoundFile::SilenceAfter(double from, double level) const {
  for (double t = from; t + kQuietSeconds <= Seconds(); t += kWindowSeconds / 5)
    if (Level(t, t + kQuietSeconds) < level) return t;
  return -1.0;
}

double SoundFile::Pitch(double from) const {
  const std::size_t first = At(from);
  const std::size_t last = At(from + kPitchSeconds);
  if (first >= last) return 0.0;
  std::vector<double> x(samples_.begin() + static_cast<std::ptrdiff_t>(first),
                        samples_.begin() + static_cast<std::ptrdiff_t>(last));
  const double mean = Mean(x);
  for (double& sample : x) sample -= mean;
  const auto shortest = static_cast<std::size_t>(rate_ / kHighestPitch);
  const auto longest = std::min(static_cast<std::size_t>(rate_ / kLowestPitch), x.size() / 2);
  std::vector<double> likeness(longest + 2, 0.0);
  for (std::size_t lag = shortest - 1; lag < likeness.size(); ++lag) likeness[lag] = Likeness(x, lag);
  const double best =
      *std::max_element(likeness.begin() + static_cast<std::ptrdiff_t>(shortest), likeness.end());
  if (best <= 0.0) return 0.0;
  // The first peak that is nearly the best: later ones are whole multiples of the period.
  for (std::size_t lag = shortest; lag <= longest; ++lag) {
    const double before = likeness[lag - 1];
    const double here = likeness[lag];
    const double after = likeness[lag + 1];
    if (here < 0.95 * best || here < before || here < after) continue;
    const double curve = before - 2 * here + after;
    const double shift = curve != 0.0 ? 0.5 * (before - after) / curve : 0.0;
    return rate_ / (static_cast<double>(lag) + shift);
  }
  return 0.0;
}

ScopedVariable::ScopedVariable(const char* name, const QString& value)
    : name_(name), was_set_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
  qputenv(name, value.toUtf8());
}

ScopedVariable::~ScopedVariable() {
  if (was_set_)
    qputenv(name_, before_);
  else
    qunsetenv(name_);
}

}  // namespace zelmar::testing_support
