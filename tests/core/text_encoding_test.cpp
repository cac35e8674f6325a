// Log bytes are Windows-1252; the exports are UTF-8. Paths are UTF-8 by
// convention and pass unchanged unless they are not UTF-8 at all.

#include <gtest/gtest.h>

#include <string>

#include "report/windows1252.h"

namespace vantor::testing {
namespace {

TEST(TextEncoding, LogBytesAreDecodedAsWindows1252) {
  const struct {
    const char* name;
    std::string bytes, utf8;
  } cases[] = {
      {"ASCII stays", "Alpha, \"B\"\t1", "Alpha, \"B\"\t1"},
      {"Latin-1 letters", "Ren\xe9 \xff", "Ren\xc3\xa9 \xc3\xbf"},
      {"the euro sign and quotes of 0x80..0x9F", "\x80\x93\x9f", "\xe2\x82\xac\xe2\x80\x9c\xc5\xb8"},
      {"undefined bytes become C1 controls", std::string("\x81\x8d\x8f\x90\x9d"),
       "\xc2\x81\xc2\x8d\xc2\x8f\xc2\x90\xc2\x9d"},
      {"NUL stays", std::string("a\0b", 3), std::string("a\0b", 3)},
  };
  for (const auto& c : cases) EXPECT_EQ(Cp1252ToUtf8(c.bytes), c.utf8) << c.name;
}

TEST(TextEncoding, PathsThatAreUtf8PassUnchangedOthersAreDecoded) {
  const struct {
    const char* name;
    std::string path, utf8;
  } cases[] = {
      {"ASCII", "/srv/logs/game.log", "/srv/logs/game.log"},
      {"two, three and four bytes", "/caf\xc3\xa9/\xe2\x82\xac/\xf0\x9f\x8e\xae.log", "/caf\xc3\xa9/\xe2\x82\xac/\xf0\x9f\x8e\xae.log"},
      {"a lone Latin-1 byte", "/caf\xe9.log", "/caf\xc3\xa9.log"},
      {"a sequence cut short", "/a\xe2\x82", "/a\xc3\xa2\xe2\x80\x9a"},
      {"an overlong form", "/\xc0\xaf", "/\xc3\x80\xc2\xaf"},
      {"a surrogate", "/\xed\xa0\x80", "/\xc3\xad\xc2\xa0\xe2\x82\xac"},
      {"beyond U+10FFFF", "/\xf4\x90\x80\x80", "/\xc3\xb4\xc2\x90\xe2\x82\xac\xe2\x82\xac"},
  };
  for (const auto& c : cases) EXPECT_EQ(PathToUtf8(c.path), c.utf8) << c.name;
}

}  // namespace
}  // namespace vantor::testing
