#include "stats/awards.h"

#include <cstdio>

namespace vantor {

namespace {

template <CountKind... kinds>
double Sum(const PlayerCounts& p) {
  return static_cast<double>((p.Of(kinds) + ...));
}

double FragsPerDeath(const PlayerCounts& p) { return p.FragsPerDeath().value_or(0); }

// A frags-per-death leader with a handful of deaths could be luck.
constexpr Count kMinDeathsForRatio = 5;

}  // namespace

const std::array<AwardRow, 9> kAwards = {{
    {"top_fragger", "Top fragger", "most frags", Sum<CountKind::kFrags>, false, 0},
    {"flag_runner", "Flag runner", "most flag captures", Sum<CountKind::kFlagCaptures>, false, 0},
    {"defender", "Defender", "most flag and base defences",
     Sum<CountKind::kFlagDefends, CountKind::kBaseDefends>, false, 0},
    {"carrier_killer", "Carrier killer", "most frags of the enemy flag carrier", Sum<CountKind::kFCKills>,
     false, 0},
    {"bodyguard", "Bodyguard", "most defences of the own flag carrier", Sum<CountKind::kFCDefends>, false, 0},
    {"sentry_buster", "Sentry buster", "most sentry guns destroyed", Sum<CountKind::kSentryKills>, false, 0},
    {"best_frags_per_death", "Best frags per death", "best frags per death, of those with 5 deaths or more",
     FragsPerDeath, true, kMinDeathsForRatio},
    {"most_suicides", "Hall of shame: most suicides", "most suicides", Sum<CountKind::kSuicides>, false, 0},
    {"most_deaths", "Hall of shame: most deaths", "most deaths", Sum<CountKind::kDeaths>, false, 0},
}};

std::string AwardValueText(double value, bool ratio) {
  char text[32];
  std::snprintf(text, sizeof text, ratio ? "%.2f" : "%.0f", value);
  return text;
}

std::string Award::Reason() const {
  if (winners.empty()) return why_not;
  return std::string(row->reason) + ": " + AwardValueText(value, row->ratio);
}

namespace {

Award Give(const AwardRow& row, const std::vector<PlayerCounts>& players) {
  Award award{&row, {}, 0, {}};
  std::size_t candidates = 0;
  for (const PlayerCounts& p : players) {
    if (p.Of(CountKind::kDeaths) < row.min_deaths) continue;
    ++candidates;
    const double value = row.value(p);
    if (award.winners.empty() || value > award.value) {
      award.winners.clear();
      award.value = value;
    }
    if (value == award.value) award.winners.push_back(p.name);
  }
  if (candidates < 2) {
    award.why_not = "not given: fewer than two players could win it";
  } else if (award.value < 1) {
    award.why_not = "not given: nobody reached 1";
  }
  if (!award.why_not.empty()) award.winners.clear();
  return award;
}

}  // namespace

std::vector<Award> GiveAwards(const std::vector<PlayerCounts>& players) {
  std::vector<Award> awards;
  for (const AwardRow& row : kAwards) awards.push_back(Give(row, players));
  return awards;
}

}  // namespace vantor
