#include "analysis/line_set.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace vantor {

namespace {

constexpr std::size_t kFirstSlots = 1 << 12;  // a power of two
// How far ahead a batch asks for slots, then the bytes they point to.
constexpr std::size_t kSlotAhead = 16, kBytesAhead = 8;

std::uint64_t TagOf(std::uint64_t hash) { return hash >> 40 << 40; }

// The high and low halves of a 128-bit product folded together.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  const unsigned __int128 product = static_cast<unsigned __int128>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t Load(const char* at, std::size_t bytes) {
  std::uint64_t value = 0;
  std::memcpy(&value, at, bytes);
  return value;
}

}  // namespace

// Sixteen bytes a step, each folded in by one multiplication: a line is
// hashed in a few nanoseconds, well mixed in every bit.
std::uint64_t LineSet::Hash(std::string_view line) {
  constexpr std::uint64_t kOdd[] = {0xa0761d6478bd642full, 0xe7037ed1a0b428dbull, 0x8ebc6af09c88c6e3ull};
  const char* at = line.data();
  std::size_t left = line.size();
  std::uint64_t state = kOdd[0] ^ left, first = 0, last = 0;
  if (left <= 16) {
    if (left >= 8) {
      first = Load(at, 8);
      last = Load(at + left - 8, 8);
    } else if (left > 0) {
      first = Load(at, left);
    }
  } else {
    for (; left > 16; at += 16, left -= 16) state = Mix(Load(at, 8) ^ kOdd[1], Load(at + 8, 8) ^ state);
    // The last sixteen bytes of the line, overlapping the step before.
    first = Load(at + left - 16, 8);
    last = Load(at + left - 8, 8);
  }
  return Mix(kOdd[1] ^ line.size(), Mix(first ^ kOdd[1], last ^ state ^ kOdd[2]));
}

LineSet::LineSet() : slots_(kFirstSlots) {}

void LineSet::Prefetch(std::uint64_t hash, bool bytes) const {
  const Slot& slot = slots_[hash & (slots_.size() - 1)];
  if (!bytes) return __builtin_prefetch(&slot);
  const std::uint64_t start = (slot.start_and_tag & kStartMask);
  if (slot.number_plus_one == 0) return;
  // The line's bytes and the text after them: two or three cache lines.
  const char* at = bytes_.data() + start;
  __builtin_prefetch(at);
  __builtin_prefetch(at + slot.length);
  __builtin_prefetch(at + slot.length + 60);
}

std::size_t LineSet::SlotOf(std::string_view line, std::uint64_t hash) const {
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

std::uint32_t LineSet::Number(std::string_view line, std::uint64_t hash, TextOf text_of) {
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

void LineSet::NumberAt(const std::vector<std::uint32_t>& which, const std::vector<std::string_view>& lines,
                       const std::vector<std::uint64_t>& hashes, std::vector<std::uint32_t>& numbers,
                       TextOf text_of) {
  for (std::size_t k = 0; k < which.size(); ++k) {
    if (k + kSlotAhead < which.size()) Prefetch(hashes[which[k + kSlotAhead]], false);
    if (k + kBytesAhead < which.size()) Prefetch(hashes[which[k + kBytesAhead]], true);
    numbers[which[k]] = Number(lines[which[k]], hashes[which[k]], text_of);
  }
}

std::size_t LineSet::Candidate(std::string_view line, std::uint64_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  const std::uint64_t tag = TagOf(hash);
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.number_plus_one == 0) return at;
    if (slot.length != line.size() || (slot.start_and_tag & ~kStartMask) != tag) continue;
    // The line's bytes and the length of its text, and the text's start.
    const char* bytes = bytes_.data() + (slot.start_and_tag & kStartMask);
    __builtin_prefetch(bytes);
    __builtin_prefetch(bytes + slot.length + sizeof(std::uint32_t) - 1);
    __builtin_prefetch(bytes + slot.length + 2 * sizeof(std::uint32_t) + 32);
    return at;
  }
}

// A lookup waits on memory twice, for a slot and for the bytes it points
// to, so the batch runs three stages apart: the slots of the lines 2 *
// kAhead on are asked for, the matching slots of the lines kAhead on are
// found and their bytes asked for, and this line's bytes are compared.
void LineSet::FindAll(const std::vector<std::string_view>& lines, const std::vector<std::uint64_t>& hashes,
                      std::vector<std::uint32_t>& numbers, std::vector<std::string_view>& texts) const {
  constexpr std::size_t kAhead = 8;
  const std::size_t n = lines.size(), mask = slots_.size() - 1;
  numbers.resize(n);
  texts.resize(n);
  std::size_t candidates[kAhead];  // by line index modulo kAhead
  for (std::size_t i = 0; i < std::min(n, 2 * kAhead); ++i) __builtin_prefetch(&slots_[hashes[i] & mask]);
  for (std::size_t i = 0; i < std::min(n, kAhead); ++i) candidates[i] = Candidate(lines[i], hashes[i]);
  for (std::size_t i = 0; i < n; ++i) {
    const Slot* slot = &slots_[candidates[i % kAhead]];
    // A tag and length alike but other bytes: rare, looked up again.
    if (slot->number_plus_one != 0 && std::memcmp(bytes_.data() + (slot->start_and_tag & kStartMask),
                                                  lines[i].data(), lines[i].size()) != 0)
      slot = &slots_[SlotOf(lines[i], hashes[i])];
    if (i + 2 * kAhead < n) __builtin_prefetch(&slots_[hashes[i + 2 * kAhead] & mask]);
    if (i + kAhead < n) candidates[i % kAhead] = Candidate(lines[i + kAhead], hashes[i + kAhead]);
    numbers[i] = slot->number_plus_one - 1;  // free: kUnknown
    texts[i] = slot->number_plus_one == 0 ? std::string_view()
                                          : TextAfter((slot->start_and_tag & kStartMask), slot->length);
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
