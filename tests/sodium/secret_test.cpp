#include "host/secret.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace mirelo::host {
namespace {

// The sizes of memory that was given back, oldest first.
std::vector<std::size_t>& Released() {
  static std::vector<std::size_t> sizes;
  return sizes;
}

Secret Noted(std::string& memory) {
  Released().clear();
  return Secret(memory.data(), memory.size(), [](char*, std::size_t size) { Released().push_back(size); });
}

TEST(Secret, GivesItsMemoryBackOnce) {
  std::string memory = "four";
  {
    Secret first = Noted(memory);
    Secret second = std::move(first);
    EXPECT_EQ(second.text(), "four");
    EXPECT_EQ(first.text(), "");
    Secret third;
    third = std::move(second);
    EXPECT_EQ(third.text(), "four");
    EXPECT_TRUE(Released().empty());
  }
  EXPECT_EQ(Released(), std::vector<std::size_t>{4});
}

TEST(Secret, GivesAllItsMemoryBackWhenItIsShortened) {
  std::string memory = "four";
  {
    Secret secret = Noted(memory);
    secret.Shorten(2);
    EXPECT_EQ(secret.text(), "fo");
  }
  EXPECT_EQ(Released(), std::vector<std::size_t>{4});
}

TEST(Secret, GivesBackWhatItHadWhenItTakesAnother) {
  std::string memory = "four";
  Secret secret = Noted(memory);
  secret = Secret::Copy("other");
  EXPECT_EQ(Released(), std::vector<std::size_t>{4});
  EXPECT_EQ(secret.text(), "other");
}

}  // namespace
}  // namespace mirelo::host
