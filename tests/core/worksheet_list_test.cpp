// The worksheet list: appended order, reads past the end, removal that
// moves the later rows up, and no ceiling on the number of rows.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/worksheet_list.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;

WorksheetList ListOf(const V& rows) {
  WorksheetList list;
  for (const std::string& row : rows) list.Append(row);
  return list;
}

TEST(WorksheetList, ReadingAtOrBeyondTheRowCountYieldsTheEmptyString) {
  const WorksheetList list = ListOf({"first", "second"});
  EXPECT_EQ(list.At(1), "second");
  EXPECT_EQ(list.At(2), "");
  EXPECT_EQ(list.At(40000), "");
  EXPECT_EQ(WorksheetList().At(0), "");
}

TEST(WorksheetList, RowsKeepTheirAppendedOrderAndAreNeverSorted) {
  const WorksheetList list = ListOf({"zulu", "alpha", "", "alpha", "Mike"});
  EXPECT_EQ(list.Rows(), (V{"zulu", "alpha", "", "alpha", "Mike"}));
  EXPECT_EQ(list.Count(), 5u);
}

TEST(WorksheetList, RemovingARowMovesTheRowsBehindItUpByOne) {
  WorksheetList list = ListOf({"a", "b", "c", "d"});
  list.RemoveAt(1);
  EXPECT_EQ(list.Rows(), (V{"a", "c", "d"}));
  list.RemoveAt(2);
  EXPECT_EQ(list.Rows(), (V{"a", "c"}));
  list.RemoveAt(2);  // beyond the end: nothing to remove
  EXPECT_EQ(list.Rows(), (V{"a", "c"}));
}

TEST(WorksheetList, SetOverwritesInPlaceAndIgnoresRowsBeyondTheEnd) {
  WorksheetList list = ListOf({"a", "b"});
  list.Set(0, "");
  list.Set(2, "never");
  EXPECT_EQ(list.Rows(), (V{"", "b"}));
}

TEST(WorksheetList, RetainIfGivesTheSameRowsAsRemovingTheOthersOneByOne) {
  WorksheetList list = ListOf({"", "keep 1", "", "", "keep 2", ""});
  list.RetainIf([&](std::size_t row) { return !list.At(row).empty(); });
  EXPECT_EQ(list.Rows(), (V{"keep 1", "keep 2"}));
  list.Clear();
  EXPECT_TRUE(list.Empty());
  EXPECT_EQ(list.At(0), "");
}

TEST(WorksheetList, HoldsMoreRowsThanASixteenBitCountCouldAddress) {
  WorksheetList list;
  for (int i = 0; i < 40000; ++i) list.Append(std::to_string(i));
  EXPECT_EQ(list.Count(), 40000u);
  EXPECT_EQ(list.At(32767), "32767");
  EXPECT_EQ(list.At(39999), "39999");
  list.RemoveAt(32768);
  EXPECT_EQ(list.At(32768), "32769");
  EXPECT_EQ(list.Count(), 39999u);
}

}  // namespace
}  // namespace vantor::testing
