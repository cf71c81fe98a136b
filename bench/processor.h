// Processor time of this program.
#pragma once

#include <sys/resource.h>

#include "figure.h"

namespace zelmar::bench {

inline double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Percent of one core that `work` takes while it runs.
template <typename Work>
double PercentOfACore(Work work) {
  const double before = ProcessorSeconds();
  const double milliseconds = MillisecondsOf(work);
  return 100.0 * (ProcessorSeconds() - before) / (milliseconds / 1000.0);
}

}  // namespace zelmar::bench
