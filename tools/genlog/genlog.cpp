// genlog: writes a realistic game console log of a given size, the same
// bytes for the same seed, for benchmarks and tests.
//
//   genlog --size BYTES [--seed N] [--players N] OUTPUT
//   genlog --maps N [--truth FILE] [--seed N] [--players N] OUTPUT
//   genlog --fragments      the message rules' fragments, one per line
//
// The evening is a series of maps. Each map draws two teams from a pool of
// players (so a player may change sides between maps), and fills the map
// with obituaries of every rule in realistic proportions, suicides, sentry
// guns, flag runs, chat, connects and client noise, colour codes and CR LF
// line ends included.
//
// With --maps, the evening is exactly N matches marked as the engine marks
// them (a map load, then "Timelimit hit.", an intermission; the client
// leaves at the end), every player defends their own base first so that
// the log implies each team completely, and --truth writes what was
// played: per match, a line "match N<TAB>blue captures<TAB>red captures
// <TAB>winner<TAB>Blue names<TAB>Red names" (names sorted, comma-separated).

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "events/message_rules.h"

namespace {

using vantor::kMessageRules;
using vantor::MessageRule;
using vantor::Procedure;

struct Options {
  std::uint64_t size = 0;
  std::uint64_t seed = 1;
  int players = 48;
  std::string output;
  bool fragments = false;
  int maps = 0;       // 0: fill --size with maps, without match markers
  std::string truth;  // where --maps writes the matches it played
};

struct Player {
  std::string name;   // as the analysis reports it
  std::string shown;  // with the colour codes the client prints
  bool female = false;
};

// Relative frequency of each obituary rule (1..45): the hitscan and
// explosive weapons dominate, the odd ones are rare.
constexpr int kKillWeights[45] = {3, 12, 2, 3, 4, 3, 8, 3, 14, 6, 2, 1, 3, 4, 10, 5, 9, 3, 1, 2, 2, 4, 2,
                                  9, 3,  5, 1, 2, 5, 4, 1, 6,  2, 4, 1, 2, 2, 3,  7, 4, 2, 2, 2, 1, 1};

constexpr std::string_view kSyllables[] = {
    "vor", "tex", "qui", "lon", "bram", "ble", "oka", "pi", "lu", "men", "cin", "der", "mar", "row", "tun",
    "dra", "sa",  "ble", "wra", "ith",  "zed", "kor", "ax", "ny", "el",  "ra",  "fen", "ix",  "mo",  "rg"};
constexpr std::string_view kChat[] = {"gg",
                                      "nice one",
                                      "^3rush mid!",
                                      "need a medic at base",
                                      "who has our flag?",
                                      "sentry up at the ramp",
                                      "lag...",
                                      "^2lol",
                                      "incoming x3 left",
                                      "sorry, wrong button"};
constexpr std::string_view kNoise[] = {"Server command overflow",
                                       "^7Server command overflow",
                                       "Hunk_Clear: reset the hunk ok",
                                       "----- CL_Shutdown -----",
                                       "RE_Shutdown( 0 )",
                                       "Sound memory manager started",
                                       "couldn't find sound file fx/step4.wav",
                                       "WARNING: Server command overflow",
                                       "^3Match begins!^7",
                                       "^5Timelimit hit.^7",
                                       "^2Teams are balanced^7"};
constexpr std::string_view kMaps[] = {"ctf_2fort5", "ctf_openfire", "ctf_bases", "ctf_chasm",
                                      "ctf_well",   "ctf_dusk",     "ctf_canyon"};

class Writer {
 public:
  explicit Writer(std::FILE* file) : file_(file) { buffer_.reserve(kFlushAt + 4096); }
  ~Writer() { Flush(); }
  void Line(std::string_view text) {
    buffer_.append(text);
    buffer_.append("\r\n");
    written_ += text.size() + 2;
    if (buffer_.size() >= kFlushAt) Flush();
  }
  std::uint64_t Written() const { return written_; }

 private:
  static constexpr std::size_t kFlushAt = 1 << 20;
  void Flush() {
    std::fwrite(buffer_.data(), 1, buffer_.size(), file_);
    buffer_.clear();
  }
  std::FILE* file_;
  std::string buffer_;
  std::uint64_t written_ = 0;
};

class Evening {
 public:
  Evening(const Options& options, Writer& out) : rng_(options.seed), out_(out) {
    MakePlayers(options.players);
    std::vector<double> weights(std::begin(kKillWeights), std::end(kKillWeights));
    kill_rule_ = std::discrete_distribution<int>(weights.begin(), weights.end());
  }

  void Write(std::uint64_t size) {
    out_.Line("Vantor console log started");
    while (out_.Written() < size) Map(size);
    out_.Line("Console: server shutting down");
  }

  // An evening of exactly maps matches with their markers; what was played
  // goes to truth.
  void WriteMatches(int maps, std::FILE* truth) {
    marked_ = true;
    out_.Line("Vantor console log started");
    for (int m = 1; m <= maps; ++m) {
      score_[0] = score_[1] = 0;
      Map(UINT64_MAX);
      if (truth != nullptr) WriteTruth(m, truth);
    }
    out_.Line("Console: server shutting down");
    out_.Line("----- CL_Shutdown -----");
  }

 private:
  int Roll(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  double Chance() { return std::uniform_real_distribution<double>(0, 1)(rng_); }
  template <typename T, std::size_t N>
  std::string_view Pick(const T (&items)[N]) {
    return items[Roll(N)];
  }

  void MakePlayers(int count) {
    for (int i = 0; i < count; ++i) {
      std::string name;
      for (int s = 0, n = 2 + Roll(2); s < n; ++s) name += Pick(kSyllables);
      name[0] = static_cast<char>(name[0] - 'a' + 'A');
      name += std::to_string(i);  // every player's name is their own
      const char colour = static_cast<char>('1' + Roll(6));
      const std::size_t cut = 1 + Roll(static_cast<int>(name.size()) - 1);
      std::string shown = std::string("^") + colour + name.substr(0, cut) +
                          (Chance() < 0.5 ? "^" + std::string(1, colour) : "") + name.substr(cut) + "^7";
      players_.push_back({name, shown, Chance() < 0.2});
    }
  }

  const Player& Of(int team) { return players_[teams_[team][Roll(teams_[team].size())]]; }
  static std::string_view Colour(int team) { return team == 0 ? "BLUE" : "RED"; }

  void Map(std::uint64_t size) {
    out_.Line("------ Server Initialization ------");
    const std::string_view map = Pick(kMaps);
    out_.Line("Server: " + std::string(map));
    out_.Line("Loading map maps/" + std::string(map) + ".bsp");
    if (marked_) {
      out_.Line("Loading vm file vm/cgame.qvm.");
      out_.Line("CL_InitCGame: 0.61 seconds");
    }
    DrawTeams();
    for (int t = 0; t < 2; ++t) {
      for (int p : teams_[t]) {
        if (Chance() < 0.3) out_.Line(players_[p].shown + " connected");
        out_.Line(players_[p].shown + " entered the game");
      }
    }
    if (marked_) DefendBases();
    for (int i = 0; i < 400 && out_.Written() < size; ++i) Moment();
    out_.Line(marked_ ? "Timelimit hit." : "^5Timelimit hit.^7");
    // Intermission: a frag here belongs to no match.
    if (marked_) Kill(Roll(2));
    out_.Line("==== ShutdownGame ====");
  }

  // Each player defends their own base once, which tells their team.
  void DefendBases() {
    for (int t = 0; t < 2; ++t) {
      for (int p : teams_[t])
        out_.Line(players_[p].shown + std::string(kMessageRules[46 + t * 8 + 2].fragment));
    }
  }

  void WriteTruth(int match, std::FILE* truth) {
    const char* winner = score_[0] == score_[1] ? "draw" : score_[0] > score_[1] ? "Blue" : "Red";
    std::fprintf(truth, "match %d\t%d\t%d\t%s", match, score_[0], score_[1], winner);
    for (int t = 0; t < 2; ++t) {
      std::vector<std::string> names;
      for (int p : teams_[t]) names.push_back(players_[p].name);
      std::sort(names.begin(), names.end());
      std::string list;
      for (const std::string& name : names) list += (list.empty() ? "" : ",") + name;
      std::fprintf(truth, "\t%s", list.c_str());
    }
    std::fputc('\n', truth);
  }

  void DrawTeams() {
    std::vector<int> pool(players_.size());
    for (std::size_t i = 0; i < pool.size(); ++i) pool[i] = static_cast<int>(i);
    std::shuffle(pool.begin(), pool.end(), rng_);
    const std::size_t per_team = std::min<std::size_t>(6, pool.size() / 2);
    teams_[0].assign(pool.begin(), pool.begin() + per_team);
    teams_[1].assign(pool.begin() + per_team, pool.begin() + 2 * per_team);
  }

  void Moment() {
    const double roll = Chance();
    const int team = Roll(2);
    if (roll < 0.62)
      Kill(team);
    else if (roll < 0.66)
      Suicide(Of(team));
    else if (roll < 0.68)
      Sentry(team);
    else if (roll < 0.76)
      Flag(team);
    else if (roll < 0.88)
      Chat(Of(team));
    else
      Noise();
  }

  // A marked evening has no stray marker among the noise.
  void Noise() {
    const std::string_view noise = Pick(kNoise);
    out_.Line(marked_ && noise == "----- CL_Shutdown -----" ? "RE_Shutdown( 0 )" : noise);
  }

  void Kill(int team) {
    const MessageRule& rule = kMessageRules[kill_rule_(rng_)];
    const Player& victim = Of(1 - team);
    const Player& killer = Chance() < 0.03 ? Of(1 - team) : Of(team);  // splash on a mate
    std::string line = victim.shown + std::string(rule.fragment) + killer.shown;
    if (rule.procedure == Procedure::SplitWeaponKill) line += "'s" + std::string(rule.weapon_suffix);
    out_.Line(line);
  }

  // The game words a few suicides by gender, so each player only ever
  // prints one form of them.
  void Suicide(const Player& player) {
    static constexpr int kHis[] = {63, 64, 66, 68, 69, 70, 71, 72, 73};
    static constexpr int kHers[] = {63, 65, 67, 68, 69, 70, 71, 72, 73};
    const int number = player.female ? kHers[Roll(9)] : kHis[Roll(9)];
    out_.Line(player.shown + std::string(kMessageRules[number - 1].fragment));
  }

  void Sentry(int team) {
    const Player& owner = Of(1 - team);
    const Player& destroyer = Of(team);
    if (Chance() < 0.3) {  // some clients print it without colours
      out_.Line(owner.name + "'s Sentry Gun was destroyed by " + destroyer.name + ".");
    } else {
      out_.Line(owner.shown + "'s Sentry Gun was destroyed by " + destroyer.shown + ".");
    }
  }

  // Flag messages 47..62: the first eight name the BLUE side, the others RED.
  void Flag(int team) {
    const int offset = Roll(8);
    const bool attacking = offset == 1 || offset == 3 || offset == 4;  // grab, capture, carrier frag
    const int side = attacking ? 1 - team : team;
    const MessageRule& rule = kMessageRules[46 + side * 8 + offset];
    out_.Line(Of(team).shown + std::string(rule.fragment));
    if (offset == 3) ++score_[team];
  }

  void Chat(const Player& player) {
    if (Chance() < 0.7) {
      out_.Line(player.shown + ": " + std::string(Pick(kChat)));
    } else {
      out_.Line("(" + player.shown + "): ^5" + std::string(Pick(kChat)));
    }
  }

  std::mt19937_64 rng_;
  Writer& out_;
  std::vector<Player> players_;
  std::vector<int> teams_[2];
  std::discrete_distribution<int> kill_rule_;
  bool marked_ = false;    // writing match markers (--maps)
  int score_[2] = {0, 0};  // this map's captures, Blue and Red
};

int Usage(const char* why) {
  std::fprintf(stderr,
               "genlog: %s\nusage: genlog --size BYTES [--seed N] [--players N] OUTPUT\n"
               "       genlog --maps N [--truth FILE] [--seed N] [--players N] OUTPUT\n"
               "       genlog --fragments\n",
               why);
  return 2;
}

bool Parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    const bool has_value = i + 1 < argc;
    if (arg == "--fragments")
      options.fragments = true;
    else if (arg == "--size" && has_value)
      options.size = std::strtoull(argv[++i], nullptr, 10);
    else if (arg == "--seed" && has_value)
      options.seed = std::strtoull(argv[++i], nullptr, 10);
    else if (arg == "--players" && has_value)
      options.players = std::atoi(argv[++i]);
    else if (arg == "--maps" && has_value)
      options.maps = std::atoi(argv[++i]);
    else if (arg == "--truth" && has_value)
      options.truth = argv[++i];
    else if (!arg.starts_with("--") && options.output.empty())
      options.output = arg;
    else
      return false;
  }
  return options.fragments ||
         ((options.size > 0 || options.maps > 0) && options.players >= 2 && !options.output.empty());
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!Parse(argc, argv, options)) return Usage("bad arguments");
  if (options.fragments) {
    for (const MessageRule& rule : kMessageRules) {
      std::fwrite(rule.fragment.data(), 1, rule.fragment.size(), stdout);
      std::fputc('\n', stdout);
    }
    return 0;
  }
  std::FILE* file = std::fopen(options.output.c_str(), "wb");
  if (file == nullptr) return Usage("cannot create the output file");
  std::FILE* truth = options.truth.empty() ? nullptr : std::fopen(options.truth.c_str(), "w");
  if (!options.truth.empty() && truth == nullptr) return Usage("cannot create the truth file");
  {
    Writer out(file);
    Evening evening(options, out);
    if (options.maps > 0) {
      evening.WriteMatches(options.maps, truth);
    } else {
      evening.Write(options.size);
    }
  }
  if (truth != nullptr && std::fclose(truth) != 0) return 1;
  return std::fclose(file) == 0 ? 0 : 1;
}
