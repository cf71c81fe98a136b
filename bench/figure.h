// What every benchmark program prints: a measured figure beside its yardstick, their ratio and the limit.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace zelmar::bench {

// For a line that only informs.
inline constexpr double kNoLimit = 1e9;

// True once a figure was over its limit: the exit code of a program.
inline bool over_limit = false;

// Prints one line of the table.
inline void PrintFigure(const char* what, double measured, double yardstick, const char* unit, double ratio,
                        double limit) {
  std::printf("%-58s %12.3f %12.3f %-5s %9.3f", what, measured, yardstick, unit, ratio);
  if (limit < kNoLimit) std::printf("  limit %6.2f  %s", limit, ratio <= limit ? "within" : "OVER");
  std::printf("\n");
  std::fflush(stdout);
  over_limit = over_limit || ratio > limit;
}

inline void PrintHeading() {
  std::printf("%-58s %12s %12s %-5s %9s\n", "figure", "measured", "yardstick", "", "ratio");
}

// Ends the program where what it measures was not done.
inline void Require(bool done, const char* what) {
  if (done) return;
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The value below which `share` (0 to 1) of the values lie.
inline double Percentile(std::vector<double> values, double share) {
  const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(index), values.end());
  return values[index];
}

template <typename Function>
double MillisecondsOf(Function function) {
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Runs the two in turns, so that a disturbance of the machine meets both, and gives the median of each in
// milliseconds.
struct Pair {
  double measured;
  double yardstick;
};

template <typename Measured, typename Yardstick>
Pair RunInTurns(int rounds, Measured measured, Yardstick yardstick) {
  std::vector<double> first, second;
  for (int round = 0; round < rounds; ++round) {
    second.push_back(yardstick());
    first.push_back(measured());
  }
  return {Median(first), Median(second)};
}

}  // namespace zelmar::bench
