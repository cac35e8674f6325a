#pragma once
// A literal, slow rendering of the statistics stages: every count a scan of
// the event lists, every removal one row at a time. It shares no code with
// the engine, so that the two can be compared on many generated logs.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vantor::reference {

using List = std::vector<std::string>;

struct NaiveSlot {
  std::string name;
  std::array<std::int64_t, 10> counts{};  // in the statistics table's column order
  std::array<std::int64_t, 42> weapons{};  // in the weapon table's order
  // Per count (the ten, then the 42 weapons), the rows it counted, in the
  // order counted: indices into the event lists as Tallies found them
  // (flag counts: into flag_player, sentry kills: into sentry).
  std::array<std::vector<std::size_t>, 52> counted;
};

struct NaiveRun {
  // Inputs: the event lists as the classifier left them.
  List killer, victim, method, flag_player, flag_action, sentry;
  // Results.
  List roster, blue, red;
  std::vector<std::string> team_colour;  // by slot
  std::vector<NaiveSlot> slots;
  std::array<List, 11> table;
  std::vector<std::int64_t> progress;
  std::int64_t maximum = 0;
  // Per kill event row, its index when Tallies began; removed with its row.
  std::vector<std::size_t> origin;

  void Roster();
  void Teams(int passes);
  void Tallies();
};

}  // namespace vantor::reference
