#include "analysis/string_pool.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>

namespace vantor {

namespace {
constexpr std::size_t kFirstSlots = 1024;  // a power of two

std::uint32_t TagOf(std::size_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

}  // namespace

StringPool::StringPool() : slots_(kFirstSlots) { Intern(""); }

std::string_view StringPool::Keep(std::string_view text) {
  constexpr std::size_t kBlock = std::size_t{256} << 10;
  // A view of no bytes still points somewhere: texts go to C functions.
  if (text.empty()) return std::string_view("", 0);
  if (text.size() > block_left_) {
    // A text longer than a block has one of its own.
    block_left_ = std::max(kBlock, text.size());
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(block_left_));
    block_end_ = blocks_.back().get() + block_left_;
  }
  char* const at = block_end_ - block_left_;
  std::memcpy(at, text.data(), text.size());
  block_left_ -= text.size();
  return {at, text.size()};
}

std::size_t StringPool::SlotOf(std::string_view text, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    const Slot& entry = slots_[slot];
    if (entry.id_plus_one == 0) return slot;
    if (entry.tag == TagOf(hash) && texts_[entry.id_plus_one - 1] == text) return slot;
  }
}

TextId StringPool::Find(std::string_view text) const {
  const Slot& entry = slots_[SlotOf(text, std::hash<std::string_view>{}(text))];
  return entry.id_plus_one != 0 ? entry.id_plus_one - 1 : static_cast<TextId>(texts_.size());
}

TextId StringPool::Intern(std::string_view text) {
  return InternHashed(text, std::hash<std::string_view>{}(text));
}

TextId StringPool::InternHashed(std::string_view text, std::size_t hash) {
  const std::size_t slot = SlotOf(text, hash);
  if (slots_[slot].id_plus_one != 0) return slots_[slot].id_plus_one - 1;
  if (texts_.size() >= std::size_t{UINT32_MAX} - 1) throw std::length_error("too many distinct texts");
  const auto id = static_cast<TextId>(texts_.size());
  texts_.push_back(Keep(text));
  hashes_.push_back(hash);
  slots_[slot] = {id + 1, TagOf(hash)};
  // At most half full, so a probe stays short.
  if (texts_.size() * 2 > slots_.size()) Grow();
  return id;
}

void StringPool::Grow() {
  LargeVector<Slot>(slots_.size() * 2).swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t id = 0; id < texts_.size(); ++id) {
    std::size_t slot = hashes_[id] & mask;
    while (slots_[slot].id_plus_one != 0) slot = (slot + 1) & mask;
    slots_[slot] = {static_cast<TextId>(id + 1), TagOf(hashes_[id])};
  }
}

}  // namespace vantor
