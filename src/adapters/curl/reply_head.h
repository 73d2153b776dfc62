#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mirelo::curl {

// The head of a reply, put together line by line: what of it anybody asks for.
class ReplyHead {
 public:
  // Takes one line, its line end included. Heads of interim replies (100 and the like) are passed over. Of
  // lines behind the head's end, which trailers may be, only the size counts.
  void AddLine(std::string_view line);

  // Whether anything of a reply has come.
  bool Begun() const { return size_ > 0; }
  // Whether the empty line at the end has come.
  bool Complete() const { return complete_; }
  // Bytes so far, interim replies and trailers included.
  std::size_t Size() const { return size_; }
  // The status code of the status line; 0 before.
  int Status() const { return status_; }

  // Values as the server wrote them, of the first header of that name, without the blanks around; nothing
  // when the reply has none.
  const std::optional<std::string>& ContentType() const { return content_type_; }
  const std::optional<std::string>& ContentLength() const { return content_length_; }

  // The address that the reply redirects to; nothing unless it is one that redirects.
  std::optional<std::string> RedirectsTo() const;

  // The bytes that the body has, when the server told so in a form that can be relied on. Otherwise the body
  // goes on to the end of the connection, or of its chunks.
  std::optional<std::uint64_t> BodySize() const;

 private:
  void ReadStatus(std::string_view line);
  void ReadHeader(std::string_view line);
  void EndHead();

  std::size_t size_ = 0;
  int status_ = 0;
  bool complete_ = false;
  std::optional<std::string> content_type_;
  std::optional<std::string> content_length_;
  std::optional<std::string> location_;
  std::optional<std::string> transfer_encoding_;
};

}  // namespace mirelo::curl
