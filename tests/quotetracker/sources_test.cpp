#include "quotetracker/sources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace mirelo::quotetracker {
namespace {

TEST(Level1Sources, AreEightyOrMoreWithAFileEach) {
  const auto sources = Level1Sources();
  EXPECT_GE(sources.size(), 80U);
  std::set<std::string_view> files;
  for (const Source& source : sources) {
    SCOPED_TRACE(source.file);
    EXPECT_TRUE(source.file.ends_with(".SDF"));
    EXPECT_GT(source.file.size(), 4U);
    EXPECT_TRUE(files.insert(source.file).second) << "twice";
  }
  EXPECT_TRUE(files.contains("SWISS.SDF"));
}

TEST(Level1Sources, HaveNamesThatTagsCanCarry) {
  for (const Source& source : Level1Sources()) {
    SCOPED_TRACE(source.file);
    EXPECT_FALSE(source.name.empty());
    EXPECT_EQ(source.name.find_first_of("<>\r\n\xFF"), std::string_view::npos);
  }
}

TEST(Level1Sources, HoldAllThatMakesAListHard) {
  const auto sources = Level1Sources();
  std::set<std::string_view> names;
  for (const Source& source : sources) names.insert(source.name);
  EXPECT_LT(names.size(), sources.size()) << "a name twice";
  EXPECT_TRUE(std::ranges::any_of(names, [](auto name) { return name.starts_with(' '); }));
  EXPECT_TRUE(std::ranges::any_of(names, [](auto name) {
    return std::ranges::count(name, '(') != std::ranges::count(name, ')');
  })) << "an unbalanced bracket";
  EXPECT_TRUE(std::ranges::any_of(names, [](auto name) {
    return std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) > 127; });
  })) << "a character beyond ASCII";
}

}  // namespace
}  // namespace mirelo::quotetracker
