#include "wire/message_bounds.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "streaming/level1_fields.h"
#include "streaming/tags.h"

namespace mirelo::wire {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kLetters = 2;  // that name a kind

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

// Whether a bracket may be that of an opening tag: of most it is seen by the letter behind it.
bool MayOpen(std::string_view bytes) {
  return bytes.size() > 1 && std::ranges::any_of(kOpenings, [&](const Opening& opening) {
           return opening.tag[1] == bytes[1] || opening.tag[1] == bytes[1] - 'a' + 'A';
         });
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
    if (Find(bytes.substr(tag, opening.tag.size()), opening.tag) != 0) continue;
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

// The tags that count, and their closing ones. The elements of a message stand in this order.
struct CountingTag {
  std::string_view tag;
  std::string_view closing;
};
constexpr CountingTag kCounting[] = {
    {"<CONNECT>", "</CONNECT>"},   {"<SERVERTIME>", "</SERVERTIME>"}, {"<SERVERVERSION>", "</SERVERVERSION>"},
    {"<STREAMER>", "</STREAMER>"}, {"<STATUSCODE>", "</STATUSCODE>"}, {"<STATUSDESC>", "</STATUSDESC>"},
    {"<SOURCES>", "</SOURCES>"}};
enum Place : std::size_t {
  kConnect,
  kServerTime,
  kServerVersion,
  kStreamer,
  kStatusCode,
  kStatusDescription
};

constexpr std::size_t LongestClosing() {
  std::size_t longest = 0;
  for (const CountingTag& counting : kCounting) longest = std::max(longest, counting.closing.size());
  return longest;
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
  if (bytes.size() < kLeastRecord || KindOf(bytes) != MessageKind::kRecord) return false;
  const auto length = static_cast<std::int16_t>(NumberAt(bytes, 2));
  const std::uint16_t field = NumberAt(bytes, 4);
  if (length < static_cast<std::int16_t>(kLeastRecord) || field < 1 || field >= kFieldTable.size())
    return false;
  return length < kLeastOfLetters || KindOf(bytes.substr(2)) == MessageKind::kUnknown;
}

std::optional<Head> FindHead(std::string_view bytes, std::size_t from, MessageKind within,
                             std::size_t searched) {
  const auto unsearched = [&](std::size_t longest) {
    return std::max(from, searched - std::min(searched, longest));
  };
  std::optional<Head> head;
  for (std::size_t at = unsearched(kLeastRecord); at + kLeastRecord <= bytes.size(); ++at) {
    if (!IsRecordsFirst(bytes[at]) || !BeginsWithRecord(bytes.substr(at))) continue;
    head = Head{at, at + kLeastRecord};
    break;
  }
  for (std::size_t tag = bytes.find('<', unsearched(kLongestTag)); tag != kNone;
       tag = bytes.find('<', tag + 1)) {
    if (!MayOpen(bytes.substr(tag))) continue;
    if (head && tag >= head->known) break;
    const std::optional<Head> control = ControlHeadAt(bytes, from, tag, within);
    if (!control) continue;
    if (!head || control->known < head->known) head = control;
    break;
  }
  return head;
}

std::optional<std::size_t> EndOfSources(std::string_view bytes, std::size_t from) {
  constexpr std::string_view kEnd = "</SOURCES>";
  const std::size_t end = Find(bytes, kEnd, from);
  if (end == kNone) return std::nullopt;
  return end + kEnd.size();
}

std::optional<std::size_t> GrowingMessage::EndOf(MessageKind kind, std::string_view bytes) {
  LookAt(bytes);
  switch (kind) {
    case MessageKind::kAcceptance:
      return EndOfAcceptance();
    case MessageKind::kLoginResult:
      return EndOfLoginResult();
    case MessageKind::kSources:
      return EndOfSources(bytes, 0);
    case MessageKind::kRecord:
    case MessageKind::kUnknown:
      break;
  }
  return std::nullopt;
}

bool GrowingMessage::BreaksOff(std::string_view bytes) {
  LookAt(bytes);
  return is_in_bracket_ || std::ranges::any_of(elements_, &Element::IsOpen);
}

void GrowingMessage::LookAt(std::string_view bytes) {
  static_assert(std::size(kCounting) == kTags);
  if (bytes.size() == searched_) return;
  // A tag may have begun in what was looked at before.
  const std::size_t from = searched_ - std::min(searched_, LongestClosing());
  for (std::size_t i = 0; i < kTags; ++i) {
    const auto& [tag, closing] = kCounting[i];
    Element& element = elements_[i];
    if (element.begin == kNone) element.begin = Find(bytes, tag, from);
    if (!element.IsOpen()) continue;
    element.close = Find(bytes, closing, std::max(from, element.begin));
    if (element.close == kNone) continue;
    element.end = element.close + closing.size();
    element.is_empty = element.begin + tag.size() == element.close;
  }
  const std::size_t bracket = bytes.substr(searched_).find_last_of("<>");
  if (bracket != kNone) is_in_bracket_ = bytes[searched_ + bracket] == '<';
  searched_ = bytes.size();
}

std::optional<std::size_t> GrowingMessage::EndOfAcceptance() const {
  const Element& connect = elements_[kConnect];
  const Element& streamer = elements_[kStreamer];
  if (streamer.HasValue() && (connect.begin == kNone || streamer.end <= connect.begin)) return streamer.end;
  if (connect.HasValue()) {
    const Element& time = elements_[kServerTime];
    if (time.close == kNone) return std::nullopt;
    if (connect.begin < time.begin && time.end <= connect.close) return connect.end;
    const Element& version = elements_[kServerVersion];
    if (version.close == kNone) return std::nullopt;
    return std::max({connect.end, time.end, version.end});
  }
  if (streamer.HasValue() && !connect.IsOpen()) return std::max(streamer.end, connect.end);
  return std::nullopt;
}

std::optional<std::size_t> GrowingMessage::EndOfLoginResult() const {
  const Element& code = elements_[kStatusCode];
  const Element& description = elements_[kStatusDescription];
  if (code.close == kNone || description.close == kNone) return std::nullopt;
  return std::max(code.end, description.end);
}

}  // namespace mirelo::wire
