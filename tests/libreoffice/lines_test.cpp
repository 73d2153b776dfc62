// What comes on the socket between a program and its office, cut into lines.

#include "libreoffice/errand/lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace mirelo::libreoffice {
namespace {

using ::testing::Optional;

class ReceivedLines : public ::testing::Test {
 protected:
  static std::array<int, 2> Pair() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()) != 0)
      throw std::runtime_error("no pair of sockets");
    return ends;
  }
  ~ReceivedLines() override {
    HangUp();
    ::close(ends_[0]);
  }

  // As much of it as the socket has room for, which is taken off its front.
  void SendSome(std::string_view& bytes) {
    const auto count = ::send(ends_[1], bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  // All of it, which is received meanwhile.
  void Send(std::string_view bytes) {
    while (!bytes.empty() && !lines.HasEnded()) {
      SendSome(bytes);
      lines.Receive();
    }
  }
  void HangUp() {
    if (ends_[1] >= 0) ::close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  std::array<int, 2> ends_ = Pair();

 protected:
  Lines lines{ends_[0]};
};

TEST_F(ReceivedLines, AreGivenWhenTheirEndHasCome) {
  Send("one\ntw");
  EXPECT_THAT(lines.Next(), Optional(std::string("one")));
  EXPECT_FALSE(lines.Next());
  Send("o\n\n");
  EXPECT_THAT(lines.Next(), Optional(std::string("two")));
  EXPECT_THAT(lines.Next(), Optional(std::string()));
  EXPECT_FALSE(lines.Next());
  EXPECT_FALSE(lines.HasEnded());
}

TEST_F(ReceivedLines, AreGivenOfOneWhoHasGone) {
  Send("end\nhalf");
  HangUp();
  lines.Receive();
  EXPECT_TRUE(lines.HasEnded());
  EXPECT_THAT(lines.Next(), Optional(std::string("end")));
  EXPECT_FALSE(lines.Next());
}

TEST_F(ReceivedLines, AreOneMebibyteAtMost) {
  const std::string longest(Lines::kLongestLine, 'x');
  Send(longest + "\nnext\n");
  lines.Receive();
  EXPECT_FALSE(lines.HasEnded());
  EXPECT_TRUE(lines.Next() == longest);
  lines.Receive();
  EXPECT_THAT(lines.Next(), Optional(std::string("next")));

  Send(longest + "x\n");
  EXPECT_TRUE(lines.HasEnded());
  EXPECT_FALSE(lines.Next());
}

TEST_F(ReceivedLines, OfOneWhoNeverEndsThemAreForgotten) {
  Send(std::string(2 * Lines::kLongestLine, 'x'));
  EXPECT_TRUE(lines.HasEnded());
  EXPECT_FALSE(lines.Next());
}

// The program tells much while the office is busy.
TEST_F(ReceivedLines, MayBeMoreThanAMebibyteTogether) {
  std::string all;
  std::size_t sent = 0;
  for (; all.size() <= 3 * Lines::kLongestLine; ++sent)
    all += std::to_string(sent) + std::string(1000, '.') + '\n';
  std::string_view rest = all;
  std::size_t taken = 0;
  while (taken < sent && !lines.HasEnded()) {
    for (int i = 0; i < 20; ++i) {  // nobody takes lines meanwhile
      SendSome(rest);
      lines.Receive();
    }
    while (const auto line = lines.Next()) {
      ASSERT_EQ(*line, std::to_string(taken) + std::string(1000, '.'));
      ++taken;
    }
  }
  EXPECT_EQ(taken, sent);
  EXPECT_FALSE(lines.HasEnded());
}

}  // namespace
}  // namespace mirelo::libreoffice
