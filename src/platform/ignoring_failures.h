// Takes a step whose failure is ignored, so that the later steps are still taken.
#pragma once

#include <exception>

namespace zelmar {

template <typename Step>
void IgnoringFailures(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    // The caller goes on whatever the outcome.
  }
}

}  // namespace zelmar
