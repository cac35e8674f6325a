#pragma once
// Writes blocks of bytes to a file on a thread of its own, in the order
// they are handed over, so that the analysis goes on while the system takes
// the bytes (writing a large file is often throttled by the system).

#include <cstdio>

#include "analysis/byte_buffer.h"
#include "analysis/ordered_work.h"

namespace vantor {

class BackgroundWriter {
 public:
  explicit BackgroundWriter(std::FILE* file);

  // Hands a block over and returns an empty one to fill next.
  ByteBuffer Write(ByteBuffer&& block) { return stage_.Hand(std::move(block)); }
  // Waits until every block is written; 0, or the errno of the first
  // failed write (the blocks after it are dropped).
  int Finish();

 private:
  std::FILE* file_;
  int error_ = 0;                  // the stage's thread alone sets it, before Finish returns
  OrderedWork<ByteBuffer> stage_;  // last: its thread uses the members above
};

}  // namespace vantor
