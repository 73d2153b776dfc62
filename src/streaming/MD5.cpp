#include "streaming/MD5.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "automation/ansi.h"
#include "automation/hex.h"
#include "automation/wipe.h"

namespace mirelo {

namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kLengthField = 8;

using State = std::array<std::uint32_t, 4>;

// RFC 1321, section 3.4: element i is the integer part of 2^32 times |sin(i + 1)|, i in radians.
constexpr std::array<std::uint32_t, 64> kSines{
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};

// A round is sixteen steps. Its words are taken in the order first, first + stride, ..., modulo 16, and its
// steps rotate by four amounts in turn.
struct Round {
  std::uint32_t (*mix)(std::uint32_t x, std::uint32_t y, std::uint32_t z);
  std::size_t first;
  std::size_t stride;
  std::array<int, 4> rotations;
};

constexpr std::array<Round, 4> kRounds{{
    {[](std::uint32_t x, std::uint32_t y, std::uint32_t z) { return (x & y) | (~x & z); },
     0,
     1,
     {7, 12, 17, 22}},
    {[](std::uint32_t x, std::uint32_t y, std::uint32_t z) { return (x & z) | (y & ~z); },
     1,
     5,
     {5, 9, 14, 20}},
    {[](std::uint32_t x, std::uint32_t y, std::uint32_t z) { return x ^ y ^ z; }, 5, 3, {4, 11, 16, 23}},
    {[](std::uint32_t x, std::uint32_t y, std::uint32_t z) { return y ^ (x | ~z); }, 0, 7, {6, 10, 15, 21}},
}};

std::uint32_t LittleEndianWord(const char* bytes) {
  std::uint32_t word = 0;
  for (std::size_t i = 4; i-- > 0;) word = word << 8 | static_cast<std::uint8_t>(bytes[i]);
  return word;
}

void AddBlock(State& state, const char* block) {
  auto [a, b, c, d] = state;
  for (std::size_t step = 0; step < kSines.size(); ++step) {
    const Round& round = kRounds[step / 16];
    const std::size_t word = (round.first + round.stride * step) % 16;
    const std::uint32_t sum = a + round.mix(b, c, d) + LittleEndianWord(block + 4 * word) + kSines[step];
    a = d;
    d = c;
    c = b;
    b += std::rotl(sum, round.rotations[step % 4]);
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

// What is left behind the last whole block, a 1 bit, zeros, and the length in bits: one block or two.
class PaddedTail {
 public:
  explicit PaddedTail(std::string_view bytes) {
    const std::string_view rest = bytes.substr(bytes.size() / kBlock * kBlock);
    std::copy(rest.begin(), rest.end(), tail_.begin());
    tail_[rest.size()] = '\x80';
    size_ = rest.size() < kBlock - kLengthField ? kBlock : 2 * kBlock;
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (std::size_t i = 0; i < kLengthField; ++i) {
      tail_[size_ - kLengthField + i] = static_cast<char>(bits >> (8 * i) & 0xFF);
    }
  }
  ~PaddedTail() { Wipe(tail_.data(), tail_.size()); }
  PaddedTail(const PaddedTail&) = delete;
  PaddedTail& operator=(const PaddedTail&) = delete;

  std::string_view bytes() const { return {tail_.data(), size_}; }

 private:
  std::array<char, 2 * kBlock> tail_{};
  std::size_t size_;
};

void AddBlocks(State& state, std::string_view bytes) {
  for (; bytes.size() >= kBlock; bytes.remove_prefix(kBlock)) AddBlock(state, bytes.data());
}

}  // namespace

MD5::Digest MD5::Of(std::string_view bytes) {
  State state{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
  AddBlocks(state, bytes);
  AddBlocks(state, PaddedTail(bytes).bytes());

  Digest digest;
  for (std::size_t i = 0; i < digest.size(); ++i) {
    digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (8 * (i % 4)) & 0xFF);
  }
  return digest;
}

std::string MD5::DigestString(std::string_view text) const {
  std::string bytes = TextToAnsi(text);
  const WipedAtEnd wiped(bytes);
  std::string hex;
  for (const std::uint8_t byte : Of(bytes)) AppendHex(hex, byte);
  return hex;
}

}  // namespace mirelo
