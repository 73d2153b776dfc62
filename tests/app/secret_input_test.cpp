#include "app/secret_input.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/error_number.h"
#include "support/memory_search.h"

namespace mirelo::testing {
namespace {

// A pipe in place of the standard input.
class SecretInput : public ::testing::Test {
 protected:
  SecretInput() : before_(::dup(STDIN_FILENO)) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    ::dup2(ends[0], STDIN_FILENO);
    ::close(ends[0]);
    writing_ = ends[1];
  }
  ~SecretInput() override {
    EndInput();
    ::dup2(before_, STDIN_FILENO);
    ::close(before_);
  }

  void Type(std::string_view text) const {
    EXPECT_EQ(::write(writing_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void EndInput() {
    if (writing_ >= 0) ::close(writing_);
    writing_ = -1;
  }

 private:
  int before_;
  int writing_;
};

TEST_F(SecretInput, IsALineEach) {
  Type("Demo\nopen sesame\r\nlast");
  EndInput();
  EXPECT_EQ(app::Ask("Name").text(), "Demo");
  EXPECT_EQ(app::AskInSecret("Secret").text(), "open sesame");
  EXPECT_EQ(app::Ask("Other").text(), "last");
  EXPECT_EQ(ErrorOf([] { app::Ask("Name"); }).Description(), "Name is missing");
}

TEST_F(SecretInput, IsMissingWhenTheLineIsEmpty) {
  Type("\n");
  EXPECT_EQ(ErrorOf([] { app::Ask("Name"); }).Description(), "Name is missing");
}

TEST_F(SecretInput, HasAnEnd) {
  Type(std::string(4096, 'x') + "\n" + std::string(4097, 'x') + "\n");
  EXPECT_EQ(app::Ask("Name").text(), std::string(4096, 'x'));
  EXPECT_EQ(ErrorOf([] { app::Ask("Name"); }).Description(), "Name is too long");
}

TEST_F(SecretInput, IsInMemoryOnlyWhileItIsHeld) {
  if (!CanSearchMemory()) GTEST_SKIP() << "there is too much of it";
  const HiddenText hidden(24);
  Type(hidden.Plain().text());
  Type("\n");
  {
    const auto secret = app::AskInSecret("Secret");
    EXPECT_EQ(hidden.CountInMemory(), 1);
  }
  EXPECT_EQ(hidden.CountInMemory(), 0);
}

}  // namespace
}  // namespace mirelo::testing
