// A sound file read back as samples, with the few measures that tell which note sounds when.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace zelmar::testing_support {

class SoundFile {
 public:
  // Reads a WAV file of 16-bit samples; the channels are averaged. Empty when it is not one.
  explicit SoundFile(const QString& path);

  bool Empty() const { return samples_.empty(); }
  double Seconds() const { return static_cast<double>(samples_.size()) / rate_; }

  // All times are seconds from the start of the file, levels 0 to 1.
  double Level(double from, double to) const;  // root of the mean square
  double LeftLevel(double from, double to) const;
  double RightLevel(double from, double to) const;
  double Peak() const;  // of either channel, anywhere
  // The first moment at or after `from` at which a window of 5 ms is louder than `level`; -1 for never.
  double OnsetAfter(double from, double level) const;
  // The first moment at or after `from` from which the file stays below `level` for 50 ms; -1 for never.
  double SilenceAfter(double from, double level) const;
  // The fundamental between 60 and 1200 Hz of 100 ms from `from` on, by autocorrelation; 0 for silence.
  double Pitch(double from) const;

 private:
  using Samples = std::vector<double>;

  std::size_t At(double seconds) const;
  double LevelOf(const Samples& samples, double from, double to) const;

  double rate_ = 44100.0;
  double peak_ = 0.0;
  Samples samples_;
  Samples left_;
  Samples right_;
};

// Sets an environment variable for its lifetime.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const QString& value);
  ~ScopedVariable();
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  bool was_set_;
  QByteArray before_;
};

}  // namespace zelmar::testing_support
