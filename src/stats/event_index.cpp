#include "stats/event_index.h"

#include "analysis/text_ops.h"
#include "analysis/worker_threads.h"
#include "events/message_rules.h"
#include "stats/name_matcher.h"

namespace vantor {

namespace {

// The weapon of each method row, or none; looked up once per distinct
// method text (by its pool id).
class WeaponLookup {
 public:
  explicit WeaponLookup(const WorksheetList& methods) : methods_(methods) {}
  std::optional<Weapon> operator()(std::size_t row) {
    const TextId method = methods_.IdAt(row);
    if (cache_.size() <= method) cache_.resize(methods_.Pool().Size());
    auto& entry = cache_[method];
    if (!entry) entry = WeaponByMethod(methods_.Pool().Text(method));
    return *entry;
  }

 private:
  const WorksheetList& methods_;
  std::vector<std::optional<std::optional<Weapon>>> cache_;  // outer: looked up yet
};

}  // namespace

std::size_t EventIndex::Intern(std::string_view name) {
  if (auto it = ids_.find(name); it != ids_.end()) return it->second;
  names_.emplace_back(name);
  players_.emplace_back();
  const std::size_t id = names_.size() - 1;
  ids_.emplace(names_.back(), id);
  return id;
}

std::size_t EventIndex::Intern(TextId text, const StringPool& pool) {
  // Rows of the worksheet are pool ids: one array lookup instead of a
  // hash of the name per event.
  if (by_text_.size() <= text) by_text_.resize(pool.Size(), kNotIndexed);
  if (by_text_[text] == kNotIndexed) {
    by_text_[text] = Intern(pool.Text(text));
    if (text_of_.size() <= by_text_[text]) text_of_.resize(by_text_[text] + 1, StringPool::kEmpty);
    text_of_[by_text_[text]] = text;
  }
  return by_text_[text];
}

std::optional<std::size_t> EventIndex::Find(std::string_view name) const {
  if (auto it = ids_.find(name); it != ids_.end()) return it->second;
  return std::nullopt;
}

namespace {

// What a range of the kill rows says about each name in it, by the names'
// pool ids: the names in the order they first come and their events, the
// first opponent a pool id too.
struct KillsInRange {
  std::vector<TextId> names;
  std::vector<EventIndex::PlayerEvents> players;  // parallel to names
  std::vector<std::uint32_t> place;               // by pool id: index in names + 1, 0 when not met

  std::size_t Of(TextId name) {
    if (place[name] == 0) {
      names.push_back(name);
      players.emplace_back();
      place[name] = static_cast<std::uint32_t>(names.size());
    }
    return place[name] - 1;
  }
};

void IndexKillsIn(const Worksheet& sheet, RowRange rows, KillsInRange& range) {
  WeaponLookup weapon_of(sheet.List4);
  // The lists share one pool: fixed texts are compared as ids.
  const TextId suicide_killer = sheet.List2.Pool().Find(kSuicideKiller);
  const TextId suicide_method = sheet.List4.Pool().Find(kSuicideMethod);
  range.place.assign(sheet.List2.Pool().Size(), 0);
  for (std::size_t m = rows.begin; m < rows.end; ++m) {
    const TextId killer_text = sheet.List2.IdAt(m), victim_text = sheet.List3.IdAt(m);
    const std::size_t killer_at = range.Of(killer_text), victim_at = range.Of(victim_text);
    EventIndex::PlayerEvents &killer = range.players[killer_at], &victim = range.players[victim_at];
    killer.frags += 1;
    victim.deaths += 1;
    if (sheet.List4.IdAt(m) == suicide_method) victim.suicides += 1;
    if (auto weapon = weapon_of(m)) killer.weapons[Index(*weapon)] += 1;
    // The killer's side of the row decides first; a suicide decides nothing.
    if (!killer.first_opponent) killer.SetFirst(victim_text, m, true);
    if (killer_text != suicide_killer && !victim.first_opponent) victim.SetFirst(killer_text, m, false);
  }
}

}  // namespace

EventIndex::EventIndex(const Worksheet& sheet) {
  // The names live in names_; string_view keys must survive its growth.
  names_.reserve(sheet.List2.Count() + sheet.List3.Count() + sheet.List10.Count());
  IndexKills(sheet);
  for (std::size_t row = 0; row < sheet.List10.Count(); ++row) {
    players_[Intern(sheet.List10.IdAt(row), sheet.List10.Pool())].sentry_kills += 1;
  }
  IndexFlags(sheet);
  CreditFlags();
}

// Ranges of the kill rows are indexed side by side, then joined in order:
// the names of each join in the order they first come, their events add
// up, and the first opponent met stays, as in one pass over all rows.
void EventIndex::IndexKills(const Worksheet& sheet) {
  const std::size_t events = sheet.List2.Count(), ranges = RangesFor(events);
  std::vector<KillsInRange> parts(ranges);
  SideBySide(ranges, [&](std::size_t r) { IndexKillsIn(sheet, RangeOf(events, r, ranges), parts[r]); });
  const StringPool& pool = sheet.List2.Pool();
  for (const KillsInRange& part : parts) {
    for (const TextId name : part.names) Intern(name, pool);
    for (std::size_t i = 0; i < part.names.size(); ++i) {
      const PlayerEvents& from = part.players[i];
      PlayerEvents& to = players_[by_text_[part.names[i]]];
      to.frags += from.frags;
      to.deaths += from.deaths;
      to.suicides += from.suicides;
      for (std::size_t w = 0; w < kWeaponCount; ++w) to.weapons[w] += from.weapons[w];
      if (!to.first_opponent && from.first_opponent)
        to.SetFirst(by_text_[*from.first_opponent], from.first_row, from.first_as_killer);
    }
  }
}

namespace {

// The colour an action credits: "Blue" wins over "Red" when both occur.
std::string_view ColourOf(std::string_view action) {
  if (Contains(action, kBlue)) return kBlue;
  if (Contains(action, kRed)) return kRed;
  return {};
}

}  // namespace

void EventIndex::IndexFlags(const Worksheet& sheet) {
  // By pool id: a log repeats a few flag texts and actions many times, so
  // each is looked at once.
  struct Action {
    std::string_view colour;
    std::array<bool, kFlagKindCount> kinds{};
  };
  constexpr std::uint32_t kNone = UINT32_MAX;
  std::vector<std::uint32_t> text_at(sheet.List5.Pool().Size(), kNone), action_at(text_at);  // by pool id
  std::vector<Action> actions;
  const std::size_t n = sheet.List5.Count();
  for (std::size_t j = 0; j < n; ++j) {
    std::uint32_t& text = text_at[sheet.List5.IdAt(j)];
    if (text == kNone) {
      text = static_cast<std::uint32_t>(flag_texts_.size());
      flag_texts_.push_back(FlagText{std::string(sheet.List5.At(j))});
    }
    FlagText& entry = flag_texts_[text];
    std::uint32_t& known = action_at[sheet.List6.IdAt(j)];
    if (known == kNone) {
      known = static_cast<std::uint32_t>(actions.size());
      Action& action = actions.emplace_back();
      action.colour = ColourOf(sheet.List6.At(j));
      for (std::size_t k = 0; k < kFlagKindCount; ++k)
        action.kinds[k] = Contains(sheet.List6.At(j), kFlagKindNames[k]);
    }
    const Action& action = actions[known];
    for (std::size_t k = 0; k < kFlagKindCount; ++k) {
      if (!action.kinds[k]) continue;
      entry.counts[k] += 1;
      if (action.colour.empty()) continue;
      entry.last_coloured[k] = j;
      entry.colour[k] = action.colour;
    }
  }
}

void EventIndex::Credit(const FlagText& entry, FlagCredit& credit) {
  for (std::size_t k = 0; k < kFlagKindCount; ++k) {
    credit.counts[k] += entry.counts[k];
    // The colour of the latest coloured event of the kind stays.
    if (entry.last_coloured[k] && (!credit.rows[k] || *credit.rows[k] < *entry.last_coloured[k])) {
      credit.colours[k] = entry.colour[k];
      credit.rows[k] = entry.last_coloured[k];
    }
  }
}

void EventIndex::CreditFlags() {
  credits_.assign(names_.size(), FlagCredit{});
  if (flag_texts_.empty()) return;
  const NameMatcher matcher(names_);
  std::vector<std::size_t> credited_by(names_.size(), kNotIndexed);  // the last text that credited a name
  for (std::size_t t = 0; t < flag_texts_.size(); ++t) {
    matcher.ForEachIn(flag_texts_[t].text, [&](std::size_t id) {
      if (credited_by[id] == t) return;  // a name twice in one text counts once
      credited_by[id] = t;
      Credit(flag_texts_[t], credits_[id]);
    });
  }
  // The empty name occurs in every text.
  if (const auto empty = Find("")) {
    for (const FlagText& entry : flag_texts_) Credit(entry, credits_[*empty]);
  }
}

FlagCredit EventIndex::FlagsOf(std::string_view name) const {
  if (const auto id = Find(name)) return credits_[*id];
  FlagCredit credit;  // a name no event mentions: asked by the text search
  for (const FlagText& entry : flag_texts_) {
    if (Contains(entry.text, name)) Credit(entry, credit);
  }
  return credit;
}

}  // namespace vantor
