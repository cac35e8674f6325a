#include "reference/naive_statistics.h"

namespace vantor::reference {

namespace {

bool Has(const std::string& s, const std::string& t) { return s.find(t) != std::string::npos; }

bool InList(const List& l, const std::string& s, std::size_t count) {
  for (std::size_t i = 0; i < count && i < l.size(); ++i)
    if (l[i] == s) return true;
  return false;
}

const char* const kWeapons[42] = {
    "Rocket Splash", "Rocket Hit", "Turret Grenade", "Proximity Grenade", "Hyperblaster",
    "Homing Missile", "MegaChaingun", "Minigun", "Laser Defense", "Shrapnel Grenade", "Kamikaze",
    "Grenade", "Lightning Gun", "Plasmabomb", "Sentry Killer", "SK Splash", "Super Shotgun",
    "Sentry Rocket", "Sentry Gun", "Magnotron Grenade", "Ion Fuser", "Sniper Headshot",
    "Sniper Rifle", "Sniper Legshot", "Rail Gun", "Pipe Bomb", "Pistol", "Knife", "Uzi",
    "Goodyear Grenade", "Handgrenade Hit", "Handgrenade Splash", "Disease", "Plague Dart",
    "Shotgun", "Napalm Rocket Splash", "Napalm Rocket Hit", "Flamethrower", "Flame Damage",
    "Napalm Grenade", "Freeze Gun", "Gauntlet"};

}  // namespace

void NaiveRun::Roster() {
  for (const List* names : {&killer, &victim}) {
    for (const std::string& name : *names) {
      bool known = false;
      for (const std::string& r : roster) known = known || r == name || name == "Himself";
      if (!known) roster.push_back(name);
    }
  }
  for (std::size_t i = 0; i < roster.size();) {
    if (Has(roster[i], "Himself")) roster.erase(roster.begin() + static_cast<long>(i));
    else ++i;
  }
}

namespace {

std::int64_t FlagInfo(NaiveRun& run, const std::string& member, const std::string& kind,
                      std::size_t slot, std::vector<std::size_t>* counted = nullptr) {
  if (run.team_colour.size() <= slot) run.team_colour.resize(slot + 1);
  std::int64_t count = 0;
  for (std::size_t j = 0; j < run.flag_player.size(); ++j) {
    if (!Has(run.flag_action[j], kind) || !Has(run.flag_player[j], member)) continue;
    ++count;
    if (counted) counted->push_back(j);
    if (Has(run.flag_action[j], "Red")) run.team_colour[slot] = "Red";
    if (Has(run.flag_action[j], "Blue")) run.team_colour[slot] = "Blue";
  }
  return count;
}

void CheckTeamPass(NaiveRun& run) {
  const std::size_t nb = run.blue.size(), nr = run.red.size(), n = run.roster.size();
  for (std::size_t i = 0; i < n; ++i) {
    const std::string name = run.roster[i];
    if (InList(run.blue, name, run.blue.size()) || InList(run.red, name, run.red.size())) continue;
    for (std::size_t m = 0; m < run.killer.size(); ++m) {
      if (run.killer[m] == name) {
        if (InList(run.blue, run.victim[m], nb)) run.red.push_back(name);
        if (InList(run.red, run.victim[m], nr)) run.blue.push_back(name);
        break;
      }
      if (run.victim[m] == name && run.killer[m] != "Himself") {
        if (InList(run.blue, run.killer[m], nb)) run.red.push_back(name);
        if (InList(run.red, run.killer[m], nr)) run.blue.push_back(name);
        break;
      }
    }
  }
}

// Counts the rows of l equal to s; their indices, mapped by origin (none:
// as they are), go to counted.
std::int64_t CountEqual(const List& l, const std::string& s, const std::vector<std::size_t>* origin,
                        std::vector<std::size_t>& counted) {
  std::int64_t n = 0;
  for (std::size_t r = 0; r < l.size(); ++r) {
    if (l[r] != s) continue;
    ++n;
    counted.push_back(origin ? (*origin)[r] : r);
  }
  return n;
}

// Counts and removes the rows whose `match` list equals name and method equals m.
std::int64_t CountAndRemove(NaiveRun& run, List& match, const std::string& name, const std::string& m,
                            std::vector<std::size_t>& counted) {
  std::int64_t n = 0;
  for (std::size_t r = 0; r < run.killer.size();) {
    if (match[r] == name && run.method[r] == m) {
      ++n;
      counted.push_back(run.origin[r]);
      run.origin.erase(run.origin.begin() + static_cast<long>(r));
      for (List* l : {&run.killer, &run.victim, &run.method}) l->erase(l->begin() + static_cast<long>(r));
    } else {
      ++r;
    }
  }
  return n;
}

}  // namespace

void NaiveRun::Teams(int passes) {
  team_colour.clear();
  for (std::size_t i = 0; i < roster.size(); ++i) {
    for (const char* kind : {"Flag Defense", "Base Defense", "FC Frag", "FC Defense", "Flag Grab",
                             "Flag Capture"}) {
      FlagInfo(*this, roster[i], kind, i);
    }
  }
  for (std::size_t i = 0; i < roster.size(); ++i) {
    if (team_colour[i] == "Blue") blue.push_back(roster[i]);
    if (team_colour[i] == "Red") red.push_back(roster[i]);
  }
  for (int p = 0; p < passes; ++p) CheckTeamPass(*this);
}

void NaiveRun::Tallies() {
  const std::size_t nb = blue.size(), nr = red.size();
  slots.assign(nb + nr, NaiveSlot{});
  origin.resize(killer.size());
  for (std::size_t r = 0; r < origin.size(); ++r) origin[r] = r;
  maximum = static_cast<std::int64_t>((nb + nr) * 100 + 50);
  auto name_of = [&](std::size_t s) { return s < nb ? blue[s] : red[s - nb]; };
  for (std::size_t s = 0; s < nb + nr; ++s) {
    NaiveSlot& slot = slots[s];
    slot.name = name_of(s);
    slot.counts[0] = CountEqual(killer, slot.name, &origin, slot.counted[0]);
    slot.counts[1] = CountEqual(victim, slot.name, &origin, slot.counted[1]);
    slot.counts[2] = CountAndRemove(*this, victim, slot.name, "Suicide", slot.counted[2]);
  }
  for (std::size_t s = 0; s < nb + nr; ++s) {
    NaiveSlot& slot = slots[s];
    const std::size_t position = s < nb ? s : s - nb;
    int c = 3;
    for (const char* kind : {"Flag Grab", "FC Defense", "Flag Capture", "Flag Defense",
                             "Base Defense", "FC Frag"}) {
      slot.counts[c] = FlagInfo(*this, slot.name, kind, position, &slot.counted[c]);
      ++c;
    }
    slot.counts[9] = CountEqual(sentry, slot.name, nullptr, slot.counted[9]);
    for (int w = 0; w < 42; ++w) {
      slot.weapons[w] = CountAndRemove(*this, killer, slot.name, kWeapons[w], slot.counted[10 + w]);
    }
    progress.push_back(static_cast<std::int64_t>(s) * 100 + 30);
  }
  progress.push_back(maximum * 8 / 10);
  auto rows = [&](std::size_t first, std::size_t end) {
    std::array<std::int64_t, 10> sums{};
    for (std::size_t s = first; s < end; ++s) {
      table[0].push_back(slots[s].name);
      for (int c = 0; c < 10; ++c) {
        table[c + 1].push_back(std::to_string(slots[s].counts[c]));
        sums[c] += slots[s].counts[c];
      }
    }
    table[0].push_back("Totals");
    for (int c = 0; c < 10; ++c) table[c + 1].push_back(std::to_string(sums[c]));
  };
  rows(0, nb);
  for (List& column : table) column.push_back(" ");
  rows(nb, nb + nr);
  progress.push_back(maximum * 9 / 10);
}

}  // namespace vantor::reference
