#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "wire/message_aligner.h"

namespace mirelo::testing {

// What an aligner gives for bytes that come in pieces, as a list that does not depend on the pieces: control
// messages, and records one by one.
class WholeMessages {
 public:
  explicit WholeMessages(bool asked_for_sources) {
    if (asked_for_sources) aligner_.NoteRequest("<ENUMSOURCES></ENUMSOURCES>");
  }

  WholeMessages& Add(std::string_view bytes) {
    aligner_.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    Take();
    return *this;
  }
  // Nothing more comes.
  WholeMessages& LetGo() {
    aligner_.End();
    Take();
    return *this;
  }

  const std::vector<std::string>& Messages() const { return messages_; }
  // As they came.
  const std::vector<std::string>& Chunks() const { return chunks_; }
  wire::MessageAligner& Aligner() { return aligner_; }

 private:
  void Take() {
    while (const auto chunk = aligner_.Next()) {
      std::string_view rest(reinterpret_cast<const char*>(chunk->data()), chunk->size());
      chunks_.emplace_back(rest);
      while (!rest.empty()) {
        const std::size_t size = SizeOfFirst(rest);
        messages_.emplace_back(rest.substr(0, size));
        rest.remove_prefix(size);
      }
    }
  }
  static std::size_t SizeOfFirst(std::string_view bytes) {
    if (bytes.size() < 4 || wire::KindOf(bytes) != wire::MessageKind::kRecord) return bytes.size();
    const std::size_t length = static_cast<std::uint8_t>(bytes[2]) |
                               static_cast<std::size_t>(static_cast<std::uint8_t>(bytes[3])) << 8;
    return length == 0 || length > bytes.size() ? bytes.size() : length;
  }

  wire::MessageAligner aligner_;
  std::vector<std::string> messages_;
  std::vector<std::string> chunks_;
};

}  // namespace mirelo::testing
