#include "report/class_tables.h"

namespace vantor {

namespace {

constexpr ClassCount W(Weapon w) { return ClassCount{false, w}; }
constexpr ClassCount kSentryKills{true, Weapon::RocketSplash};

using enum Weapon;

}  // namespace

const std::array<ClassTable, 8> kClassTables = {{
    {"<h2>Marine Stats</h2>",
     {{"<td>Rocket Splash</TD>", W(RocketSplash)},
      {"<td>Rocket Hit</TD>", W(RocketHit)},
      {"<td>Turret Gren</TD>", W(TurretGrenade)},
      {"<td>Proxy Gren</TD>", W(ProximityGrenade)},
      {"<td>Hyperblaster</TD>", W(Hyperblaster)},
      {"<td>Homer</TD>", W(HomingMissile)}},
     {W(RocketSplash), W(RocketHit)},
     "</table></body></html>"},
    {"<h2>Gunner Stats</h2>",
     {{"<td>Megachaingun</TD>", W(MegaChaingun)},
      {"<td>Minigun</TD>", W(Minigun)},
      {"<td>Laser Def</TD>", W(LaserDefense)},
      {"<td>Shrapnel Grenade</TD>", W(ShrapnelGrenade)}},
     {W(MegaChaingun), W(LaserDefense)},
     "  </table></body></html>"},
    {"<h2>Engineer Stats</h2>",
     {{"<td>Super Shotgun</TD>", W(SuperShotgun)},
      {"<td>Sentry Rocket</TD>", W(SentryRocket)},
      {"<td>Sentry</TD>", W(SentryGun)},
      {"<td>Ion Fuser</TD>", W(IonFuser)}},
     {W(SentryGun), W(SentryRocket), W(IonFuser)},
     "  </table></body></html>"},
    {"<h2>Cyborg Stats</h2>",
     {{"<td>Kamikazi</TD>", W(Kamikaze)},
      {"<td>Grenade</TD>", W(Grenade)},
      {"<td>Lightning Gun</TD>", W(LightningGun)},
      {"<td>Plasma</TD>", W(Plasmabomb)},
      {"<td>Sentry KillerK</TD>", W(SentryKiller)},
      {"<td>SK Splash</TD>", W(SKSplash)},
      {"<td>Sentry Kills</TD>", kSentryKills}},
     {W(Plasmabomb), W(Kamikaze), kSentryKills},
     "  </table></body></html>"},
    {"<h2>Sniper Stats</h2>",
     {{"<td>Headshot</TD>", W(SniperHeadshot)},
      {"<td>Sniper Rifle</TD>", W(SniperRifle)},
      {"<td>Legshot</TD>", W(SniperLegshot)},
      {"<td>Railgun</TD>", W(RailGun)},
      {"<td>Pipebombs</TD>", W(PipeBomb)}},
     {W(SniperHeadshot), W(SniperRifle), W(RailGun)},
     "  </table></body></html>"},
    {"<h2>Arsonist Stats</h2>",
     {{"<td>Napalm RL Splash</TD>", W(NapalmRocketSplash)},
      {"<td>Napalm RL Hit</TD>", W(NapalmRocketHit)},
      {"<td>Flamethrower</TD>", W(Flamethrower)},
      {"<td>Flame Damage</TD>", W(FlameDamage)},
      {"<td>Napalm Grenade</TD>", W(NapalmGrenade)},
      {"<td>Freeze Gun</TD>", W(FreezeGun)}},
     {W(Flamethrower), W(FlameDamage), W(NapalmRocketHit), W(NapalmRocketSplash)},
     "  </table></body></html>"},
    {"<h2>Assassin/Recon/Nurse Stats</h2>",
     {{"<td>Pistol</TD>", W(Pistol)},
      {"<td>Knife</TD>", W(Knife)},
      {"<td>Uzi</TD>", W(Uzi)},
      {"<td>Goodyear</TD>", W(GoodyearGrenade)},
      {"<td>Disease</TD>", W(Disease)},
      {"<td>Plague Dart</TD>", W(PlagueDart)},
      {"<td>SSG</TD>", W(SuperShotgun)}},
     {W(Pistol), W(Knife), W(Uzi), W(GoodyearGrenade), W(Disease), W(PlagueDart)},
     "  </table></body></html>"},
    {"<h2>Other Stats</h2>",
     {{"<td>Handgrenade Hit</TD>", W(HandgrenadeHit)},
      {"<td>Handgrenade Splash</TD>", W(HandgrenadeSplash)},
      {"<td>Shotgun</TD>", W(Shotgun)},
      {"<td>Gauntlet</TD>", W(Gauntlet)}},
     {W(HandgrenadeHit), W(HandgrenadeSplash), W(Shotgun), W(Gauntlet)},
     "</center></table></body></html>"},
}};

}  // namespace vantor
