#include "streaming/symbol_index.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/cTickerDateTime.h"

namespace mirelo {
namespace {

TEST(SymbolIndex, KnowsNothingAtFirst) {
  const SymbolIndex index;
  EXPECT_EQ(index.Find("MSFT"), nullptr);
  EXPECT_EQ(index.Find(""), nullptr);
}

TEST(SymbolIndex, FindsSpellingsOfEveryLengthThatItKeeps) {
  SymbolIndex index;
  std::vector<std::unique_ptr<cTickerDateTime>> states;
  std::string spelling;
  for (std::size_t length = 0; length <= SymbolIndex::kLongest; ++length) {
    index.Keep(spelling, *states.emplace_back(std::make_unique<cTickerDateTime>()));
    spelling += static_cast<char>('A' + length);
  }
  spelling.clear();
  for (std::size_t length = 0; length <= SymbolIndex::kLongest; ++length) {
    EXPECT_EQ(index.Find(spelling), states[length].get()) << spelling;
    spelling += static_cast<char>('A' + length);
  }
}

TEST(SymbolIndex, TellsSpellingsThatDifferInOneByte) {
  const std::string spelling = "ABCDEFGHIJKLMNOP";
  for (std::size_t length = 1; length <= spelling.size(); ++length) {
    SymbolIndex index;
    cTickerDateTime state;
    index.Keep(spelling.substr(0, length), state);
    for (std::size_t at = 0; at < length; ++at) {
      std::string other = spelling.substr(0, length);
      other[at] = 'x';
      EXPECT_EQ(index.Find(other), nullptr) << other;
    }
    EXPECT_EQ(index.Find(spelling.substr(0, length - 1)), nullptr);
  }
}

TEST(SymbolIndex, KeepsNoSpellingThatIsTooLong) {
  SymbolIndex index;
  cTickerDateTime state;
  const std::string spelling(SymbolIndex::kLongest + 1, 'A');
  index.Keep(spelling, state);
  EXPECT_EQ(index.Find(spelling), nullptr);
}

TEST(SymbolIndex, FindsAllOfVeryMany) {
  SymbolIndex index;
  std::vector<cTickerDateTime> states(50'000);
  const auto spelling = [](std::size_t i) { return "S" + std::to_string(i); };
  for (std::size_t i = 0; i < states.size(); ++i) {
    if (index.IsLarge()) index.Expect(spelling(i + 1));  // it grows between two of these
    index.Keep(spelling(i), states[i]);
  }
  for (std::size_t i = 0; i < states.size(); ++i) {
    index.Expect(spelling(i + 2));
    ASSERT_EQ(index.Find(spelling(i)), &states[i]);
  }
  EXPECT_TRUE(index.IsLarge());
  EXPECT_EQ(index.Find(spelling(states.size())), nullptr);
}

TEST(SymbolIndex, MayExpectWhatItDoesNotKnow) {
  SymbolIndex index;
  std::vector<cTickerDateTime> states(10'000);
  for (std::size_t i = 0; i < states.size(); ++i) index.Keep(std::to_string(i), states[i]);
  for (const char* unknown : {"", "1", "UNKNOWN", "2", "LONGER THAN WHAT IS KEPT", "", "3"})
    index.Expect(unknown);
  EXPECT_EQ(index.Find("3"), &states[3]);
}

}  // namespace
}  // namespace mirelo
