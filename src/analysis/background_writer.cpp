#include "analysis/background_writer.h"

#include <cerrno>

namespace vantor {

BackgroundWriter::BackgroundWriter(std::FILE* file)
    : file_(file),
      stage_(
          1,
          [this](ByteBuffer& block) {
            if (error_ == 0 && std::fwrite(block.data(), 1, block.size(), file_) != block.size()) {
              error_ = errno != 0 ? errno : EIO;
            }
          },
          [](ByteBuffer& block) { block.Clear(); }) {}

int BackgroundWriter::Finish() {
  stage_.Finish();
  return error_;
}

}  // namespace vantor
