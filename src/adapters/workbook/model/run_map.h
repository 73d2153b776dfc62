#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace mirelo::workbook {

// A value for each number from 1 to a limit, kept as runs of equal neighbours: a million rows of one format
// are one run.
template <class T>
class RunMap {
 public:
  struct Run {
    std::int32_t first;
    T value;
    friend bool operator==(const Run&, const Run&) = default;
  };

  RunMap(std::int32_t limit, T value) : limit_(limit) { runs_.push_back({1, std::move(value)}); }

  // The values of `base`, with those of the patches in place of them where there are patches: in ascending
  // order, without overlap. The time is linear in both.
  struct Patch {
    std::int32_t first;
    std::int32_t last;
    T value;
  };
  static RunMap Overlay(const RunMap& base, const std::vector<Patch>& patches) {
    RunMap result(base.limit_);
    std::int32_t next = 1;
    const auto copy_base_to = [&](std::int32_t last) {
      if (next > last) return;
      base.ForEach(next, last,
                   [&](std::int32_t first, std::int32_t, const T& value) { result.Append(first, value); });
    };
    for (const Patch& patch : patches) {
      copy_base_to(patch.first - 1);
      result.Append(patch.first, patch.value);
      next = patch.last + 1;
    }
    copy_base_to(base.limit_);
    return result;
  }

  const T& At(std::int32_t number) const { return runs_[IndexOf(number)].value; }

  // Calls change(T&) for each run from `first` to `last`; runs are split at these two and joined again where
  // neighbours have become equal.
  template <class Change>
  void Apply(std::int32_t first, std::int32_t last, Change&& change) {
    const std::size_t begin = SplitAt(first);
    const std::size_t end = last == limit_ ? runs_.size() : SplitAt(last + 1);
    for (std::size_t i = begin; i < end; ++i) change(runs_[i].value);
    Join(begin == 0 ? 0 : begin - 1, std::min(end + 1, runs_.size()));
  }

  void Set(std::int32_t first, std::int32_t last, const T& value) {
    Apply(first, last, [&](T& old) { old = value; });
  }

  // Takes these numbers out: the values behind them move up, and those that come in at the end are copies of
  // the last one.
  void Remove(std::int32_t first, std::int32_t last) {
    RunMap result(limit_);
    const std::int32_t count = last - first + 1;
    if (first > 1) {
      ForEach(1, first - 1,
              [&](std::int32_t from, std::int32_t, const T& value) { result.Append(from, value); });
    }
    if (last < limit_) {
      ForEach(last + 1, limit_,
              [&](std::int32_t from, std::int32_t, const T& value) { result.Append(from - count, value); });
    }
    result.Append(limit_ - count + 1, runs_.back().value);
    *this = std::move(result);
  }

  // Calls visit(first, last, value) for each run, cut to `first` and `last`.
  template <class Visit>
  void ForEach(std::int32_t first, std::int32_t last, Visit&& visit) const {
    for (std::size_t i = IndexOf(first); i < runs_.size() && runs_[i].first <= last; ++i) {
      visit(std::max(first, runs_[i].first), std::min(last, LastOf(i)), runs_[i].value);
    }
  }

  std::size_t RunCount() const { return runs_.size(); }

  friend bool operator==(const RunMap&, const RunMap&) = default;

 private:
  explicit RunMap(std::int32_t limit) : limit_(limit) {}

  void Append(std::int32_t first, const T& value) {
    if (runs_.empty() || !(runs_.back().value == value)) runs_.push_back({first, value});
  }

  std::int32_t LastOf(std::size_t index) const {
    return index + 1 == runs_.size() ? limit_ : runs_[index + 1].first - 1;
  }

  std::size_t IndexOf(std::int32_t number) const {
    const auto behind =
        std::upper_bound(runs_.begin(), runs_.end(), number,
                         [](std::int32_t wanted, const Run& run) { return wanted < run.first; });
    return static_cast<std::size_t>(behind - runs_.begin()) - 1;
  }

  // Makes a run begin at `number`; its index.
  std::size_t SplitAt(std::int32_t number) {
    const std::size_t index = IndexOf(number);
    if (runs_[index].first == number) return index;
    runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(index) + 1, Run{number, runs_[index].value});
    return index + 1;
  }

  // Joins equal neighbours among the runs of these indexes.
  void Join(std::size_t begin, std::size_t end) {
    const auto at = [&](std::size_t i) { return runs_.begin() + static_cast<std::ptrdiff_t>(i); };
    const auto kept =
        std::unique(at(begin), at(end), [](const Run& a, const Run& b) { return a.value == b.value; });
    runs_.erase(kept, at(end));
  }

  std::int32_t limit_;
  std::vector<Run> runs_;  // never empty, the first begins at 1
};

}  // namespace mirelo::workbook
