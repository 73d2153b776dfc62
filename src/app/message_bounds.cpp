#include "app/message_bounds.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>

#include "streaming/level1_fields.h"
#include "streaming/tags.h"

namespace mirelo::app {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kLetters = 2;       // that name a kind
constexpr std::size_t kHeadOfRecord = 6;  // kind, length, and the first field's id

// Two letters of a kind, read as a length, are no less.
constexpr std::int16_t kLeastOfLetters = 0x3100;

struct KindLetters {
  std::string_view letters;
  MessageKind kind;
};
constexpr std::array<KindLetters, 7> kKinds{{{"S1", MessageKind::kRecord},
                                             {"L1", MessageKind::kRecord},
                                             {"HO", MessageKind::kRecord},
                                             {"HT", MessageKind::kRecord},
                                             {"OK", MessageKind::kAcceptance},
                                             {"LO", MessageKind::kLoginResult},
                                             {"ES", MessageKind::kSources}}};

// A tag that a control message opens with. Tags of one group do not stand in one message twice.
struct Opening {
  std::string_view tag;
  std::string_view letters;
  int group;
};
constexpr std::array<Opening, 5> kOpenings{{{"<CONNECT>", "OK", 1},
                                            {"<STREAMER>", "OK", 1},
                                            {"<STATUSCODE>", "LO", 2},
                                            {"<STATUSDESC>", "LO", 3},
                                            {"<SOURCES>", "ES", 4}}};

// Between a control message's letters and its tag.
constexpr std::size_t kMostBetween = 64;
constexpr std::size_t kLongestTag = 12;
static_assert(kLetters + kMostBetween + kLongestTag <= kLongestHead);

bool IsRecordsFirst(char letter) { return letter == 'S' || letter == 'L' || letter == 'H'; }

std::uint16_t NumberAt(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<std::uint8_t>(bytes[at]) |
                                    static_cast<std::uint8_t>(bytes[at + 1]) << 8);
}

// The place of a tag, counted from 0.
std::size_t Find(std::string_view bytes, std::string_view tag, std::size_t from = 0) {
  const std::int32_t position = FindTag(bytes, tag, static_cast<std::int32_t>(from) + 1);
  return position == 0 ? kNone : static_cast<std::size_t>(position) - 1;
}

// The first value of a tag, as the stream class finds it.
struct Element {
  std::size_t begin = kNone;  // of the tag; kNone without one
  std::size_t close = kNone;  // of its closing tag
  std::size_t end = kNone;    // behind that
  bool is_empty = false;

  bool IsOpen() const { return begin != kNone && close == kNone; }
  bool HasValue() const { return close != kNone && !is_empty; }
};

Element FindElement(std::string_view bytes, std::string_view tag) {
  Element element;
  element.begin = Find(bytes, tag);
  if (element.begin == kNone) return element;
  const std::string closing_tag = std::string("</").append(tag.substr(1));
  element.close = Find(bytes, closing_tag, element.begin);
  if (element.close == kNone) return element;
  element.end = element.close + closing_tag.size();
  element.is_empty = element.begin + tag.size() == element.close;
  return element;
}

bool HasTagOfGroup(std::string_view bytes, int group) {
  return std::ranges::any_of(kOpenings, [&](const Opening& opening) {
    return opening.group == group && Find(bytes, opening.tag) != kNone;
  });
}

// The head of the control message whose first tag stands at `tag`.
std::optional<Head> ControlHeadAt(std::string_view bytes, std::size_t from, std::size_t tag,
                                  MessageKind within) {
  for (const Opening& opening : kOpenings) {
    if (Find(bytes.substr(0, tag + opening.tag.size()), opening.tag, tag) != tag) continue;
    const std::size_t reach = kLetters + kMostBetween;
    const std::size_t earliest = std::max(from, tag < reach ? 0 : tag - reach);
    if (earliest > tag) return std::nullopt;
    const std::string_view before = bytes.substr(earliest, tag - earliest);
    const std::size_t letters = before.rfind(opening.letters);
    if (letters == kNone || before.find_first_of("<>", letters) != kNone) return std::nullopt;
    if (KindOf(opening.letters) == within && !HasTagOfGroup(bytes.substr(0, tag), opening.group))
      return std::nullopt;
    return Head{earliest + letters, tag + opening.tag.size()};
  }
  return std::nullopt;
}

std::optional<std::size_t> EndOfAcceptance(std::string_view bytes) {
  const Element connect = FindElement(bytes, "<CONNECT>");
  const Element streamer = FindElement(bytes, "<STREAMER>");
  if (streamer.HasValue() && (connect.begin == kNone || streamer.end <= connect.begin)) return streamer.end;
  if (connect.HasValue()) {
    const Element time = FindElement(bytes, "<SERVERTIME>");
    if (time.close == kNone) return std::nullopt;
    if (connect.begin < time.begin && time.end <= connect.close) return connect.end;
    const Element version = FindElement(bytes, "<SERVERVERSION>");
    if (version.close == kNone) return std::nullopt;
    return std::max({connect.end, time.end, version.end});
  }
  if (streamer.HasValue() && !connect.IsOpen()) return std::max(streamer.end, connect.end);
  return std::nullopt;
}

std::optional<std::size_t> EndOfLoginResult(std::string_view bytes) {
  const Element code = FindElement(bytes, "<STATUSCODE>");
  const Element description = FindElement(bytes, "<STATUSDESC>");
  if (code.close == kNone || description.close == kNone) return std::nullopt;
  return std::max(code.end, description.end);
}

}  // namespace

MessageKind KindOf(std::string_view bytes) {
  for (const auto& [letters, kind] : kKinds) {
    if (bytes[0] == letters[0] && bytes[1] == letters[1]) return kind;
  }
  return MessageKind::kUnknown;
}

bool MayBeginMessage(char byte) {
  return std::ranges::any_of(kKinds, [byte](const KindLetters& kind) { return kind.letters[0] == byte; });
}

bool BeginsWithRecord(std::string_view bytes) {
  if (bytes.size() < kHeadOfRecord || KindOf(bytes) != MessageKind::kRecord) return false;
  const auto length = static_cast<std::int16_t>(NumberAt(bytes, 2));
  const std::uint16_t field = NumberAt(bytes, 4);
  if (length < static_cast<std::int16_t>(kHeadOfRecord) || field < 1 || field >= kFieldTable.size())
    return false;
  return length < kLeastOfLetters || KindOf(bytes.substr(2)) == MessageKind::kUnknown;
}

std::optional<Head> FindHead(std::string_view bytes, std::size_t from, MessageKind within) {
  std::optional<Head> head;
  for (std::size_t at = from; at + kHeadOfRecord <= bytes.size(); ++at) {
    if (!IsRecordsFirst(bytes[at]) || !BeginsWithRecord(bytes.substr(at))) continue;
    head = Head{at, at + kHeadOfRecord};
    break;
  }
  for (std::size_t tag = bytes.find('<', from); tag != kNone; tag = bytes.find('<', tag + 1)) {
    if (head && tag >= head->known) break;
    const std::optional<Head> control = ControlHeadAt(bytes, from, tag, within);
    if (!control) continue;
    if (!head || control->known < head->known) head = control;
    break;
  }
  return head;
}

std::optional<std::size_t> EndOfMessage(MessageKind kind, std::string_view bytes) {
  switch (kind) {
    case MessageKind::kAcceptance:
      return EndOfAcceptance(bytes);
    case MessageKind::kLoginResult:
      return EndOfLoginResult(bytes);
    case MessageKind::kSources:
      return EndOfSources(bytes, 0);
    case MessageKind::kRecord:
    case MessageKind::kUnknown:
      break;
  }
  return std::nullopt;
}

std::optional<std::size_t> EndOfSources(std::string_view bytes, std::size_t from) {
  constexpr std::string_view kEnd = "</SOURCES>";
  const std::size_t end = Find(bytes, kEnd, from);
  if (end == kNone) return std::nullopt;
  return end + kEnd.size();
}

bool BreaksOff(std::string_view bytes) {
  const std::size_t bracket = bytes.rfind('<');
  if (bracket != kNone && bytes.find('>', bracket) == kNone) return true;
  for (const std::string_view tag : {"<CONNECT>", "<SERVERTIME>", "<SERVERVERSION>", "<STREAMER>",
                                     "<STATUSCODE>", "<STATUSDESC>", "<SOURCES>"}) {
    if (FindElement(bytes, tag).IsOpen()) return true;
  }
  return false;
}

}  // namespace mirelo::app
