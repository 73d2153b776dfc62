#include "wire/subscribed_symbols.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "support/memory_shortage.h"

namespace mirelo::wire {
namespace {

std::string Other(std::size_t number) { return "N" + std::to_string(number); }

TEST(SubscribedSymbols, AdmitsThoseSubscribedWhateverTheirCaseAndABoundOfOthers) {
  SubscribedSymbols symbols;
  symbols.Subscribe("MSFT");
  for (std::size_t i = 0; i < SubscribedSymbols::kMostOthers; ++i) EXPECT_TRUE(symbols.Admits(Other(i)));
  EXPECT_FALSE(symbols.Admits("one more"));
  EXPECT_TRUE(symbols.Admits("msft"));
  EXPECT_TRUE(symbols.Admits(Other(0)));
}

TEST(SubscribedSymbols, ForgetsNoneWhenThereIsNoMemoryForMore) {
  SubscribedSymbols symbols;
  for (std::size_t i = 0; i < SubscribedSymbols::kMostOthers; ++i) symbols.Admits(Other(i));
  {
    const testing::MemoryShortage shortage(SubscribedSymbols::kMostOthers * sizeof(SymbolKey));
    EXPECT_THROW(symbols.Subscribe("MSFT"), std::bad_alloc);
  }
  EXPECT_TRUE(symbols.Admits(Other(0)));
}

}  // namespace
}  // namespace mirelo::wire
