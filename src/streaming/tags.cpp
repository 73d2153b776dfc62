#include "streaming/tags.h"

#include <algorithm>

#include "automation/ansi.h"
#include "automation/runtime_error.h"

namespace mirelo {

namespace {

constexpr char Lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool EqualWithoutCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

std::int32_t Length(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

}  // namespace

std::int32_t FindTag(std::string_view message, std::string_view tag, std::int32_t start) {
  if (start < 1) throw Errors::InvalidProcedureCall();
  // All tags begin with the same bracket, which has no case.
  for (auto at = message.find('<', static_cast<std::size_t>(start) - 1); at != std::string_view::npos;
       at = message.find('<', at + 1)) {
    if (EqualWithoutCase(message.substr(at, tag.size()), tag)) return static_cast<std::int32_t>(at) + 1;
  }
  return 0;
}

std::string_view Between(std::string_view message, std::int32_t start, std::int32_t end) {
  if (start < 1 || end < start) throw Errors::InvalidProcedureCall();
  if (start > Length(message)) return {};
  return message.substr(static_cast<std::size_t>(start) - 1, static_cast<std::size_t>(end - start));
}

std::string GetTagValue(std::string_view message, std::string_view tag) {
  const std::int32_t opening = FindTag(message, tag);
  if (opening == 0) return {};
  const std::string closing_tag = std::string("</").append(tag.substr(1));
  const std::int32_t closing = FindTag(message, closing_tag, opening);
  if (closing == 0) return {};
  return AnsiToText(Between(message, opening + Length(tag), closing));
}

}  // namespace mirelo
