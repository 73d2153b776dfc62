// Quotes passing through a keyed collection, against what that comes down to without keys in any case: a map
// from key to number beside a queue, both of the standard library. The waiting line is short or a million
// long.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "automation/collection.h"

namespace mirelo {
namespace {

using Item = std::shared_ptr<int>;

std::string Key(std::int64_t number) {
  std::string key = "a";
  return key += std::to_string(number);
}

// One item more at the end, one found by its key, one less at the front.
void CollectionPassThrough(benchmark::State& state) {
  const Item item = std::make_shared<int>(1);
  Collection<Item> collection;
  std::int64_t next = 0;
  while (next < state.range(0)) collection.Add(item, Key(next++));
  for (auto _ : state) {
    collection.Add(item, Key(next));
    benchmark::DoNotOptimize(collection.Find(Key(next - state.range(0) / 2)));
    collection.Remove(1);
    ++next;
  }
}
BENCHMARK(CollectionPassThrough)->Name("collection/pass")->Arg(10)->Arg(1'000'000);

void BarePassThrough(benchmark::State& state) {
  const Item item = std::make_shared<int>(1);
  std::deque<std::pair<std::string, Item>> queue;
  std::unordered_map<std::string, std::int64_t> numbers;
  std::int64_t next = 0;
  std::int64_t first = 0;
  const auto add = [&] {
    queue.emplace_back(Key(next), item);
    numbers.emplace(Key(next), next);
    ++next;
  };
  while (next < state.range(0)) add();
  for (auto _ : state) {
    add();
    const auto found = numbers.find(Key(next - 1 - state.range(0) / 2));
    benchmark::DoNotOptimize(queue[static_cast<std::size_t>(found->second - first)]);
    numbers.erase(queue.front().first);
    queue.pop_front();
    ++first;
  }
}
BENCHMARK(BarePassThrough)->Name("collection/bare")->Arg(10)->Arg(1'000'000);

}  // namespace
}  // namespace mirelo
