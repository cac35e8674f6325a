#pragma once
// Deterministic generated game logs (already imported lines) over a small
// pool of awkward names: names inside other names, names differing only in
// case, an empty name, names holding "Himself", three-letter names.

#include <cstdint>
#include <string>
#include <vector>

namespace vantor::testing {

struct EventLogOptions {
  std::uint32_t seed = 1;
  int lines = 200;
  int players = 12;  // how many of the name pool take part
};

std::vector<std::string> GenerateEventLines(const EventLogOptions& options);

}  // namespace vantor::testing
