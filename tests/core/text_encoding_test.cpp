// Log bytes are Windows-1252; the exports are UTF-8. Paths are UTF-8 by
// convention and pass unchanged unless they are not UTF-8 at all.

#include <gtest/gtest.h>

#include <string>

#include "report/windows1252.h"

namespace vantor::testing {
namespace {

TEST(TextEncoding, LogBytesAreDecodedAsWindows1252AndPathsOnlyWhenNotUtf8) {
  using Decode = std::string (*)(std::string_view);
  const struct {
    const char* name;
    Decode decode;
    std::string bytes, utf8;
  } cases[] = {
      {"log: ASCII stays", Cp1252ToUtf8, "Alpha, \"B\"\t1", "Alpha, \"B\"\t1"},
      {"log: Latin-1 letters", Cp1252ToUtf8, "Ren\xe9 \xff", "Ren\xc3\xa9 \xc3\xbf"},
      {"log: the euro sign and quotes of 0x80..0x9F", Cp1252ToUtf8, "\x80\x93\x9f", "\xe2\x82\xac\xe2\x80\x9c\xc5\xb8"},
      {"log: undefined bytes become C1 controls", Cp1252ToUtf8, "\x81\x8d\x8f\x90\x9d",
       "\xc2\x81\xc2\x8d\xc2\x8f\xc2\x90\xc2\x9d"},
      {"log: NUL stays", Cp1252ToUtf8, std::string("a\0b", 3), std::string("a\0b", 3)},
      {"path: ASCII", PathToUtf8, "/srv/logs/game.log", "/srv/logs/game.log"},
      {"path: two, three and four bytes", PathToUtf8, "/caf\xc3\xa9/\xe2\x82\xac/\xf0\x9f\x8e\xae.log",
       "/caf\xc3\xa9/\xe2\x82\xac/\xf0\x9f\x8e\xae.log"},
      {"path: a lone Latin-1 byte", PathToUtf8, "/caf\xe9.log", "/caf\xc3\xa9.log"},
      {"path: a sequence cut short", PathToUtf8, "/a\xe2\x82", "/a\xc3\xa2\xe2\x80\x9a"},
      {"path: an overlong form", PathToUtf8, "/\xc0\xaf", "/\xc3\x80\xc2\xaf"},
      {"path: a surrogate", PathToUtf8, "/\xed\xa0\x80", "/\xc3\xad\xc2\xa0\xe2\x82\xac"},
      {"path: beyond U+10FFFF", PathToUtf8, "/\xf4\x90\x80\x80", "/\xc3\xb4\xc2\x90\xe2\x82\xac\xe2\x82\xac"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.decode(c.bytes), c.utf8) << c.name;
}

}  // namespace
}  // namespace vantor::testing
