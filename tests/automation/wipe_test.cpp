#include "automation/wipe.h"

#include <gtest/gtest.h>

#include <string>

namespace mirelo {
namespace {

TEST(Wiping, LeavesNothingButZeros) {
  char bytes[] = "secret!";
  Wipe(bytes, 6);
  EXPECT_EQ(std::string(bytes, 7), std::string(6, '\0') + "!");
}

TEST(Wiping, TakesAllTheRoomOfAString) {
  std::string text = "a long secret that has memory of its own";
  const char* memory = text.data();
  const std::size_t room = text.capacity();
  {
    const WipedAtEnd wiped(text);
    text.resize(5);
  }
  EXPECT_EQ(text.data(), memory) << "nothing is moved, or it would be left where it was";
  EXPECT_EQ(text, std::string(room, '\0'));
}

}  // namespace
}  // namespace mirelo
