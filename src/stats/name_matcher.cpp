#include "stats/name_matcher.h"

#include <deque>

namespace vantor {

NameMatcher::NameMatcher(const std::vector<std::string>& names) : nodes_(1) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].empty()) continue;
    int node = 0;
    for (const char c : names[i]) {
      int next = Child(node, static_cast<unsigned char>(c));
      if (next < 0) {
        next = static_cast<int>(nodes_.size());
        nodes_[node].next.emplace_back(static_cast<unsigned char>(c), next);
        nodes_.emplace_back();
      }
      node = next;
    }
    nodes_[node].name = static_cast<int>(i);
  }
  // Breadth first, so that every fail link points to a node finished before.
  std::deque<int> queue;
  for (const auto& [c, child] : nodes_[0].next) queue.push_back(child);
  while (!queue.empty()) {
    const int node = queue.front();
    queue.pop_front();
    for (const auto& [c, child] : nodes_[node].next) {
      const int fail = node == 0 ? 0 : Step(nodes_[node].fail, c);
      nodes_[child].fail = fail == child ? 0 : fail;
      const Node& target = nodes_[nodes_[child].fail];
      nodes_[child].shorter = target.name >= 0 ? nodes_[child].fail : target.shorter;
      queue.push_back(child);
    }
  }
}

int NameMatcher::Child(int node, unsigned char c) const {
  for (const auto& [byte, child] : nodes_[node].next) {
    if (byte == c) return child;
  }
  return -1;
}

int NameMatcher::Step(int node, unsigned char c) const {
  for (;;) {
    if (const int child = Child(node, c); child >= 0) return child;
    if (node == 0) return 0;
    node = nodes_[node].fail;
  }
}

}  // namespace vantor
