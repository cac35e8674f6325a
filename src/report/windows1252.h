#pragma once
// Log text is Windows-1252 (single-byte, kept as read); exports for other
// programs want UTF-8.

#include <string>
#include <string_view>

namespace vantor {

// Each byte decoded as Windows-1252 and encoded as UTF-8; the five bytes
// Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the
// C1 controls of the same number, as most decoders do.
std::string Cp1252ToUtf8(std::string_view bytes);

// A file path for an export: as it is when it is already UTF-8 (as paths
// are on this system by convention), else decoded as Windows-1252.
std::string PathToUtf8(std::string_view path);

}  // namespace vantor
