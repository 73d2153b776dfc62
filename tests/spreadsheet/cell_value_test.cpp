#include "spreadsheet/cell_value.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace mirelo::spreadsheet {
namespace {

// One of each kind, and of those with contents two.
std::vector<CellValue> Values() {
  std::vector<CellValue> values;
  values.emplace_back();
  values.push_back(CellValue::NotCalculated());
  values.emplace_back(0.0);
  values.emplace_back(1.0);
  values.emplace_back(false);
  values.emplace_back(true);
  values.emplace_back(CellError::Null);
  values.emplace_back(CellError::NotAvailable);
  values.push_back(CellValue::OfText("x"));
  values.push_back(CellValue::OfText(std::string(100, 'x')));
  return values;
}

TEST(CellValue, IsEqualToOneOfItsKindAndContentAlone) {
  const auto values = Values();
  const auto others = Values();
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < others.size(); ++j)
      EXPECT_EQ(values[i] == others[j], i == j) << i << " " << j;
  }
}

TEST(CellValue, GivesWhatItHoldsAndNothingElse) {
  const auto values = Values();
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(values[i].IsEmpty(), i == 0) << i;
    EXPECT_EQ(values[i].IsNotCalculated(), i == 1) << i;
    EXPECT_EQ(values[i].IfNumber() != nullptr, i == 2 || i == 3) << i;
    EXPECT_EQ(values[i].IfBoolean() != nullptr, i == 4 || i == 5) << i;
    EXPECT_EQ(values[i].IfError() != nullptr, i == 6 || i == 7) << i;
    EXPECT_EQ(values[i].IfText() != nullptr, i >= 8) << i;
  }
  EXPECT_EQ(*values[3].IfNumber(), 1);
  EXPECT_EQ(*values[5].IfBoolean(), true);
  EXPECT_EQ(*values[7].IfError(), CellError::NotAvailable);
  EXPECT_EQ(*values[8].IfText(), "x");
}

TEST(CellValue, IsEmptyForAnEmptyText) { EXPECT_TRUE(CellValue::OfText("").IsEmpty()); }

TEST(CellValue, IsTheSameWhenCopiedOrMoved) {
  const auto wanted = Values();
  for (std::size_t from = 0; from < wanted.size(); ++from) {
    const CellValue copy = wanted[from].Copy();
    EXPECT_EQ(copy, wanted[from]) << from;
    CellValue source = wanted[from].Copy();
    const CellValue moved(std::move(source));
    EXPECT_EQ(moved, wanted[from]) << from;
    for (std::size_t to = 0; to < wanted.size(); ++to) {
      CellValue target = wanted[to].Copy();
      target = wanted[from].Copy();
      EXPECT_EQ(target, wanted[from]) << from << " over " << to;
    }
  }
}

}  // namespace
}  // namespace mirelo::spreadsheet
