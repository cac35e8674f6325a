#pragma once
// SHA-256 of a file, so that a published summary names exactly the logs
// it was made from.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class Sha256 {
 public:
  Sha256();
  void Add(std::string_view bytes);
  // The digest as 64 lowercase hex digits; the object is spent.
  std::string HexDigest();

 private:
  // Hashes n whole blocks of 64 bytes: with the processor's SHA
  // instructions where it has them (eight times faster), else portably.
  void Blocks(const unsigned char* blocks, std::size_t n);
  void Block(const unsigned char* block);

  std::uint32_t state_[8];
  unsigned char buffer_[64];
  std::size_t buffered_ = 0;
  std::uint64_t length_ = 0;
};

// The digest of the file's bytes; none when it cannot be read.
std::optional<std::string> FileSha256(const std::string& path);

}  // namespace vantor
