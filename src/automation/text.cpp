#include "automation/text.h"

#include <algorithm>
#include <limits>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "automation/utf8.h"

namespace mirelo {

namespace {

constexpr std::size_t kAbsent = std::string_view::npos;

std::size_t CheckedCount(std::int32_t count) {
  if (count < 0) throw Errors::InvalidProcedureCall();
  return static_cast<std::size_t>(count);
}

// Characters to pass over before position `start`, which counts from 1.
std::size_t CheckedSkip(std::int32_t start) {
  if (start < 1) throw Errors::InvalidProcedureCall();
  return static_cast<std::size_t>(start) - 1;
}

std::size_t OffsetOf(std::string_view text, std::size_t count) {
  return IsAscii(text) ? std::min(count, text.size()) : utf8::Offset(text, count);
}

std::int32_t PositionAt(std::string_view text, std::size_t offset) {
  return static_cast<std::int32_t>(utf8::Count(text.substr(0, offset))) + 1;
}

// A stretch of bytes in a text; absent when it starts at kAbsent.
struct Stretch {
  std::size_t offset = kAbsent;
  std::size_t length = 0;
};

// The first `what` (not empty) from byte `from` on.
Stretch Find(std::string_view text, std::string_view what, std::size_t from, Compare compare) {
  if (compare == Compare::Binary) return {text.find(what, from), what.size()};
  while (from < text.size()) {
    const std::size_t matched = utf8::MatchIgnoringCase(text.substr(from), what);
    if (matched != utf8::kNoMatch) return {from, matched};
    from += utf8::Decode(text, from).length;
  }
  return {};
}

Stretch FindLast(std::string_view text, std::string_view what, Compare compare) {
  if (compare == Compare::Binary) return {text.rfind(what), what.size()};
  Stretch last;
  for (Stretch next = Find(text, what, 0, compare); next.offset != kAbsent;) {
    last = next;
    next = Find(text, what, next.offset + utf8::Decode(text, next.offset).length, compare);
  }
  return last;
}

}  // namespace

std::string_view LTrim(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

std::string_view RTrim(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

std::string_view Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::int32_t Len(std::string_view text) { return static_cast<std::int32_t>(utf8::Count(text)); }

std::string_view Left(std::string_view text, std::int32_t count) {
  return text.substr(0, OffsetOf(text, CheckedCount(count)));
}

std::string_view Right(std::string_view text, std::int32_t count) {
  const std::size_t wanted = CheckedCount(count);
  const std::size_t length = utf8::Count(text);
  return wanted >= length ? text : text.substr(OffsetOf(text, length - wanted));
}

std::string_view Mid(std::string_view text, std::int32_t start) {
  return text.substr(OffsetOf(text, CheckedSkip(start)));
}

std::string_view Mid(std::string_view text, std::int32_t start, std::int32_t count) {
  const std::size_t wanted = CheckedCount(count);
  const std::string_view rest = Mid(text, start);
  return rest.substr(0, OffsetOf(rest, wanted));
}

std::int32_t InStr(std::int32_t start, std::string_view text, std::string_view what, Compare compare) {
  const std::size_t from = OffsetOf(text, CheckedSkip(start));
  if (from == text.size()) return 0;
  if (what.empty()) return start;
  const Stretch found = Find(text, what, from, compare);
  return found.offset == kAbsent ? 0 : PositionAt(text, found.offset);
}

std::int32_t InStrRev(std::string_view text, std::string_view what, Compare compare) {
  if (what.empty()) return Len(text);
  const Stretch found = FindLast(text, what, compare);
  return found.offset == kAbsent ? 0 : PositionAt(text, found.offset);
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with, Compare compare) {
  if (what.empty()) return std::string(text);
  std::string result;
  std::size_t done = 0;
  for (Stretch found; (found = Find(text, what, done, compare)).offset != kAbsent;) {
    result.append(text.substr(done, found.offset - done)).append(with);
    done = found.offset + found.length;
  }
  return result.append(text.substr(done));
}

}  // namespace mirelo
