#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "automation/text.h"

namespace mirelo {

namespace {

using Pieces = std::vector<std::string_view>;

// As many bytes as a mask has bits.
constexpr std::size_t kBlock = 64;

// Which bytes of a block are the sought one: bit i stands for byte i.
std::uint64_t Matches(const char* block, char sought) {
  std::uint64_t mask = 0;
#ifdef __SSE2__
  const __m128i pattern = _mm_set1_epi8(sought);
  for (std::size_t i = 0; i < kBlock; i += sizeof(__m128i)) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + i));
    const auto equal = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, pattern)));
    mask |= std::uint64_t{equal} << i;
  }
#else
  for (std::size_t i = 0; i < kBlock; ++i) mask |= std::uint64_t{block[i] == sought} << i;
#endif
  return mask;
}

// Calls `visit` with the place of each `sought` in the text, from the left. The pieces of lists are short, so
// that a search for each would cost more than to look at all bytes.
template <class Visit>
void ForEachByte(std::string_view text, char sought, Visit visit) {
  const auto visit_all = [&](const char* block, std::uint64_t matches) {
    for (; matches != 0; matches &= matches - 1) visit(block + std::countr_zero(matches));
  };
  const char* at = text.data();
  const char* const end = at + text.size();
  for (; end - at >= static_cast<std::ptrdiff_t>(kBlock); at += kBlock) visit_all(at, Matches(at, sought));

  const auto rest = static_cast<std::size_t>(end - at);
  if (rest == 0) return;
  if (text.size() >= kBlock) {  // looks again at some that it has seen
    visit_all(at, Matches(end - kBlock, sought) >> (kBlock - rest));
  } else {
    std::array<char, kBlock> padded{};
    std::memcpy(padded.data(), at, rest);
    visit_all(at, Matches(padded.data(), sought) & ((std::uint64_t{1} << rest) - 1));
  }
}

// Room for some more pieces behind the ones there are. Returns the first of the new ones.
std::string_view* Grow(Pieces& pieces) {
  const std::size_t used = pieces.size();
  pieces.resize(2 * used + 8);
  return pieces.data() + used;
}

// Writes the pieces of a text over those of the text before, since lists of one kind have as many pieces.
// What is too many goes at the end.
class Cutter {
 public:
  Cutter(std::string_view text, Pieces& pieces)
      : begin_(text.data()), pieces_(pieces), next_(pieces.data()), limit_(next_ + pieces.size()) {}

  // Where the piece begins that has no end yet.
  const char* Begin() const { return begin_; }

  // Ends a piece at `end`; the next one begins behind a delimiter of so many bytes.
  void Cut(const char* end, std::size_t delimiter) {
    if (next_ == limit_) {
      next_ = Grow(pieces_);
      limit_ = pieces_.data() + pieces_.size();
    }
    *next_++ = {begin_, static_cast<std::size_t>(end - begin_)};
    begin_ = end + delimiter;
  }

  // Ends the last piece.
  void Finish(const char* end) {
    Cut(end, 0);
    pieces_.resize(static_cast<std::size_t>(next_ - pieces_.data()));
  }

 private:
  const char* begin_;
  Pieces& pieces_;
  std::string_view* next_;
  std::string_view* limit_;
};

}  // namespace

void Split(std::string_view text, std::string_view delimiter, std::vector<std::string_view>& pieces) {
  if (text.empty()) return pieces.clear();
  if (delimiter.empty()) return pieces.assign(1, text);
  Cutter cutter(text, pieces);
  const char* const end = text.data() + text.size();
  if (delimiter.size() == 1) {
    ForEachByte(text, delimiter.front(), [&](const char* at) { cutter.Cut(at, 1); });
  } else {
    ForEachByte(text, delimiter.front(), [&](const char* at) {
      const bool whole = std::string_view(at, static_cast<std::size_t>(end - at)).starts_with(delimiter);
      if (whole && at >= cutter.Begin()) cutter.Cut(at, delimiter.size());
    });
  }
  cutter.Finish(end);
}

std::vector<std::string> Split(std::string_view text, std::string_view delimiter) {
  std::vector<std::string_view> pieces;
  Split(text, delimiter, pieces);
  return {pieces.begin(), pieces.end()};
}

std::string Join(const std::vector<std::string>& pieces, std::string_view delimiter) {
  std::string text;
  for (const std::string& piece : pieces) {
    if (&piece != &pieces.front()) text.append(delimiter);
    text.append(piece);
  }
  return text;
}

}  // namespace mirelo
