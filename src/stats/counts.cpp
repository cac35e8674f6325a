#include "stats/counts.h"

namespace vantor {

std::optional<Weapon> WeaponOf(CountKind kind) {
  if (Index(kind) < kCounts.size()) return std::nullopt;
  return static_cast<Weapon>(Index(kind) - kCounts.size());
}

std::string CountName(CountKind kind) {
  if (const auto weapon = WeaponOf(kind)) return std::string(kWeaponTable[Index(*weapon)].method_name);
  return std::string(kCounts[Index(kind)].export_name);
}

CountValues ValuesOf(const PlayerTally& slot) {
  CountValues values{};
  for (std::size_t k = 0; k < kCounts.size(); ++k) values[k] = slot.*kCounts[k].field;
  return values;
}

Count CountOf(const PlayerTally& slot, CountKind kind) {
  if (const auto weapon = WeaponOf(kind)) return slot.weapons[Index(*weapon)];
  return slot.*kCounts[Index(kind)].field;
}

}  // namespace vantor
