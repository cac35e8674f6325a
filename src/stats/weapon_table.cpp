#include "stats/weapon_table.h"

namespace vantor {

const std::array<WeaponRow, kWeaponCount> kWeaponTable = {{
    {Weapon::RocketSplash, "Rocket Splash", "intRocketSplash"},
    {Weapon::RocketHit, "Rocket Hit", "intRocketHit"},
    {Weapon::TurretGrenade, "Turret Grenade", "intTurretGrenade"},
    {Weapon::ProximityGrenade, "Proximity Grenade", "intProximityGrenade"},
    {Weapon::Hyperblaster, "Hyperblaster", "intHyperblaster"},
    {Weapon::HomingMissile, "Homing Missile", "intHomingMissile"},
    {Weapon::MegaChaingun, "MegaChaingun", "intMegaChaingun"},
    {Weapon::Minigun, "Minigun", "intMinigun"},
    {Weapon::LaserDefense, "Laser Defense", "intLaserDefense"},
    {Weapon::ShrapnelGrenade, "Shrapnel Grenade", "intShrapnelGrenade"},
    {Weapon::Kamikaze, "Kamikaze", "intKamikaze"},
    {Weapon::Grenade, "Grenade", "intGrenade"},
    {Weapon::LightningGun, "Lightning Gun", "intLightningGun"},
    {Weapon::Plasmabomb, "Plasmabomb", "intPlasmabomb"},
    {Weapon::SentryKiller, "Sentry Killer", "intSentryKiller"},
    {Weapon::SKSplash, "SK Splash", "intSKSplash"},
    {Weapon::SuperShotgun, "Super Shotgun", "intSuperShotgun"},
    {Weapon::SentryRocket, "Sentry Rocket", "intSentryRocket"},
    {Weapon::SentryGun, "Sentry Gun", "intSentryGun"},
    {Weapon::MagnotronGrenade, "Magnotron Grenade", "intMagnotronGrenade"},
    {Weapon::IonFuser, "Ion Fuser", "intIonFuser"},
    {Weapon::SniperHeadshot, "Sniper Headshot", "intSniperHeadshot"},
    {Weapon::SniperRifle, "Sniper Rifle", "intSniperRifle"},
    {Weapon::SniperLegshot, "Sniper Legshot", "intSniperLegshot"},
    {Weapon::RailGun, "Rail Gun", "intRailGun"},
    {Weapon::PipeBomb, "Pipe Bomb", "intPipeBomb"},
    {Weapon::Pistol, "Pistol", "intPistol"},
    {Weapon::Knife, "Knife", "intKnife"},
    {Weapon::Uzi, "Uzi", "intUzi"},
    {Weapon::GoodyearGrenade, "Goodyear Grenade", "intGoodyearGrenade"},
    {Weapon::HandgrenadeHit, "Handgrenade Hit", "intHandgrenadeHit"},
    {Weapon::HandgrenadeSplash, "Handgrenade Splash", "intHandgrenadeSplash"},
    {Weapon::Disease, "Disease", "intDisease"},
    {Weapon::PlagueDart, "Plague Dart", "intPlagueDart"},
    {Weapon::Shotgun, "Shotgun", "intShotgun"},
    {Weapon::NapalmRocketSplash, "Napalm Rocket Splash", "intNapalmRocketSplash"},
    {Weapon::NapalmRocketHit, "Napalm Rocket Hit", "intNapalmRocketHit"},
    {Weapon::Flamethrower, "Flamethrower", "intFlamethrower"},
    {Weapon::FlameDamage, "Flame Damage", "intFlameDamage"},
    {Weapon::NapalmGrenade, "Napalm Grenade", "intNapalmGrenade"},
    {Weapon::FreezeGun, "Freeze Gun", "intFreezeGun"},
    {Weapon::Gauntlet, "Gauntlet", "intGauntlet"},
}};

std::optional<Weapon> WeaponByMethod(std::string_view method) {
  for (const WeaponRow& row : kWeaponTable) {
    if (row.method_name == method) return row.weapon;
  }
  return std::nullopt;
}

}  // namespace vantor
