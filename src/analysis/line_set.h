#pragma once
// The distinct lines of a log as it is read, each with a number in the
// order it was first seen. Unlike the string pool it never hands a line
// back as a string, so it keeps them all in one block of bytes: looking a
// line up waits on memory twice (its slot, then its bytes) instead of three
// times, and a batch asks for both a few lines ahead. A copy taken now and
// then lets other threads look lines up while this one adds new ones.
// Each line carries a text of its own (the import's: the line without its
// colour codes), kept right after its bytes, where a lookup has just been.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/large_array.h"

namespace vantor {

class LineSet {
 public:
  static constexpr std::uint32_t kUnknown = UINT32_MAX;

  LineSet();
  // Makes the text a new line carries.
  using TextOf = std::string (*)(std::string_view line);

  // The hash a line is looked up by.
  static std::uint64_t Hash(std::string_view line);

  // The line's number (hash: its Hash), added with text_of(line) when new.
  std::uint32_t Number(std::string_view line, std::uint64_t hash, TextOf text_of);
  // Numbers the lines at the indices which, adding them when new.
  void NumberAt(const std::vector<std::uint32_t>& which, const std::vector<std::string_view>& lines,
                const std::vector<std::uint64_t>& hashes, std::vector<std::uint32_t>& numbers,
                TextOf text_of);
  // The numbers of lines known to the set, kUnknown for the others, and
  // the texts they carry (valid while the set is; empty for the others).
  void FindAll(const std::vector<std::string_view>& lines, const std::vector<std::uint64_t>& hashes,
               std::vector<std::uint32_t>& numbers, std::vector<std::string_view>& texts) const;
  // The text the line numbered number carries.
  std::string_view TextOfNumber(std::uint32_t number) const;
  std::size_t Size() const { return count_; }

 private:
  // The number + 1 (0: free), the line's length, and where its bytes start
  // in bytes_ beside the top bits of its hash, so that a probe rarely has
  // to look at bytes.
  struct Slot {
    std::uint32_t number_plus_one = 0;
    std::uint32_t length = 0;
    std::uint64_t start_and_tag = 0;
  };
  static constexpr int kStartBits = 40;
  static constexpr std::uint64_t kStartMask = (std::uint64_t{1} << kStartBits) - 1;

  // Where the line stands, or the free slot where it would go.
  std::size_t SlotOf(std::string_view line, std::uint64_t hash) const;
  // The same as far as tag and length tell (the bytes are asked for, to be
  // compared once they are there).
  std::size_t Candidate(std::string_view line, std::uint64_t hash) const;
  // The text kept after the bytes that start at start and run for length.
  std::string_view TextAfter(std::uint64_t start, std::uint32_t length) const;
  void Prefetch(std::uint64_t hash, bool bytes) const;
  void Grow();

  LargeVector<char> bytes_;
  LargeVector<Slot> slots_;             // open addressing, at most half full
  LargeVector<std::uint64_t> hashes_;   // by number, so that growing hashes nothing again
  LargeVector<std::uint64_t> text_at_;  // by number: where its text's length stands in bytes_
  std::size_t count_ = 0;
};

}  // namespace vantor
