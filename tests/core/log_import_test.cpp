// Import of a log into the worksheet and its three side files, byte for byte.

#include <gtest/gtest.h>

#include <filesystem>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "analysis/log_import.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

struct Imported {
  std::vector<std::string> list1;
  std::string logoutput, ignored, chat;
  std::vector<FakeHost::Message> messages;
};

class LogImport : public ::testing::Test {
 protected:
  Imported Import(const std::vector<std::string>& logs, bool append = false) {
    FakeHost host;
    host.program_dir = dir_.path().string();
    host.append = append;
    Form1 form(host);
    for (const std::string& bytes : logs) {
      const std::string path = dir_ / ("log" + std::to_string(count_++) + ".log");
      WriteBytes(path, bytes);
      host.chosen_log = path;
      form.LoadFile();
    }
    return {form.List1.Rows(), ReadBytes(dir_ / "logoutput.txt"), ReadBytes(dir_ / "ignored.txt"),
            ReadBytes(dir_ / "chat.txt"), host.messages};
  }

  ScratchDir dir_;
  int count_ = 0;
};

TEST_F(LogImport, FiltersStripsAndWritesTheSideFiles) {
  const Imported got = Import({
      "^1Al^7pha was railed by ^4Bravo\r\n"
      "Delta's Sentry Gun was destroyed by Echo.\n"
      "^7Alpha entered the game\r"
      "^7Alpha disconnected\n"
      "^7Alpha: ^2gg\n"
      "Bravo: plain chat\n"
      "^7Unpure client detected\n"
      "^7Server command overflow\n"
      "plain noise\n"
      "^7^^12Charlie cratered.\n"
      "^7never ended"});
  EXPECT_EQ(got.list1, (std::vector<std::string>{"Alpha was railed by Bravo",
                                                 "Delta's Sentry Gun was destroyed by Echo.",
                                                 "Charlie cratered."}));
  EXPECT_EQ(got.logoutput,
            "Alpha was railed by Bravo\r\nDelta's Sentry Gun was destroyed by Echo.\r\n"
            "Charlie cratered.\r\n\r\n");
  EXPECT_EQ(got.ignored,
            "\r\n^7Alpha entered the game\r\n^7Alpha disconnected\r\nAlpha: gg\r\n"
            "Bravo: plain chat\r\n^7Unpure client detected\r\n^7Server command overflow\r\n"
            "plain noise\r\n");
  EXPECT_EQ(got.chat, "Alpha: gg\r\n");
  EXPECT_TRUE(got.messages.empty());
}

TEST(StripColorCodes, RemovesCodesOneKindAfterTheOther) {
  const std::pair<std::string, std::string> cases[] = {
      {"^1Al^7pha", "Alpha"}, {"^^12x", "x"}, {"^^21x", "1x"}, {"a^b", "ab"},
      {"^0^9^a", "a"}, {"\xe9t\xe9^7", "\xe9t\xe9"}, {"", ""}};
  for (const auto& [in, out] : cases) EXPECT_EQ(StripColorCodes(in), out) << in;
}

TEST_F(LogImport, AppendModeKeepsEarlierLinesButSideFilesDescribeTheLastImport) {
  const Imported got = Import({"^7A killed himself.\r\n^7x: hi\n", "^7B killed himself.\n"}, true);
  EXPECT_EQ(got.logoutput, "A killed himself.\r\nB killed himself.\r\n\r\n");
  EXPECT_EQ(got.ignored, "");
  EXPECT_EQ(got.chat, "");
}

TEST_F(LogImport, EmptyFileKeepsNothing) {
  const Imported got = Import({""});
  EXPECT_TRUE(got.list1.empty());
  EXPECT_EQ(got.logoutput, "\r\n");
  EXPECT_EQ(got.ignored, "");
}

TEST_F(LogImport, BytesPassThroughUnchanged) {
  const std::string name("\x80\xff<&\"", 5);
  const std::string nul("N\0l", 3);
  const Imported got = Import({"^7" + name + " was railed by " + nul + "\n"});
  EXPECT_EQ(got.list1, (std::vector<std::string>{name + " was railed by " + nul}));
}

TEST_F(LogImport, LinesLongerThanOneReadAreKeptWhole) {
  const std::string long_name(3'000'000, 'x');
  const Imported got = Import({"^7" + long_name + " killed himself.\r\n"});
  ASSERT_EQ(got.list1.size(), 1u);
  EXPECT_EQ(got.list1[0], long_name + " killed himself.");
}

TEST(LoadFile, MissingOrUnchosenFileIsReportedAndTheSideFilesFollowTheRules) {
  ScratchDir dir;
  FakeHost host;
  host.program_dir = dir.path().string();
  Form1 form(host);
  WriteBytes(dir / "ignored.txt", "earlier");
  form.LoadFile();  // nothing chosen: no side file is touched
  EXPECT_EQ(host.messages, (std::vector<FakeHost::Message>{{"Choose a file!", MessageIcon::kNone}}));
  EXPECT_EQ(ReadBytes(dir / "ignored.txt"), "earlier");
  EXPECT_FALSE(std::filesystem::exists(dir / "logoutput.txt"));
  host.chosen_log = dir / "missing.log";
  form.LoadFile();
  EXPECT_EQ(host.messages.back(), (FakeHost::Message{"File Not Found", MessageIcon::kCritical}));
  EXPECT_EQ(ReadBytes(dir / "ignored.txt"), "");
  EXPECT_EQ(ReadBytes(dir / "chat.txt"), "");
  EXPECT_EQ(ReadBytes(dir / "logoutput.txt"), "\r\n");
}

TEST(LoadFile, UnreadableLogAndUnwritableSideFilesGiveClearMessages) {
  ScratchDir dir;
  FakeHost host;
  host.program_dir = dir / "missing-dir";
  host.chosen_log = dir.path().string();  // a directory given as the log
  Form1 form(host);
  form.LoadFile();
  ASSERT_EQ(host.messages.size(), 4u);
  EXPECT_EQ(host.messages[0].text, "Could not read " + dir.path().string() + ": Is a directory");
  EXPECT_EQ(host.messages[1].text,
            "Could not write " + (dir / "missing-dir") + "/ignored.txt: No such file or directory");
  EXPECT_EQ(host.messages[3].text,
            "Could not write " + (dir / "missing-dir") + "/logoutput.txt: No such file or directory");
}

}  // namespace
}  // namespace vantor::testing
