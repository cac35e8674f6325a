// Import of a log into List1 and its three side files, byte for byte.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "analysis/span_digests.h"
#include "analysis/worker_threads.h"
#include "report/sha256.h"
#include "support/session.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;
using Messages = std::vector<FakeHost::Message>;

std::string Sha256Of(std::string_view bytes) {
  Sha256 sha;
  sha.Add(bytes);
  return sha.HexDigest();
}

class LogImport : public ::testing::Test, protected Session {
 protected:
  void Open(const std::string& bytes) { Session::Open("game" + std::to_string(++logs_) + ".log", bytes); }
  std::string Side(const std::string& name) const { return ReadBytes(dir / name); }

  int logs_ = 0;
};

struct ImportCase {
  const char* name;
  std::string log;
  V kept;
  std::string ignored, chat;
};

TEST_F(LogImport, FiltersEachLineAndWritesTheSideFiles) {
  const std::string odd_name("\x80\xff<&\"", 5), nul_name("N\0l", 3);
  // clang-format off
  const ImportCase cases[] = {
      {"CR LF pairs give an empty ignored line each", "^7Alpha killed himself.\r\n^7Bravo cratered.\r\n",
       {"Alpha killed himself.", "Bravo cratered."}, "\r\n\r\n", ""},
      {"CR alone and LF alone each end a line", "^7Alpha cratered.\r^7Bravo cratered.\n\n",
       {"Alpha cratered.", "Bravo cratered."}, "\r\n", ""},
      {"the last line without a line end goes nowhere", "^7Alpha cratered.\n^7Bravo: no end", {"Alpha cratered."}, "", ""},
      {"sentry text keeps a line, an obituary alone does not",
       "Delta's Sentry Gun was destroyed by Echo.\nDelta's Sentry Gun was destroyed by\nAlpha was railed by Bravo\n",
       {"Delta's Sentry Gun was destroyed by Echo."}, "Delta's Sentry Gun was destroyed by\r\nAlpha was railed by Bravo\r\n", ""},
      {"joins and connections are ignored unchanged",
       "^7Alpha entered the game\n^7Bravo disconnected\n^1Unpure client detected ^7x\n"
       "Delta's Sentry Gun was destroyed by Reconnected.\n", {},
       "^7Alpha entered the game\r\n^7Bravo disconnected\r\n^1Unpure client detected ^7x\r\n"
       "Delta's Sentry Gun was destroyed by Reconnected.\r\n", ""},
      {"chat with code 7 goes stripped to chat and ignored", "^7Alpha: ^2gg\n^7Bravo was railed by Alpha: lol\n", {},
       "Alpha: gg\r\nBravo was railed by Alpha: lol\r\n", "Alpha: gg\r\nBravo was railed by Alpha: lol\r\n"},
      {"chat without code 7 goes unstripped to ignored only", "^1Bravo: ^2plain\n", {}, "^1Bravo: ^2plain\r\n", ""},
      {"never-kept texts anywhere, near misses kept", "^7connected\n^7cconnected x\n^7x connecte d\n^7conn ected\n",
       {"x connecte d", "conn ected"}, "^7connected\r\n^7cconnected x\r\n", ""},
      {"server command overflow", "^7Server command overflow\n", {},
       "^7Server command overflow\r\n", ""},
      {"high and NUL bytes pass through",
       "^7" + odd_name + " was railed by " + nul_name + "\n" + std::string("\x80\0 noise\n", 9),
       {odd_name + " was railed by " + nul_name}, std::string("\x80\0 noise\r\n", 10), ""},
      {"an empty file", "", {}, "", ""},
  };
  // clang-format on
  for (const ImportCase& c : cases) {
    SCOPED_TRACE(c.name);
    Open(c.log);
    std::string logoutput;
    for (const std::string& row : c.kept) logoutput += row + "\r\n";
    EXPECT_EQ(form.List1.Rows(), c.kept);
    EXPECT_EQ(Side("logoutput.txt"), logoutput + "\r\n");
    EXPECT_EQ(Side("ignored.txt"), c.ignored);
    EXPECT_EQ(Side("chat.txt"), c.chat);
    EXPECT_TRUE(host.messages.empty());
  }
}

// "^1", "^2", ... "^9", "^0" and then "^" are each removed in one pass over
// the result of the step before, so a removal can form a code that a later
// step removes, but never one that an earlier step would have.
TEST_F(LogImport, KeptLinesLoseTheirColourCodesOneCodeAfterTheOther) {
  // clang-format off
  const std::pair<std::string, std::string> rows[] = {
      {"^1Al^7pha ^4Bravo", "Alpha Bravo"}, {"^^12", ""}, {"^^21", "1"}, {"^^^123", ""}, {"^7^^77", "7"},
      {"^^01", "1"}, {"^^90", ""}, {"^^09", "9"}, {"^1^11", "1"}, {"^10", "0"}, {"^a^", "a"}, {"^^^", ""},
      {"no codes", "no codes"}, {"\x80^7\xff", "\x80\xff"}};
  // clang-format on
  std::string log;
  V kept;
  for (const auto& [line, stripped] : rows) {
    log += "Ida's Sentry Gun was destroyed by " + line + "\n";
    kept.push_back("Ida's Sentry Gun was destroyed by " + stripped);
  }
  Open(log);
  EXPECT_EQ(form.List1.Rows(), kept);
}

TEST_F(LogImport, AppendModeLogOutputHoldsBothFilesAndTheOtherSideFilesTheLastOnly) {
  host.append = true;
  Open("^7Alpha cratered.\r\n^7Bravo: hi\n");
  EXPECT_EQ(Side("ignored.txt"), "\r\nBravo: hi\r\n");
  Open("^7Charlie cratered.\nnoise\n^7Dora: yo\n");
  EXPECT_EQ(form.List1.Rows(), (V{"Alpha cratered.", "Charlie cratered."}));
  EXPECT_EQ(Side("logoutput.txt"), "Alpha cratered.\r\nCharlie cratered.\r\n\r\n");
  EXPECT_EQ(Side("ignored.txt") + "|" + Side("chat.txt"), "noise\r\nDora: yo\r\n|Dora: yo\r\n");
  // A missing file empties ignored and chat and rewrites the log output.
  host.chosen_log = dir / "missing.log";
  form.LoadFile();
  EXPECT_EQ(host.messages, (Messages{{"File Not Found", MessageIcon::kCritical}}));
  EXPECT_EQ(Side("logoutput.txt") + "|" + Side("ignored.txt") + "|" + Side("chat.txt"),
            "Alpha cratered.\r\nCharlie cratered.\r\n\r\n||");
}

TEST_F(LogImport, WithoutAppendEveryImportStartsFromAnEmptyWorksheet) {
  for (const char* name : {"logoutput.txt", "ignored.txt", "chat.txt"}) WriteBytes(dir / name, name);
  host.append = true;
  form.List1.Append("kept from before");
  form.LoadFile();
  EXPECT_EQ(form.List1.Rows(), (V{"kept from before"}));
  host.append = false;
  form.List2.Append("stale");
  host.table[0].Append("stale");
  form.LoadFile();
  EXPECT_EQ(form.List1.Count() + form.List2.Count() + host.table.RowCount(), 0u);
  EXPECT_EQ(host.messages, Messages(2, {"Choose a file!", MessageIcon::kNone}));
  EXPECT_EQ(Side("logoutput.txt") + Side("ignored.txt") + Side("chat.txt"),
            "logoutput.txtignored.txtchat.txt");
  form.List2.Append("stale");
  Open("^7Bravo cratered.\n");
  EXPECT_TRUE(form.List2.Empty());
}

// The log is read in pieces of 1 MiB; lines that run across pieces and a
// CR LF pair split between two pieces must come out as if read whole.
TEST_F(LogImport, LinesRunningAcrossReadPiecesAreKeptOrIgnoredWhole) {
  const std::string long_kept(3'000'000, 'k'), long_ignored(3'000'000, 'i');
  Open("^7" + long_kept + " cratered.\r\n" + long_ignored + "\r\n");
  EXPECT_EQ(form.List1.Rows(), (V{long_kept + " cratered."}));
  EXPECT_EQ(Side("ignored.txt"), "\r\n" + long_ignored + "\r\n\r\n");

  const std::string filler((1 << 20) - std::string("^7 cratered.\r").size(), 'f');
  form.KeepPlaces(true);
  Open("^7" + filler + " cratered.\r\n^7Bravo cratered.\r\n");  // CR ends the first piece
  EXPECT_EQ(form.List1.Rows(), (V{filler + " cratered.", "Bravo cratered."}));
  EXPECT_EQ(form.List1.PlaceAt(1).place.line, 2u);
  EXPECT_EQ(Side("ignored.txt"), "\r\n\r\n");
}

// Pieces are sorted on several threads at once and taken up in log order:
// rows, their line numbers, markers and side files come out as read whole.
TEST_F(LogImport, PiecesSortedSideBySideComeOutInLogOrder) {
  std::string log, log_output;
  for (int i = 0; i < 300'000; ++i) {
    if (i == 100'000) log += "^7Somebody connected\r\n";
    if (i == 250'000) log += "Timelimit hit.\r\n";
    log += "^7P" + std::to_string(i % 7000) + " cratered.\r\n";
    log_output += "P" + std::to_string(i % 7000) + " cratered.\r\n";
  }
  std::string pairs(500'000, '\r');
  for (std::size_t i = 1; i < pairs.size(); i += 2) pairs[i] = '\n';
  // On one thread the later pieces find most lines among those taken up.
  for (const unsigned threads : {3u, 1u}) {
    SCOPED_TRACE(threads);
    SetWorkerThreads(threads);
    form.KeepPlaces(true);
    form.RecordsMarkers = true;
    Open(log);
    SetWorkerThreads(0);
    ASSERT_EQ(form.List1.Count(), 300'000u);
    EXPECT_EQ(form.List1.PlaceAt(100'000).place.line, 100'002u);
    EXPECT_EQ(form.List1.At(123'457), "P4457 cratered.");
    EXPECT_EQ(form.List1.PlaceAt(123'457).place.line, 123'459u);
    EXPECT_EQ(form.List1.At(299'999), "P5999 cratered.");
    EXPECT_EQ(form.List1.PlaceAt(299'999).place.line, 300'002u);
    ASSERT_EQ(form.Markers.size(), 2u);
    EXPECT_EQ(form.Markers[0].place.line, 250'002u);
    EXPECT_EQ(form.Markers[0].kept_before, 250'000u);
    EXPECT_EQ(form.Markers[1].place.line, 300'003u);
    EXPECT_EQ(form.Markers[1].kept_before, 300'000u);
    // Compared whole, without printing megabytes when they differ.
    EXPECT_TRUE(Side("ignored.txt") == pairs.substr(0, 200'000) + "^7Somebody connected\r\n\r\n" +
                                           pairs.substr(0, 300'000) + "Timelimit hit.\r\n\r\n" +
                                           pairs.substr(0, 100'000));
    EXPECT_TRUE(Side("logoutput.txt") == log_output + "\r\n");
  }
}

// The log's digest and each stretch's, read back from the log in pieces: a
// CR LF pair after a limit's line belongs to its stretch, also where the
// pair is split between two pieces; the log's own digest takes the bytes
// after its last line end as well.
TEST(DigestLog, HashesTheLogAndEachStretchWhole) {
  const std::string limit = "CL_InitCGame: 5 seconds\r\nb\r\nTimelimit hit.\r\n",
                    last = "CL_InitCGame: 6 seconds\r\nd\r";
  const std::string filler((1 << 20) - std::string("b\r\nTimelimit hit.\r").size(),
                           'f');  // the CR ends a piece
  struct Log {
    std::string lines, tail;
    std::vector<std::string> stretches;
  };
  const Log logs[] = {
      {"a\r\n" + limit + "c\r\n" + last, "", {"a\r\n", limit, last}},
      {"b\r\nTimelimit hit.\r\nc\r\n" + last, "no end", {"b\r\nTimelimit hit.\r\n", last}},
      {filler + "b\r\nTimelimit hit.\r\n" + last, "", {filler + "b\r\nTimelimit hit.\r\n", last}}};
  ScratchDir dir;
  for (const Log& log : logs) {
    std::vector<MarkerBytes> markers;
    for (std::size_t begin = 0, end; begin < log.lines.size(); begin = end + 1) {
      end = log.lines.find_first_of("\r\n", begin);
      if (const auto row = MatchMarkerOf(std::string_view(log.lines).substr(begin, end - begin)))
        markers.push_back({*row, begin, end + 1});
    }
    WriteBytes(dir / "game.log", log.lines + log.tail);
    const int fd = ::open((dir / "game.log").c_str(), O_RDONLY);
    const auto [digest, stretches] =
        DigestLog(fd, log.lines.size() + log.tail.size(), log.lines.size(), markers, true);
    ::close(fd);
    EXPECT_EQ(digest, Sha256Of(log.lines + log.tail));
    std::vector<std::string> expected;
    for (const std::string& stretch : log.stretches) expected.push_back(Sha256Of(stretch));
    EXPECT_EQ(stretches, expected) << log.stretches.size();
  }
}

}  // namespace
}  // namespace vantor::testing
