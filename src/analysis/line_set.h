#pragma once
// The distinct lines of a log as it is read, each carrying a text of its
// own (the import's: the line without its colour codes) and an id (that
// text's in the worksheet's pool). One thread adds lines while any thread
// looks lines up: a line is published only once its bytes are in place,
// and a table outgrown is kept until the set goes, so a reader never waits
// and never sees half a line; it may miss a line added a moment ago.
//
// A lookup waits on memory twice (a slot, then the bytes it points to), so
// a batch asks for both a few lines ahead. A line's text is kept right
// after its bytes, where the lookup has just been.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {

class LineSet {
 public:
  static constexpr std::uint32_t kUnknown = UINT32_MAX;
  // What a new line carries: its text (copied into the set) and its id.
  using Carried = std::pair<std::string_view, std::uint32_t>;

  LineSet();
  ~LineSet();
  LineSet(const LineSet&) = delete;
  LineSet& operator=(const LineSet&) = delete;

  // The hash a line is looked up by.
  static std::uint64_t Hash(std::string_view line);

  // On the adding thread: the id the line carries (hash: its Hash), added
  // with what carried(line) gives when it is new.
  template <typename Carry>
  std::uint32_t Add(std::string_view line, std::uint64_t hash, Carry&& carried) {
    Table& table = *table_.load(std::memory_order_relaxed);
    const std::size_t at = SlotOf(table, line, hash);
    if (const std::uint32_t found = table.slots[at].id_plus_one.load(std::memory_order_relaxed))
      return found - 1;
    const Carried made = carried(line);
    Insert(table, at, line, hash, made.first, made.second);
    return made.second;
  }
  // Asks for the slot where a line of that hash is looked up first, ahead of Add.
  void Prefetch(std::uint64_t hash) const {
    const Table& table = *table_.load(std::memory_order_relaxed);
    __builtin_prefetch(&table.slots[hash & table.mask]);
  }
  // On any thread: the ids of the lines and the texts they carry (valid
  // while the set is, with kCopySlack bytes readable after them), kUnknown
  // and the empty text for lines not in it.
  void FindAll(std::span<const std::string_view> lines, std::span<const std::uint64_t> hashes,
               std::span<std::uint32_t> ids, std::span<std::string_view> texts) const;
  // The lines added so far (the adding thread's count).
  std::size_t Size() const { return count_; }

 private:
  // Where a line's bytes start, with the top 16 bits of its hash above the
  // 48 bits of the address, so that a probe rarely has to look at bytes;
  // published by its id + 1 (0: free) once the rest is in place.
  struct Slot {
    std::atomic<std::uint32_t> id_plus_one{0};
    std::uint32_t length = 0;
    std::uint64_t bytes_and_tag = 0;
  };
  struct Table {
    explicit Table(std::size_t size);
    ~Table();
    std::size_t mask;
    Slot* slots;
  };
  // Where the line stands, or the free slot where it would go.
  static std::size_t SlotOf(const Table& table, std::string_view line, std::uint64_t hash);
  // The same as far as tag and length tell, probing from the slot from on;
  // the line's bytes are asked for, to be compared once they are there.
  static std::size_t Candidate(const Table& table, std::string_view line, std::uint64_t hash,
                               std::size_t from);
  static bool Holds(const Slot& slot, std::string_view line);
  void Insert(Table& table, std::size_t at, std::string_view line, std::uint64_t hash, std::string_view text,
              std::uint32_t id);
  // Room for bytes that never move.
  char* Room(std::size_t bytes);
  void Grow();

  std::atomic<Table*> table_;
  std::vector<std::unique_ptr<Table>> tables_;  // the current one last; readers may hold older ones
  std::vector<std::pair<char*, std::size_t>> chunks_;
  std::size_t chunk_used_ = 0;
  std::size_t count_ = 0;
};

}  // namespace vantor
