#pragma once
// The six kinds of flag event. A flag action name is a kind followed by
// " (Blue)" or " (Red)", the team the event credits to its player.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor {

enum class FlagKind : std::size_t { FlagDefense, BaseDefense, FCFrag, FCDefense, FlagGrab, FlagCapture };

inline constexpr std::size_t kFlagKindCount = 6;

// Indexed by FlagKind. This is also the order in which team assignment asks
// for them, so the colour a player keeps comes from the last kind here.
inline constexpr std::array<std::string_view, kFlagKindCount> kFlagKindNames = {
    "Flag Defense", "Base Defense", "FC Frag", "FC Defense", "Flag Grab", "Flag Capture"};

inline constexpr std::string_view kBlue = "Blue";
inline constexpr std::string_view kRed = "Red";

// A player's flag events of each kind, as the flag counting credits them.
struct FlagCredit {
  std::array<std::int64_t, kFlagKindCount> counts{};
  // Per kind, the colour of the last credited event of that kind that names
  // one ("" when none): what the counting leaves in the team colour.
  std::array<std::string_view, kFlagKindCount> colours{};
  // Per kind, the List5 row of that event.
  std::array<std::optional<std::size_t>, kFlagKindCount> rows{};
};

inline constexpr std::size_t Index(FlagKind k) { return static_cast<std::size_t>(k); }

}  // namespace vantor
