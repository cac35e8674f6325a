#pragma once
// The weapon table: every method a kill can be recorded with, each with the
// name of its count in the tally table. Suicides are not in it.

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace vantor {

enum class Weapon : std::size_t {
  RocketSplash,
  RocketHit,
  TurretGrenade,
  ProximityGrenade,
  Hyperblaster,
  HomingMissile,
  MegaChaingun,
  Minigun,
  LaserDefense,
  ShrapnelGrenade,
  Kamikaze,
  Grenade,
  LightningGun,
  Plasmabomb,
  SentryKiller,
  SKSplash,
  SuperShotgun,
  SentryRocket,
  SentryGun,
  MagnotronGrenade,
  IonFuser,
  SniperHeadshot,
  SniperRifle,
  SniperLegshot,
  RailGun,
  PipeBomb,
  Pistol,
  Knife,
  Uzi,
  GoodyearGrenade,
  HandgrenadeHit,
  HandgrenadeSplash,
  Disease,
  PlagueDart,
  Shotgun,
  NapalmRocketSplash,
  NapalmRocketHit,
  Flamethrower,
  FlameDamage,
  NapalmGrenade,
  FreezeGun,
  Gauntlet,
};

inline constexpr std::size_t kWeaponCount = 42;

struct WeaponRow {
  Weapon weapon;
  std::string_view method_name;  // exactly as recorded in the Method list
  std::string_view count_name;   // the tally table's name for the count
};

extern const std::array<WeaponRow, kWeaponCount> kWeaponTable;

// The weapon whose method name is exactly method; none for "Suicide" or any
// other text.
std::optional<Weapon> WeaponByMethod(std::string_view method);

inline constexpr std::size_t Index(Weapon w) { return static_cast<std::size_t>(w); }

}  // namespace vantor
