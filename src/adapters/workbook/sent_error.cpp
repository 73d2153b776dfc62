#include "adapters/workbook/sent_error.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "automation/runtime_error.h"
#include "host/documents.h"

namespace mirelo::workbook {

namespace {

// Stands behind the number, the kind and the source of an error; its description is the rest.
constexpr char kBetween = '\n';

// The kind of an error: one of these, or a failure of the file system by its cause.
constexpr int kPlain = -1;
constexpr int kChangedMeanwhile = -2;

int KindOf(const std::exception& error) {
  if (dynamic_cast<const host::ChangedMeanwhile*>(&error) != nullptr) return kChangedMeanwhile;
  const auto* failure = dynamic_cast<const host::FileFailure*>(&error);
  return failure != nullptr ? static_cast<int>(failure->Why()) : kPlain;
}

std::string_view TakePiece(std::string_view& text) {
  const std::size_t end = text.find(kBetween);
  if (end == std::string_view::npos) return {};
  const std::string_view piece = text.substr(0, end);
  text.remove_prefix(end + 1);
  return piece;
}

bool TakeNumber(std::string_view& text, int& number) {
  const std::string_view piece = TakePiece(text);
  const char* end = piece.data() + piece.size();
  return !piece.empty() && std::from_chars(piece.data(), end, number).ptr == end;
}

}  // namespace

std::string CurrentErrorAsText() {
  int kind = kPlain;
  try {
    throw;
  } catch (const std::exception& error) {
    kind = KindOf(error);
  }
  const RuntimeError error = CurrentError();
  return std::to_string(error.Number()) + kBetween + std::to_string(kind) + kBetween + error.Source() +
         kBetween + error.Description();
}

std::exception_ptr ErrorOfText(std::string_view text) {
  int number = 0;
  int kind = 0;
  if (!TakeNumber(text, number) || !TakeNumber(text, kind)) return nullptr;
  const std::string source(TakePiece(text));
  const RuntimeError error(number, std::string(text), source);
  if (kind == kPlain) return std::make_exception_ptr(error);
  if (kind == kChangedMeanwhile) return std::make_exception_ptr(host::ChangedMeanwhile(error));
  return std::make_exception_ptr(host::FileFailure(error, static_cast<host::FileFailure::Cause>(kind)));
}

}  // namespace mirelo::workbook
