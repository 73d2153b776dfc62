#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace mirelo::quotetracker {

// What a client says on the stream. A message is a run of tags without anything between them, and is ended by
// a byte 255.

struct LoginRequest {
  std::string app_name;
  std::string app_id;
  std::string app_version;
  std::string app_auth;
};
struct SourcesRequest {
  std::string source_type;
};
struct StreamerRequest {
  std::string file;
};
struct SubscribeRequest {
  std::vector<std::string> symbols;  // of all groups, without empty ones
};
struct UnsubscribeAllRequest {};
struct UnknownRequest {};

using StreamRequest = std::variant<UnknownRequest, LoginRequest, SourcesRequest, StreamerRequest,
                                   SubscribeRequest, UnsubscribeAllRequest>;

// Reads a message, its byte 255 taken off. Tags must be written exactly as they are here:
//   <LOGIN><AppName>..</AppName><AppID>..</AppID><AppVer>..</AppVer><AppAuth>..</AppAuth></LOGIN>
//   <ENUMSOURCES><SourceType>..</SourceType></ENUMSOURCES>
//   <L1SITE><STREAMER>..</STREAMER></L1SITE>
//   <L1QUOTES><ReqType>SUB</ReqType><Symbols>..,..</Symbols><Symbols>..</Symbols></L1QUOTES>
//   <L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>
StreamRequest ParseStreamRequest(std::string_view message);

// Cuts what a connection receives into messages.
class MessageSplitter {
 public:
  static constexpr char kEnd = '\xFF';
  static constexpr std::size_t kMostLength = std::size_t{16} * 1024 * 1024;

  // False when a message without an end has grown beyond kMostLength; the connection is then to be given up.
  bool Add(std::string_view bytes);

  // The next whole message without its end; nothing while there is none.
  std::optional<std::string> Next();

 private:
  std::string bytes_;
  std::size_t begin_ = 0;     // of the message not yet taken
  std::size_t searched_ = 0;  // no end stands before this
};

}  // namespace mirelo::quotetracker
