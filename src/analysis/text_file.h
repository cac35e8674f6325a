#pragma once
// Writing the program's text files: every line ends with CR LF, bytes are
// written as they are. The file is built beside its target under a
// temporary name and renamed into place only when complete, so an
// interrupted or failed write never leaves half a file over a good one.

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace vantor {

class BackgroundWriter;

struct IoResult {
  bool ok = true;
  std::string message;  // names the path and the system's reason
};

class TextFileWriter {
 public:
  explicit TextFileWriter(std::string target);
  ~TextFileWriter();  // abandons an uncommitted file
  TextFileWriter(const TextFileWriter&) = delete;
  TextFileWriter& operator=(const TextFileWriter&) = delete;

  void WriteLine(std::string_view line);
  // Bytes exactly as given, line ends included.
  void WriteRaw(std::string_view bytes);
  // Finishes the file and puts it in place of the target.
  IoResult Commit();

 private:
  void Fail(const char* what, int error);
  // Writes out what has gathered; lines gather in memory first, as a call to
  // the C library per line would cost more than the line itself.
  void Flush();

  std::string target_;
  std::string pending_;
  std::string temp_;
  std::FILE* file_ = nullptr;
  // Started once a file outgrows one block; small files are written
  // directly at Commit.
  std::unique_ptr<BackgroundWriter> writer_;
  IoResult result_;
};

// "Could not write <path>: <reason>" with the system's text for error.
std::string WriteFailure(const std::string& path, int error);

}  // namespace vantor
