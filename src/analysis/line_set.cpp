#include "analysis/line_set.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "analysis/byte_buffer.h"
#include "analysis/large_array.h"

namespace vantor {

namespace {

constexpr std::size_t kFirstSlots = 1 << 12;  // a power of two
constexpr std::size_t kChunk = std::size_t{4} << 20;
constexpr int kAddressBits = 48;
constexpr std::uint64_t kAddressMask = (std::uint64_t{1} << kAddressBits) - 1;

std::uint64_t TagOf(std::uint64_t hash) { return hash >> kAddressBits << kAddressBits; }

const char* BytesOf(std::uint64_t bytes_and_tag) {
  return reinterpret_cast<const char*>(bytes_and_tag & kAddressMask);
}

__extension__ typedef unsigned __int128 Wide;  // the compiler's, not the language's

// The high and low halves of a 128-bit product folded together.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  const Wide product = static_cast<Wide>(a) * b;
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

LineSet::Table::Table(std::size_t size) : mask(size - 1), slots(LargeArrayAllocator<Slot>().allocate(size)) {
  std::uninitialized_default_construct_n(slots, size);
}

LineSet::Table::~Table() { LargeArrayAllocator<Slot>().deallocate(slots, mask + 1); }

LineSet::LineSet() {
  tables_.push_back(std::make_unique<Table>(kFirstSlots));
  table_.store(tables_.back().get(), std::memory_order_release);
}

LineSet::~LineSet() {
  for (const auto& [chunk, size] : chunks_) UnmapLargeArray(chunk, size);
}

bool LineSet::Holds(const Slot& slot, std::string_view line) {
  return std::memcmp(BytesOf(slot.bytes_and_tag), line.data(), line.size()) == 0;
}

std::size_t LineSet::SlotOf(const Table& table, std::string_view line, std::uint64_t hash) {
  for (std::size_t at = Candidate(table, line, hash, hash & table.mask);;
       at = Candidate(table, line, hash, (at + 1) & table.mask)) {
    const Slot& slot = table.slots[at];
    // A tag and length alike but other bytes: the probe goes on past it.
    if (slot.id_plus_one.load(std::memory_order_acquire) == 0 || Holds(slot, line)) return at;
  }
}

std::size_t LineSet::Candidate(const Table& table, std::string_view line, std::uint64_t hash,
                               std::size_t from) {
  const std::uint64_t tag = TagOf(hash);
  for (std::size_t at = from;; at = (at + 1) & table.mask) {
    const Slot& slot = table.slots[at];
    if (slot.id_plus_one.load(std::memory_order_acquire) == 0) return at;
    if (slot.length != line.size() || (slot.bytes_and_tag & ~kAddressMask) != tag) continue;
    // The line's bytes and the length of its text, and the text's start.
    const char* bytes = BytesOf(slot.bytes_and_tag);
    __builtin_prefetch(bytes);
    __builtin_prefetch(bytes + slot.length + sizeof(std::uint32_t) - 1);
    __builtin_prefetch(bytes + slot.length + sizeof(std::uint32_t) + 32);
    return at;
  }
}

char* LineSet::Room(std::size_t bytes) {
  // A text is copied with slack: there is room for it after the last one.
  if (chunks_.empty() || chunks_.back().second - chunk_used_ < bytes + kCopySlack) {
    const std::size_t size = std::max(kChunk, bytes + kCopySlack);
    chunks_.emplace_back(static_cast<char*>(MapLargeArray(size)), size);
    chunk_used_ = 0;
  }
  char* room = chunks_.back().first + chunk_used_;
  chunk_used_ += bytes;
  return room;
}

void LineSet::Insert(Table& table, std::size_t at, std::string_view line, std::uint64_t hash,
                     std::string_view text, std::uint32_t id) {
  if (count_ >= kUnknown - 1 || line.size() > UINT32_MAX || text.size() > UINT32_MAX)
    throw std::length_error("too many distinct lines");
  // The line's bytes, its text's length and its text.
  char* bytes = Room(line.size() + sizeof(std::uint32_t) + text.size());
  std::memcpy(bytes, line.data(), line.size());
  const auto text_length = static_cast<std::uint32_t>(text.size());
  std::memcpy(bytes + line.size(), &text_length, sizeof text_length);
  if (!text.empty()) std::memcpy(bytes + line.size() + sizeof text_length, text.data(), text.size());
  const auto length = static_cast<std::uint32_t>(line.size());
  const std::uint64_t bytes_and_tag = reinterpret_cast<std::uintptr_t>(bytes) | TagOf(hash);
  Slot& slot = table.slots[at];
  slot.length = length;
  slot.bytes_and_tag = bytes_and_tag;
  slot.id_plus_one.store(id + 1, std::memory_order_release);
  // At most half full, so a probe stays short.
  if (++count_ * 2 > table.mask + 1) Grow();
}

// A line's hash is worked out again from its bytes: quicker than keeping it.
void LineSet::Grow() {
  const Table& old = *tables_.back();
  auto table = std::make_unique<Table>(2 * (old.mask + 1));
  for (std::size_t from = 0; from <= old.mask; ++from) {
    const Slot& line = old.slots[from];
    const std::uint32_t id_plus_one = line.id_plus_one.load(std::memory_order_relaxed);
    if (id_plus_one == 0) continue;
    std::size_t at = Hash({BytesOf(line.bytes_and_tag), line.length}) & table->mask;
    while (table->slots[at].id_plus_one.load(std::memory_order_relaxed) != 0) at = (at + 1) & table->mask;
    table->slots[at].length = line.length;
    table->slots[at].bytes_and_tag = line.bytes_and_tag;
    table->slots[at].id_plus_one.store(id_plus_one, std::memory_order_relaxed);
  }
  // Readers that hold the old table go on with it.
  table_.store(table.get(), std::memory_order_release);
  tables_.push_back(std::move(table));
}

// A batch runs three stages apart: the slots of the lines 2 * kAhead on are
// asked for, the matching slots of the lines kAhead on are found and their
// bytes asked for, and this line's bytes are compared.
void LineSet::FindAll(std::span<const std::string_view> lines, std::span<const std::uint64_t> hashes,
                      std::span<std::uint32_t> ids, std::span<std::string_view> texts) const {
  constexpr std::size_t kAhead = 8;
  const Table& table = *table_.load(std::memory_order_acquire);
  const std::size_t n = lines.size();
  std::size_t candidates[kAhead];  // by line index modulo kAhead
  for (std::size_t i = 0; i < std::min(n, 2 * kAhead); ++i)
    __builtin_prefetch(&table.slots[hashes[i] & table.mask]);
  for (std::size_t i = 0; i < std::min(n, kAhead); ++i)
    candidates[i] = Candidate(table, lines[i], hashes[i], hashes[i] & table.mask);
  for (std::size_t i = 0; i < n; ++i) {
    const Slot* slot = &table.slots[candidates[i % kAhead]];
    std::uint32_t id_plus_one = slot->id_plus_one.load(std::memory_order_acquire);
    if (id_plus_one != 0 && !Holds(*slot, lines[i])) {
      slot = &table.slots[SlotOf(table, lines[i], hashes[i])];
      id_plus_one = slot->id_plus_one.load(std::memory_order_acquire);
    }
    if (i + 2 * kAhead < n) __builtin_prefetch(&table.slots[hashes[i + 2 * kAhead] & table.mask]);
    if (i + kAhead < n) {
      const std::size_t ahead = i + kAhead;
      candidates[i % kAhead] = Candidate(table, lines[ahead], hashes[ahead], hashes[ahead] & table.mask);
    }
    ids[i] = id_plus_one - 1;  // free: kUnknown
    texts[i] = {};
    if (id_plus_one == 0) continue;
    const char* text = BytesOf(slot->bytes_and_tag) + slot->length;
    std::uint32_t text_length;
    std::memcpy(&text_length, text, sizeof text_length);
    texts[i] = {text + sizeof text_length, text_length};
  }
}

}  // namespace vantor
