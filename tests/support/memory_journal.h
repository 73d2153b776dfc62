#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "host/journal.h"

namespace mirelo::testing {

// What journals in memory have kept, and how the next ones fail. It outlives them.
struct KeptRows {
  std::vector<host::DataRow> rows;
  int opened = 0;
  int appended = 0;  // how often, with whatever number of rows
  int settled = 0;
  std::string mended;
  std::size_t room = SIZE_MAX;  // for rows; beyond it appending fails with error 61
  std::optional<RuntimeError> opening_fails;
  std::optional<RuntimeError> appending_fails;

  // A value of a row, where nothing is "-".
  std::string Text(std::size_t row, std::size_t column) const {
    const host::DataValue& value = rows.at(row).at(column);
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<double>(&value)) return std::to_string(*number);
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
    return "-";
  }
};

class MemoryJournal final : public host::Journal {
 public:
  explicit MemoryJournal(KeptRows& kept) : kept_(kept) {
    ++kept_.opened;
    if (kept_.opening_fails) throw RuntimeError(*kept_.opening_fails);
  }

  void Append(std::span<const host::DataRow> rows) override {
    if (kept_.appending_fails) throw RuntimeError(*kept_.appending_fails);
    if (rows.size() > kept_.room - kept_.rows.size()) throw RuntimeError(61, "no room");
    ++kept_.appended;
    kept_.rows.insert(kept_.rows.end(), rows.begin(), rows.end());
  }
  void Settle() noexcept override { ++kept_.settled; }
  std::string Mended() const override { return kept_.mended; }

 private:
  KeptRows& kept_;
};

}  // namespace mirelo::testing
