#pragma once
// Every distinct text of a run stored once. A game log repeats the same few
// player names and the same obituaries millions of times, so the worksheet
// keeps small ids instead of copies: a row costs four bytes however long
// its text, and equal texts compare as equal ids.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/large_array.h"

namespace vantor {

using TextId = std::uint32_t;
// The rows of a list: a large log keeps millions.
using TextIds = LargeVector<TextId>;

class StringPool {
 public:
  // The empty text always has the id 0.
  static constexpr TextId kEmpty = 0;

  StringPool();
  // The id of text, adding it when it is new.
  TextId Intern(std::string_view text);
  // The same, hash being std::hash of text (worked out ahead, elsewhere).
  TextId Intern(std::string_view text, std::size_t hash) { return InternHashed(text, hash); }
  // Asks for the slot where a text of that hash is looked up first, ahead of Intern.
  void Prefetch(std::size_t hash) const { __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]); }
  // Valid while the pool is: texts never move.
  std::string_view Text(TextId id) const { return texts_[id]; }
  // The id of text, or an id no text has (Size()) when it was never added:
  // a row can then be compared with a fixed text as ids.
  TextId Find(std::string_view text) const;
  // Ids run from 0 to Size() - 1, in the order the texts were first seen.
  std::size_t Size() const { return texts_.size(); }

 private:
  // A slot of the hash table: the id + 1 (0: free) beside 32 bits of its
  // text's hash, so that a probe rarely has to look at a text.
  struct Slot {
    TextId id_plus_one = 0;
    std::uint32_t tag = 0;
  };

  void Grow();
  std::size_t SlotOf(std::string_view text, std::size_t hash) const;
  TextId InternHashed(std::string_view text, std::size_t hash);

  // The texts' bytes, one after the other in blocks that never move, so
  // that a text read from the pool stays valid while later texts are added
  // and a new text costs no allocation of its own.
  std::string_view Keep(std::string_view text);
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t block_left_ = 0;
  char* block_end_ = nullptr;
  LargeVector<std::string_view> texts_;
  LargeVector<std::size_t> hashes_;  // per id, so growing never rehashes a text
  LargeVector<Slot> slots_;          // open addressing, at most half full
};

}  // namespace vantor
