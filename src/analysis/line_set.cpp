#include "analysis/line_set.h"

#include <cstring>
#include <stdexcept>

namespace vantor {

namespace {

constexpr std::size_t kFirstSlots = 1 << 12;  // a power of two
// How far ahead a batch asks for slots, then the bytes they point to.
constexpr std::size_t kSlotAhead = 16, kBytesAhead = 8;

std::uint64_t TagOf(std::size_t hash) { return static_cast<std::uint64_t>(hash) >> 40 << 40; }

}  // namespace

LineSet::LineSet() : slots_(kFirstSlots) {}

void LineSet::Prefetch(std::size_t hash, bool bytes) const {
  const Slot& slot = slots_[hash & (slots_.size() - 1)];
  if (!bytes) return __builtin_prefetch(&slot);
  const std::uint64_t start = (slot.start_and_tag & kStartMask);
  if (slot.number_plus_one != 0) __builtin_prefetch(bytes_.data() + start);
}

std::size_t LineSet::SlotOf(std::string_view line, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  const std::uint64_t tag = TagOf(hash);
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.number_plus_one == 0) return at;
    if (slot.length != line.size() || (slot.start_and_tag & ~kStartMask) != tag) continue;
    if (std::memcmp(bytes_.data() + (slot.start_and_tag ^ tag), line.data(), line.size()) == 0) return at;
  }
}

std::string_view LineSet::TextAfter(std::uint64_t start, std::uint32_t length) const {
  const char* at = bytes_.data() + start + length;
  std::uint32_t text_length;
  std::memcpy(&text_length, at, sizeof text_length);
  return {at + sizeof text_length, text_length};
}

std::string_view LineSet::TextOfNumber(std::uint32_t number) const { return TextAfter(text_at_[number], 0); }

std::uint32_t LineSet::Number(std::string_view line, std::size_t hash, TextOf text_of) {
  const std::size_t at = SlotOf(line, hash);
  if (slots_[at].number_plus_one != 0) return slots_[at].number_plus_one - 1;
  const std::string text = text_of(line);
  const std::size_t added = line.size() + sizeof(std::uint32_t) + text.size();
  if (count_ >= kUnknown - 1 || line.size() > UINT32_MAX || text.size() > UINT32_MAX ||
      bytes_.size() + added >= (std::uint64_t{1} << kStartBits))
    throw std::length_error("too many distinct lines");
  const auto number = static_cast<std::uint32_t>(count_++);
  slots_[at] = {number + 1, static_cast<std::uint32_t>(line.size()), bytes_.size() | TagOf(hash)};
  bytes_.insert(bytes_.end(), line.begin(), line.end());
  text_at_.push_back(bytes_.size());
  const auto text_length = static_cast<std::uint32_t>(text.size());
  const char* length_bytes = reinterpret_cast<const char*>(&text_length);
  bytes_.insert(bytes_.end(), length_bytes, length_bytes + sizeof text_length);
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  hashes_.push_back(hash);
  if (count_ * 2 > slots_.size()) Grow();
  return number;
}

void LineSet::NumberUnknown(const std::vector<std::string_view>& lines,
                            const std::vector<std::size_t>& hashes, std::vector<std::uint32_t>& numbers,
                            TextOf text_of) {
  std::vector<std::size_t>& unknown = unknown_;
  unknown.clear();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] == kUnknown) unknown.push_back(i);
  }
  for (std::size_t k = 0; k < unknown.size(); ++k) {
    if (k + kSlotAhead < unknown.size()) Prefetch(hashes[unknown[k + kSlotAhead]], false);
    if (k + kBytesAhead < unknown.size()) Prefetch(hashes[unknown[k + kBytesAhead]], true);
    numbers[unknown[k]] = Number(lines[unknown[k]], hashes[unknown[k]], text_of);
  }
}

void LineSet::FindAll(const std::vector<std::string_view>& lines, const std::vector<std::size_t>& hashes,
                      std::vector<std::uint32_t>& numbers, std::vector<std::string_view>& texts) const {
  numbers.resize(lines.size());
  texts.resize(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i + kSlotAhead < lines.size()) Prefetch(hashes[i + kSlotAhead], false);
    if (i + kBytesAhead < lines.size()) Prefetch(hashes[i + kBytesAhead], true);
    const Slot& slot = slots_[SlotOf(lines[i], hashes[i])];
    numbers[i] = slot.number_plus_one - 1;  // free: kUnknown
    texts[i] = slot.number_plus_one == 0 ? std::string_view()
                                         : TextAfter((slot.start_and_tag & kStartMask), slot.length);
  }
}

void LineSet::Grow() {
  LargeVector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.number_plus_one == 0) continue;
    std::size_t at = hashes_[slot.number_plus_one - 1] & mask;
    while (slots_[at].number_plus_one != 0) at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

}  // namespace vantor
