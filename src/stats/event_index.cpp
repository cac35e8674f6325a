#include "stats/event_index.h"

#include "analysis/text_ops.h"
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

std::size_t EventIndex::Intern(const WorksheetList& list, std::size_t row) {
  // Rows of the worksheet are pool ids: one array lookup instead of a
  // hash of the name per event.
  const TextId text = list.IdAt(row);
  if (by_text_.size() <= text) by_text_.resize(list.Pool().Size(), kNotIndexed);
  if (by_text_[text] == kNotIndexed) {
    by_text_[text] = Intern(list.Pool().Text(text));
    if (text_of_.size() <= by_text_[text]) text_of_.resize(by_text_[text] + 1, StringPool::kEmpty);
    text_of_[by_text_[text]] = text;
  }
  return by_text_[text];
}

std::optional<std::size_t> EventIndex::Find(std::string_view name) const {
  if (auto it = ids_.find(name); it != ids_.end()) return it->second;
  return std::nullopt;
}

EventIndex::EventIndex(const Worksheet& sheet) {
  // The names live in names_; string_view keys must survive its growth.
  names_.reserve(sheet.List2.Count() + sheet.List3.Count() + sheet.List10.Count());
  WeaponLookup weapon_of(sheet.List4);
  const std::size_t events = sheet.List2.Count();
  // The lists share one pool: fixed texts are compared as ids.
  const TextId suicide_killer = sheet.List2.Pool().Find(kSuicideKiller);
  const TextId suicide_method = sheet.List4.Pool().Find(kSuicideMethod);
  for (std::size_t m = 0; m < events; ++m) {
    const std::size_t killer = Intern(sheet.List2, m);
    const std::size_t victim = Intern(sheet.List3, m);
    players_[killer].frags += 1;
    players_[victim].deaths += 1;
    if (sheet.List4.IdAt(m) == suicide_method) players_[victim].suicides += 1;
    if (auto weapon = weapon_of(m)) players_[killer].weapons[Index(*weapon)] += 1;
    // The killer's side of the row decides first; a suicide decides nothing.
    if (!players_[killer].first_opponent) players_[killer].SetFirst(victim, m, true);
    if (sheet.List2.IdAt(m) != suicide_killer && !players_[victim].first_opponent) {
      players_[victim].SetFirst(killer, m, false);
    }
  }
  for (std::size_t row = 0; row < sheet.List10.Count(); ++row) {
    players_[Intern(sheet.List10, row)].sentry_kills += 1;
  }
  IndexFlags(sheet);
  CreditFlags();
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
  std::unordered_map<TextId, std::size_t> text_ids;
  std::unordered_map<TextId, Action> actions;
  const std::size_t n = sheet.List5.Count();
  for (std::size_t j = 0; j < n; ++j) {
    auto [it, added] = text_ids.try_emplace(sheet.List5.IdAt(j), flag_texts_.size());
    if (added) flag_texts_.push_back(FlagText{sheet.List5.At(j)});
    FlagText& entry = flag_texts_[it->second];
    auto [known, new_action] = actions.try_emplace(sheet.List6.IdAt(j));
    Action& action = known->second;
    if (new_action) {
      action.colour = ColourOf(sheet.List6.At(j));
      for (std::size_t k = 0; k < kFlagKindCount; ++k)
        action.kinds[k] = Contains(sheet.List6.At(j), kFlagKindNames[k]);
    }
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
