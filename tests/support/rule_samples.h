#pragma once
// One sample line per message rule, in matching order, each recognised by its own rule before any
// other, with what it appends to List2, List3, List4, List5, List6 and List10 ("" for nothing),
// worked out by hand: Killer, Victim, Carrier, Loser, Owner and Wrecker stand for the players.

#include <array>
#include <string>

namespace vantor::testing {

struct RuleSample {
  int rule;
  std::string line;
  std::array<std::string, 6> expected;
};

// One row per rule, as wide as its message: clang-format would fold them.
// clang-format off
inline const RuleSample kRuleSamples[] = {
    {1, "Victim almost dodged Killer's Napalm Rocket", {"Killer", "Victim", "Napalm Rocket Splash", "", "", ""}},
    {2, "Victim almost dodged Killer's Rocket", {"Killer", "Victim", "Rocket Splash", "", "", ""}},
    {3, "Victim was popped by Killer's Goodyear Grenade", {"Killer", "Victim", "Goodyear Grenade", "", "", ""}},
    {4, "Victim was fried by Killer's Napalm Grenade", {"Killer", "Victim", "Napalm Grenade", "", "", ""}},
    {5, "Victim was shredded by Killer's Shrapnel Grenade", {"Killer", "Victim", "Shrapnel Grenade", "", "", ""}},
    {6, "Victim caught flak from Killer's Shrapnel Grenade", {"Killer", "Victim", "Shrapnel Grenade", "", "", ""}},
    {7, "Victim was popped by Killer's Grenade", {"Killer", "Victim", "Grenade", "", "", ""}},
    {8, "Victim ate Killer's Napalm Rocket", {"Killer", "Victim", "Napalm Rocket Hit", "", "", ""}},
    {9, "Victim ate Killer's Rocket", {"Killer", "Victim", "Rocket Hit", "", "", ""}},
    {10, "Victim was chewed up by Killer", {"Killer", "Victim", "MegaChaingun", "", "", ""}},
    {11, "Victim saw Killer's Light", {"Killer", "Victim", "Laser Defense", "", "", ""}},
    {12, "Victim didn't survive Killer's Kamikaze run", {"Killer", "Victim", "Kamikaze", "", "", ""}},
    {13, "Victim ate Killer's Homing Missile", {"Killer", "Victim", "Homing Missile", "", "", ""}},
    {14, "Victim swallowed a burst from Killer's Uzi", {"Killer", "Victim", "Uzi", "", "", ""}},
    {15, "Victim was railed by Killer", {"Killer", "Victim", "Rail Gun", "", "", ""}},
    {16, "Victim was electrocuted by Killer", {"Killer", "Victim", "Lightning Gun", "", "", ""}},
    {17, "Victim was gunned down by Killer's Super Shotgun", {"Killer", "Victim", "Super Shotgun", "", "", ""}},
    {18, "Victim 's head was blown off by Killer", {"Killer", "Victim", "Sniper Headshot", "", "", ""}},
    {19, "Victim intercepted Killer's Sentry Killer", {"Killer", "Victim", "Sentry Killer", "", "", ""}},
    {20, "Victim was liquidated by Killer's Sentry Gun Rocket", {"Killer", "Victim", "Sentry Rocket", "", "", ""}},
    {21, "Victim was melted Killer's Plasmabomb", {"Killer", "Victim", "Plasmabomb", "", "", ""}},
    {22, "Victim was laid low by Killer's Sentry Gun", {"Killer", "Victim", "Sentry Gun", "", "", ""}},
    {23, "Victim was sucked into Killer's Magnotron", {"Killer", "Victim", "Magnotron Grenade", "", "", ""}},
    {24, "Victim was sniped by Killer", {"Killer", "Victim", "Sniper Rifle", "", "", ""}},
    {25, "Victim was knifed by Killer", {"Killer", "Victim", "Knife", "", "", ""}},
    {26, "Victim fell for Killer's Pipe Bomb", {"Killer", "Victim", "Pipe Bomb", "", "", ""}},
    {27, "Victim was plugged by Killer's Turret Grenade", {"Killer", "Victim", "Turret Grenade", "", "", ""}},
    {28, "Victim swallowed Killer's Proximity Grenade", {"Killer", "Victim", "Proximity Grenade", "", "", ""}},
    {29, "Victim was broiled by Killer's Flamethrower", {"Killer", "Victim", "Flamethrower", "", "", ""}},
    {30, "Victim was immolated by Killer's Flames", {"Killer", "Victim", "Flame Damage", "", "", ""}},
    {31, "Victim was too close to Killer's Sentry Killer", {"Killer", "Victim", "SK Splash", "", "", ""}},
    {32, "Victim got torn up by Killer's minigun", {"Killer", "Victim", "Minigun", "", "", ""}},
    {33, "Victim caught Killer's Handgrenade", {"Killer", "Victim", "Handgrenade Hit", "", "", ""}},
    {34, "Victim didn't see Killer's Handgrenade", {"Killer", "Victim", "Handgrenade Splash", "", "", ""}},
    {35, "Victim fell prey to Killer's plague", {"Killer", "Victim", "Disease", "", "", ""}},
    {36, "Victim was poisoned by Killer's dart", {"Killer", "Victim", "Plague Dart", "", "", ""}},
    {37, "Victim had his legs blown out from under him by Killer", {"Killer", "Victim", "Sniper Legshot", "", "", ""}},
    {38, "Victim was cored by Killer", {"Killer", "Victim", "Ion Fuser", "", "", ""}},
    {39, "Victim was gunned down by Killer", {"Killer", "Victim", "Shotgun", "", "", ""}},
    {40, "Victim was blasted by Killer", {"Killer", "Victim", "Hyperblaster", "", "", ""}},
    {41, "Victim was assassinated by Killer", {"Killer", "Victim", "Pistol", "", "", ""}},
    {42, "Victim was frozen by Killer", {"Killer", "Victim", "Freeze Gun", "", "", ""}},
    {43, "Victim was pummelled by Killer", {"Killer", "Victim", "Gauntlet", "", "", ""}},
    {44, "Victim was pummeled by Killer", {"Killer", "Victim", "Gauntlet", "", "", ""}},
    {45, "Victim committed suicide while plagued by Killer", {"Killer", "Victim", "Disease", "", "", ""}},
    {46, "Owner's Sentry Gun was destroyed by Wrecker.", {"", "", "", "", "", "Wrecker"}},
    {47, "Carrier defends the BLUE flag.", {"", "", "", "Carrier", "Flag Defense (Blue)", ""}},
    {48, "Carrier got the BLUE flag!", {"", "", "", "Carrier", "Flag Grab (Red)", ""}},
    {49, "Carrier defends the BLUE base.", {"", "", "", "Carrier", "Base Defense (Blue)", ""}},
    {50, "Carrier captured the BLUE flag!", {"", "", "", "Carrier", "Flag Capture (Red)", ""}},
    {51, "Carrier fragged BLUE's flag carrier!", {"", "", "", "Carrier", "FC Frag (Red)", ""}},
    {52, "Carrier defends BLUE's flag carrier against an aggressive enemy", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {53, "Carrier defends BLUE's flag carrier against an agressive enemy", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {54, "Carrier defends the BLUE's flag carrier.", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {55, "Carrier defends the RED flag.", {"", "", "", "Carrier", "Flag Defense (Red)", ""}},
    {56, "Carrier got the RED flag!", {"", "", "", "Carrier", "Flag Grab (Blue)", ""}},
    {57, "Carrier defends the RED base.", {"", "", "", "Carrier", "Base Defense (Red)", ""}},
    {58, "Carrier captured the RED flag!", {"", "", "", "Carrier", "Flag Capture (Blue)", ""}},
    {59, "Carrier fragged RED's flag carrier!", {"", "", "", "Carrier", "FC Frag (Blue)", ""}},
    {60, "Carrier defends RED's flag carrier against an aggressive enemy", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {61, "Carrier defends RED's flag carrier against an agressive enemy", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {62, "Carrier defends the RED's flag carrier.", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {63, "Loser blew himself up.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {64, "Loser killed himself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {65, "Loser killed herself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {66, "Loser tripped on his own grenade.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {67, "Loser tripped on her own grenade.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {68, "Loser burned himself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {69, "Loser was in the wrong place.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {70, "Loser cratered.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {71, "Loser sank like a rock.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {72, "Loser does a back flip into the lava.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {73, "Loser was squished.", {"Himself", "Loser", "Suicide", "", "", ""}},
};
// clang-format on

}  // namespace vantor::testing
