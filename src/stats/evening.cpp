#include "stats/evening.h"

#include <unordered_map>

namespace vantor {

std::optional<double> PlayerCounts::FragsPerDeath() const {
  if (Of(CountKind::kDeaths) == 0) return std::nullopt;
  return static_cast<double>(Of(CountKind::kFrags)) / static_cast<double>(Of(CountKind::kDeaths));
}

namespace {

void Add(PlayerCounts& player, const PlayerTally& slot) {
  const CountValues values = ValuesOf(slot);
  for (std::size_t k = 0; k < values.size(); ++k) player.counts[k] += values[k];
  for (std::size_t w = 0; w < kWeaponCount; ++w) player.weapons[w] += slot.weapons[w];
}

void AddTeam(std::string& teams, std::string_view team) {
  if (teams.find(team) == std::string::npos) teams += (teams.empty() ? "" : "/") + std::string(team);
}

}  // namespace

std::vector<PlayerCounts> PlayersOf(const std::vector<Match>& matches) {
  std::vector<PlayerCounts> players;
  std::unordered_map<std::string, std::size_t> index;
  for (std::size_t m = 0; m < matches.size(); ++m) {
    for (std::size_t slot = 0; slot < matches[m].members.size(); ++slot) {
      const PlayerTally& tally = matches[m].members[slot];
      const auto [at, is_new] = index.try_emplace(tally.strPlayerName, players.size());
      if (is_new)
        players.push_back({tally.strPlayerName, {}, {}, 0, std::vector<std::string>(matches.size())});
      PlayerCounts& player = players[at->second];
      if (player.teams[m].empty()) ++player.matches;
      AddTeam(player.teams[m], matches[m].TeamOf(slot));
      Add(player, tally);
    }
  }
  return players;
}

}  // namespace vantor
