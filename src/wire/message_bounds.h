#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace mirelo::wire {

// What passes on a stream, told by the first two bytes.
enum class MessageKind : std::uint8_t {
  kRecord,       // S1, L1, HO, HT: a length follows, which counts the whole record
  kAcceptance,   // OK: the greeting, or the streamer's acceptance
  kLoginResult,  // LO
  kSources,      // ES
  kUnknown,
};

// What a record begins with: the two letters of its kind, and its length.
inline constexpr std::size_t kRecordHead = 4;
// That, and a field's id: the stream class forgets what is shorter.
inline constexpr std::size_t kLeastRecord = kRecordHead + 2;

// Of at least two bytes.
MessageKind KindOf(std::string_view bytes);
// Whether a byte may be the first of a message of a known kind.
bool MayBeginMessage(char byte);

// How the beginning of a message is told in the midst of other bytes, where two letters alone prove nothing.
// It is a record whose first field is a known one; or it is the letters of a control message's kind, with the
// tag that opens such a message close behind them, and no bracket in between.
struct Head {
  std::size_t begin = 0;
  std::size_t known = 0;  // so many of the bytes it takes to tell
};

// No head begins further than this before the byte that makes it known.
inline constexpr std::size_t kLongestHead = 80;

// Whether the bytes begin with a record of at least one field, the first one known. False where the two
// letters of a message's kind stand in the place of the length: then the letters before them are likely stray
// bytes in front of that message.
bool BeginsWithRecord(std::string_view bytes);

// Of the heads at or after `from`, the one that is recognised first as the bytes come. Heads that the first
// `searched` bytes suffice to recognise are left out. `within` is the kind of the message at the front: a
// head of the same kind counts as one of another message only when its tag comes a second time.
std::optional<Head> FindHead(std::string_view bytes, std::size_t from,
                             MessageKind within = MessageKind::kUnknown, std::size_t searched = 0);

// The end of a list of sources, looked for from a place on.
std::optional<std::size_t> EndOfSources(std::string_view bytes, std::size_t from);

// A control message at the front, which grows at its end. Each of its bytes is looked at once, since a peer
// may send single ones: `bytes` are those of the calls before, and what has come after them since.
class GrowingMessage {
 public:
  // Where it is whole, as the stream class reads it:
  //   OK  behind the streamer's closing tag; behind the greeting's, if the server's time stands inside it,
  //       else behind the last of the closing tags of greeting, time and version. Empty tags are not counted.
  //   LO  behind the later of the closing tags of status code and description.
  //   ES  behind the closing tag of the list.
  // Tags are found without regard to case. What stands between the kind's letters and the first tag does not
  // matter. Nothing while the end has not come.
  std::optional<std::size_t> EndOf(MessageKind kind, std::string_view bytes);
  // Whether it breaks off within a tag, or between one that counts and its closing tag.
  bool BreaksOff(std::string_view bytes);

  // Goes on to another message.
  void Forget() {
    if (searched_ > 0) *this = GrowingMessage();
  }

 private:
  static constexpr std::size_t kTags = 7;

  // The first value of a tag, as the stream class finds it.
  struct Element {
    static constexpr std::size_t kNone = std::string_view::npos;

    std::size_t begin = kNone;  // of the tag; kNone without one
    std::size_t close = kNone;  // of its closing tag
    std::size_t end = kNone;    // behind that
    bool is_empty = false;

    bool IsOpen() const { return begin != kNone && close == kNone; }
    bool HasValue() const { return close != kNone && !is_empty; }
  };

  void LookAt(std::string_view bytes);
  std::optional<std::size_t> EndOfAcceptance() const;
  std::optional<std::size_t> EndOfLoginResult() const;

  std::array<Element, kTags> elements_;
  std::size_t searched_ = 0;
  bool is_in_bracket_ = false;  // that was opened and not closed
};

}  // namespace mirelo::wire
