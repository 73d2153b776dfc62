#include "streaming/MD5.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "quotetracker/md5.h"

namespace mirelo {
namespace {

// By the machine's own library.
std::string MachineDigest(std::string_view bytes) {
  const quotetracker::Md5Digest digest = quotetracker::Md5Of(bytes);
  return {digest.begin(), digest.end()};
}

std::string Digest(std::string_view bytes) {
  const MD5::Digest digest = MD5::Of(bytes);
  return {digest.begin(), digest.end()};
}

// RFC 1321, A.5.
TEST(MD5, GivesTheDigestsOfItsStandard) {
  constexpr std::string_view kCases[][2] = {
      {"", "D41D8CD98F00B204E9800998ECF8427E"},
      {"a", "0CC175B9C0F1B6A831C399E269772661"},
      {"abc", "900150983CD24FB0D6963F7D28E17F72"},
      {"message digest", "F96B697D7CB7938D525A2F31AAF161D0"},
      {"abcdefghijklmnopqrstuvwxyz", "C3FCD3D76192E4007DFB496CCA67E13B"},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", "D174AB98D277D9F5A5611C2C9F419D9F"},
      {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       "57EDF4A22BE3C955AC49DA2E2107B67A"},
  };
  for (const auto& [text, digest] : kCases) EXPECT_EQ(MD5().DigestString(text), digest) << text;
}

TEST(MD5, AgreesWithAnotherImplementationAtEveryLengthAroundABlock) {
  std::mt19937 random(1321);
  std::string bytes;
  for (std::size_t length = 0; length <= 300; ++length) {
    ASSERT_EQ(Digest(bytes), MachineDigest(bytes)) << "at length " << length;
    bytes += static_cast<char>(random());
  }
}

TEST(MD5, AgreesWithAnotherImplementationAtRandomLengths) {
  std::mt19937 random(20110120);
  std::uniform_int_distribution<std::size_t> lengths(0, 100'000);
  for (int round = 0; round < 100; ++round) {
    std::string bytes(lengths(random), '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    ASSERT_EQ(Digest(bytes), MachineDigest(bytes)) << "at length " << bytes.size();
  }
}

TEST(MD5, DigestsOneByteForEachCharacterOfTheCodePage) {
  EXPECT_EQ(MD5().DigestString("\u00FF\u20AC"), [] {
    std::string hex;
    for (const char byte : MachineDigest("\xFF\x80")) {
      char digits[3];
      std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
      hex += digits;
    }
    return hex;
  }());
}

}  // namespace
}  // namespace mirelo
