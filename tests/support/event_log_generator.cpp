#include "support/event_log_generator.h"

#include <random>

namespace vantor::testing {

namespace {

const char* const kNames[] = {"Alice", "Al", "alice", "Bravo", "Charlie", "Delta", "Echo", "Foxtrot",
                              "Bob", "NotHimself", "", "Golf", "Hotel", "India", "Juliet", "Kilo",
                              "Lima", "Mike", "November", "Oscar", "Papa", "Quebec", "Romeo"};

const char* const kPlain[] = {" was railed by ", " was knifed by ", " was gunned down by ",
                              " was sniped by ", " was pummeled by "};
const char* const kWeapon[][2] = {{" almost dodged ", " Rocket"}, {" ate ", " Napalm Rocket"},
                                  {" was laid low by ", " Sentry Gun"}, {" fell for ", " Pipe Bomb"},
                                  {" was gunned down by ", " Super Shotgun"}};
const char* const kFlags[] = {" got the BLUE flag!", " got the RED flag!", " captured the BLUE flag!",
                              " captured the RED flag!", " defends the RED flag.",
                              " defends the BLUE base.", " fragged RED's flag carrier!",
                              " defends BLUE's flag carrier against an agressive enemy"};

}  // namespace

std::vector<std::string> GenerateEventLines(const EventLogOptions& options) {
  std::mt19937 rng(options.seed);
  const int pool = std::min<int>(options.players, std::size(kNames));
  auto pick = [&](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
  auto name = [&] { return std::string(kNames[pick(pool)]); };
  std::vector<std::string> lines;
  for (int i = 0; i < options.lines; ++i) {
    switch (pick(10)) {
      case 0: case 1: case 2: lines.push_back(name() + kPlain[pick(5)] + name()); break;
      case 3: case 4: {
        const auto& w = kWeapon[pick(5)];
        lines.push_back(name() + w[0] + name() + "'s" + w[1]);
        break;
      }
      case 5: case 6: lines.push_back(name() + kFlags[pick(8)]); break;
      case 7: lines.push_back(name() + " killed himself."); break;
      case 8: lines.push_back(name() + "'s Sentry Gun was destroyed by " + name() + "."); break;
      default: lines.push_back("unrecognised chatter " + std::to_string(i)); break;
    }
  }
  return lines;
}

}  // namespace vantor::testing
