// Of the suites a part runs over the other process, chosen by their names: one that is renamed must not go
// unseen.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::testing {
namespace {

std::vector<std::string> Chosen() {
  std::vector<std::string> patterns;
  const std::string filter = GTEST_FLAG_GET(filter);
  for (std::size_t at = 0, end = 0; at <= filter.size(); at = end + 1) {
    end = std::min(filter.find(':', at), filter.size());
    patterns.push_back(filter.substr(at, end - at));
  }
  return patterns;
}

// A pattern begins or ends with an asterisk, or is a name.
bool Fits(std::string_view name, std::string_view pattern) {
  if (pattern.starts_with('*')) return name.ends_with(pattern.substr(1));
  if (!pattern.ends_with('*')) return name == pattern;
  return name.starts_with(pattern.substr(0, pattern.size() - 1));
}

bool FitsAny(std::string_view pattern) {
  const ::testing::UnitTest& all = *::testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i) {
    const ::testing::TestSuite& suite = *all.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      if (Fits(std::string(suite.name()) + "." + suite.GetTestInfo(j)->name(), pattern)) return true;
    }
  }
  return false;
}

TEST(ChosenSuites, AreThere) {
  for (const std::string& pattern : Chosen()) {
    EXPECT_TRUE(pattern.empty() || FitsAny(pattern)) << "no test is called " << pattern;
  }
}

}  // namespace
}  // namespace mirelo::testing
