#include "analysis/log_import.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "analysis/form1.h"
#include "analysis/text_file.h"
#include "analysis/text_ops.h"

namespace vantor {

namespace {

constexpr std::array<std::string_view, 11> kColorCodes = {
    "^1", "^2", "^3", "^4", "^5", "^6", "^7", "^8", "^9", "^0", "^"};

constexpr std::size_t kChunk = 1 << 20;

std::string ReadFailure(const std::string& path, int error) {
  return "Could not read " + path + ": " + std::strerror(error);
}

void Report(Host& host, const IoResult& result) {
  if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
}

}  // namespace

LogText::~LogText() {
  if (file_ != nullptr) std::fclose(file_);
}

bool LogText::ForEachLine(const std::function<void(std::string_view)>& on_line) {
  if (file_ == nullptr) return true;
  std::vector<char> buffer(kChunk);
  std::string carry;  // the start of a line that runs past a chunk
  for (;;) {
    const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), file_);
    std::string_view chunk(buffer.data(), got);
    std::size_t start = 0;
    for (std::size_t i = 0; i < chunk.size(); ++i) {
      if (chunk[i] != '\r' && chunk[i] != '\n') continue;
      if (carry.empty()) {
        on_line(chunk.substr(start, i - start));
      } else {
        carry.append(chunk.substr(start, i - start));
        on_line(carry);
        carry.clear();
      }
      start = i + 1;
    }
    carry.append(chunk.substr(start));
    if (got < buffer.size()) return std::ferror(file_) == 0;
  }
}

LogText ReadLogText(const std::string& fileName, Host& host) {
  std::error_code ec;
  if (!std::filesystem::exists(fileName, ec)) {
    host.ShowMessage(kFileNotFound, MessageIcon::kCritical);
    return LogText();
  }
  if (std::filesystem::is_directory(fileName, ec)) {
    host.ShowMessage(ReadFailure(fileName, EISDIR), MessageIcon::kCritical);
    return LogText();
  }
  std::FILE* file = std::fopen(fileName.c_str(), "rb");
  if (file == nullptr) {
    host.ShowMessage(ReadFailure(fileName, errno), MessageIcon::kCritical);
    return LogText();
  }
  return LogText(file);
}

std::string StripColorCodes(std::string_view line) {
  if (line.find('^') == std::string_view::npos) return std::string(line);
  std::string text(line);
  for (std::string_view code : kColorCodes) {
    if (text.find(code) != std::string::npos) text = ReplaceAll(text, code, "");
  }
  return text;
}

LineFate ClassifyLogLine(std::string_view line) {
  const bool has_code7 = Contains(line, "^7");
  bool keep = has_code7 || Contains(line, "Sentry Gun was destroyed by ");
  if (keep && (Contains(line, "entered the game") || Contains(line, "connected") ||
               Contains(line, "Unpure client detected"))) {
    keep = false;
  }
  // Anything with a colon is somebody talking; coloured chat is kept apart.
  if (Contains(line, ":")) return has_code7 ? LineFate::kChat : LineFate::kIgnored;
  if (Contains(line, "Server command overflow")) keep = false;
  return keep ? LineFate::kKept : LineFate::kIgnored;
}

void Form1::LoadFile() {
  if (!host_.AppendChecked()) ClearLists();
  const std::string file_name = host_.ChosenLogPath();
  if (file_name.empty()) {
    host_.ShowMessage(kChooseAFile, MessageIcon::kNone);
    return;
  }
  LogText text = ReadLogText(file_name, host_);
  const std::string dir = host_.ProgramDirectory();
  TextFileWriter ignored(dir + std::string(kIgnoredFile));
  TextFileWriter chat(dir + std::string(kChatFile));
  const bool read_all = text.ForEachLine([&](std::string_view line) {
    switch (ClassifyLogLine(line)) {
      case LineFate::kKept: List1.Append(StripColorCodes(line)); break;
      case LineFate::kIgnored: ignored.WriteLine(line); break;
      case LineFate::kChat: {
        const std::string stripped = StripColorCodes(line);
        chat.WriteLine(stripped);
        ignored.WriteLine(stripped);
        break;
      }
    }
  });
  if (!read_all) host_.ShowMessage(ReadFailure(file_name, errno), MessageIcon::kCritical);
  TextFileWriter log_output(dir + std::string(kLogOutputFile));
  for (const std::string& row : List1.Rows()) log_output.WriteLine(row);
  log_output.WriteLine("");
  Report(host_, ignored.Commit());
  Report(host_, chat.Commit());
  Report(host_, log_output.Commit());
}

}  // namespace vantor
