#pragma once
// Writing the program's text files: every line ends with CR LF, bytes are
// written as they are.
//
// A file is built as an unnamed temporary file in its target's directory
// and linked into place only when complete, so an interrupted or failed
// write never leaves half a file over a good one, and a killed run leaves
// no temporary file behind. Where the file system has no unnamed files, a
// named one is used, locked while it is open; the next write into that
// directory removes the ones a killed run left. A target that is a symbolic link is written
// through to the file it names; a target that is no regular file (a pipe,
// a terminal, /dev/stdout) is written directly.

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/byte_buffer.h"

namespace vantor {

class BackgroundWriter;

struct IoResult {
  bool ok = true;
  std::string message;  // names the path and the system's reason
};

class TextFileWriter {
 public:
  explicit TextFileWriter(std::string target);
  // A writer that writes nothing and whose Commit fails with refusal: an
  // output the run must not write, reported where a failed write would be.
  // Without a refusal, an empty target writes nothing and commits at once
  // (side files turned off).
  TextFileWriter(std::string target, std::optional<std::string> refusal);
  ~TextFileWriter();  // abandons an uncommitted file
  TextFileWriter(const TextFileWriter&) = delete;
  TextFileWriter& operator=(const TextFileWriter&) = delete;

  void WriteLine(std::string_view line);
  // Bytes exactly as given, line ends included.
  void WriteRaw(std::string_view bytes);
  // The same for a block of bytes, written at once on this thread (a large
  // file's blocks come from threads of their own), which is left empty.
  void WriteBlock(ByteBuffer& block);
  // Whether lines given now are written (false when refused, discarded or failed).
  bool Writes() const { return file_ != nullptr && result_.ok; }
  // Finishes the file and puts it in place of the target.
  IoResult Commit();

 private:
  void Open();
  void OpenTemporary(const std::string& dir);
  void Fail(int error);
  // Writes out what has gathered; lines gather in memory first, as a call to
  // the C library per line would cost more than the line itself.
  void Flush();
  void WriteNow(std::string_view bytes);
  void Close();
  void PutInPlace();

  std::string target_;    // as given: what messages name
  std::string resolved_;  // the file written: symbolic links followed
  ByteBuffer pending_;
  std::string temp_;  // a named temporary file, when the system has no unnamed ones
  int fd_ = -1;
  int slot_ = -1;        // where the interrupt handler finds a named temporary file
  bool direct_ = false;  // written in place: no temporary file
  std::FILE* file_ = nullptr;
  // Started once a file outgrows one block; small files are written
  // directly at Commit.
  std::unique_ptr<BackgroundWriter> writer_;
  IoResult result_;
};

// Whether path is the file, pipe or terminal that standard output or
// standard error goes to.
bool IsStandardStream(const std::string& path);

// "Could not write <path>: <reason>" with the system's text for error.
std::string WriteFailure(const std::string& path, int error);

// On SIGINT and SIGTERM, removes the named temporary files of writes under
// way and ends the program with 128 + the signal's number. Hosts call it
// once at start.
void RemoveTemporaryFilesOnInterrupt();

}  // namespace vantor
