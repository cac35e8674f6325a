#pragma once
// The kill, suicide and sentry events indexed once per run by player name,
// so that every count and every team decision is a lookup instead of a scan
// of the event lists per member and per weapon.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/worksheet.h"
#include "stats/flag_kinds.h"
#include "stats/tally_table.h"

namespace vantor {

class EventIndex {
 public:
  // What the event lists say about one name.
  struct PlayerEvents {
    Count frags = 0;     // events with the name as killer
    Count deaths = 0;    // events with the name as victim, suicides included
    Count suicides = 0;  // suicide events with the name as victim
    Count sentry_kills = 0;
    std::array<Count, kWeaponCount> weapons{};  // kills by weapon as killer
    // The other party of the first event in which the name is the killer,
    // or the victim of another player; none when there is no such event.
    std::optional<std::size_t> first_opponent;
    // That event's row of List2..List4, and whether the name was its killer.
    std::size_t first_row = 0;
    bool first_as_killer = false;

    void SetFirst(std::size_t opponent, std::size_t row, bool as_killer) {
      first_opponent = opponent;
      first_row = row;
      first_as_killer = as_killer;
    }
  };

  // Built once a run's event lists are final (after KillCheck).
  explicit EventIndex(const Worksheet& sheet);

  // Every flag event whose player text contains name is credited to it,
  // so Al is credited with Alice's events too.
  FlagCredit FlagsOf(std::string_view name) const;
  // The same for a name of the worksheet's pool (name is its text).
  FlagCredit FlagsOf(TextId id, std::string_view name) const {
    const auto player = Find(id);
    return player ? credits_[*player] : FlagsOf(name);
  }

  // The index of name; none when no event mentions it.
  std::optional<std::size_t> Find(std::string_view name) const;
  // The same by the name's id in the worksheet's pool: an array lookup.
  std::optional<std::size_t> Find(TextId name) const {
    if (name < by_text_.size() && by_text_[name] != kNotIndexed) return by_text_[name];
    return std::nullopt;
  }
  // The pool id of a name the lists hold.
  TextId TextOf(std::size_t id) const { return text_of_[id]; }
  const PlayerEvents& Player(std::size_t id) const { return players_[id]; }
  const std::string& Name(std::size_t id) const { return names_[id]; }
  std::size_t PlayerCount() const { return names_.size(); }

 private:
  // The flag events of one distinct player text.
  struct FlagText {
    std::string text;
    std::array<Count, kFlagKindCount> counts{};
    // Per kind, the row of the last event that names a colour, and that colour.
    std::array<std::optional<std::size_t>, kFlagKindCount> last_coloured{};
    std::array<std::string_view, kFlagKindCount> colour{};
  };

  std::size_t Intern(std::string_view name);
  std::size_t Intern(TextId text, const StringPool& pool);
  void IndexKills(const Worksheet& sheet);
  void IndexFlags(const Worksheet& sheet);
  // The flag credit of every indexed name, from one pass of all names over
  // each distinct flag text instead of one pass per name.
  void CreditFlags();
  static void Credit(const FlagText& entry, FlagCredit& credit);

  std::vector<std::string> names_;
  std::vector<PlayerEvents> players_;
  std::unordered_map<std::string_view, std::size_t> ids_;
  static constexpr std::size_t kNotIndexed = static_cast<std::size_t>(-1);
  std::vector<std::size_t> by_text_;  // by pool id of the worksheet
  std::vector<TextId> text_of_;       // by player id: its pool id
  std::vector<FlagText> flag_texts_;
  std::vector<FlagCredit> credits_;  // by player id
};

}  // namespace vantor
