#pragma once
// Finds every name of a set that occurs in a text, in one pass over the
// text however many names there are (an Aho-Corasick automaton): flag
// credit asks, for each distinct flag text, which players' names it holds.

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {

class NameMatcher {
 public:
  // names[i] is found as i. The empty name is never found.
  explicit NameMatcher(const std::vector<std::string>& names);

  // Calls found(i) for every occurrence of names[i] in text, nested and
  // overlapping ones included.
  template <typename Found>
  void ForEachIn(std::string_view text, Found found) const;

 private:
  struct Node {
    std::vector<std::pair<unsigned char, int>> next;
    int fail = 0;
    int name = -1;     // the name that ends here
    int shorter = -1;  // the nearest node on the fail chain where a name ends
  };
  int Child(int node, unsigned char c) const;
  int Step(int node, unsigned char c) const;

  std::vector<Node> nodes_;
};

template <typename Found>
void NameMatcher::ForEachIn(std::string_view text, Found found) const {
  int node = 0;
  for (const char c : text) {
    node = Step(node, static_cast<unsigned char>(c));
    for (int at = nodes_[node].name >= 0 ? node : nodes_[node].shorter; at > 0; at = nodes_[at].shorter) {
      found(static_cast<std::size_t>(nodes_[at].name));
    }
  }
}

}  // namespace vantor
