#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "http/http_machine.h"

namespace mirelo::testing {

// What a server may send, and what a transfer makes of it.
struct ReplyCase {
  std::string name;
  std::string bytes;
  std::vector<std::int32_t> states;
  std::string response{};
  std::string content_type{};
  std::int32_t content_length = 0;
};

inline void PrintTo(const ReplyCase& each, std::ostream* out) { *out << each.name; }

inline const std::string kOk = "HTTP/1.0 200 OK\r\n";

inline std::string RepeatedText(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

inline const ReplyCase kReplies[] = {
    {"Plain", kOk + "Content-Type: text/plain\r\nContent-Length: 5\r\n\r\nquote", kGoodPath, "quote",
     "text/plain", 5},
    {"WithoutTypeAndLength", kOk + "\r\nquote", kGoodPath, "quote"},
    {"WithoutHeaders", "HTTP/1.1 200\r\n\r\nquote", kGoodPath, "quote"},
    {"LineFeedsOnly", "HTTP/1.0 200 OK\nContent-Length: 5\n\nquote", kGoodPath, "quote", "", 5},
    {"NamesInOtherCase", kOk + "CONTENT-type:text/html \r\ncontent-LENGTH:  5\r\n\r\nquote", kGoodPath,
     "quote", "text/html", 5},
    {"FirstOfTwo", kOk + "Content-Type: a/b\r\nContent-Type: c/d\r\n\r\n", kGoodPath, "", "a/b"},
    {"EmptyBody", kOk + "Content-Length: 0\r\n\r\n", kGoodPath, ""},
    {"EmptyBodyWithoutLength", kOk + "\r\n", kGoodPath, ""},
    {"EmptyType", kOk + "Content-Type:\r\n\r\nquote", kGoodPath, "quote"},
    {"EightBitBytes", kOk + "\r\n\x80\xFC\x81", kGoodPath, "\u20AC\u00FC\u0081"},
    {"NulByte", kOk + "\r\n" + std::string("a\0b", 3), kGoodPath, std::string("a\0b", 3)},
    {"NotFoundPage", "HTTP/1.0 404 Not Found\r\n\r\nno such page", kGoodPath, "no such page"},
    {"ServerError", "HTTP/1.0 500 Oops\r\nContent-Length: 4\r\n\r\noops", kGoodPath, "oops", "", 4},
    {"NoContent", "HTTP/1.0 204 No Content\r\n\r\nignored", kGoodPath, ""},
    {"InterimReply", "HTTP/1.1 100 Continue\r\nContent-Type: no\r\n\r\n" + kOk + "\r\nquote", kGoodPath,
     "quote"},
    // The last reply that its connection has in HTTP.
    {"SwitchedProtocol", "HTTP/1.1 101 Switching Protocols\r\n\r\nquote", kGoodPath, "quote"},
    {"Chunks",
     kOk + "Transfer-Encoding: chunked\r\nContent-Length: 2\r\n\r\n3\r\nquo\r\n2\r\nte\r\n0\r\n\r\n",
     kGoodPath, "quote", "", 2},
    {"BrokenChunks", kOk + "Transfer-Encoding: chunked\r\n\r\n3\r\nquo\r\nxyz", kGoodPath, "quo"},
    {"BodyShorterThanAnnounced", kOk + "Content-Length: 50\r\n\r\nquote", kGoodPath, "quote", "", 50},
    {"NegativeLength", kOk + "Content-Length: -5\r\n\r\nquote", kGoodPath, "quote", "", -5},
    {"LengthThatIsNoNumber", kOk + "Content-Length: many\r\n\r\nquote", kGoodPath, "quote"},
    {"RedirectWithoutAddress", "HTTP/1.0 302 Found\r\n\r\nmoved", kGoodPath, "moved"},
    // A connection that closes before any reply counts as one that sent an empty one.
    {"Nothing", "", kGoodPath, ""},
};

// What a head is, and where a body ends, clients judge differently where a server keeps to no rules.
inline const ReplyCase kRepliesAgainstTheRules[] = {
    {"LengthWithMoreBehind", kOk + "Content-Length: 3 bytes\r\n\r\nquote", kGoodPath, "quote", "", 3},
    {"FoldedLine", kOk + "X: a\r\n Content-Type: no\r\n\r\nquote", kGoodPath, "quote"},
    {"BodyLongerThanAnnounced", kOk + "Content-Length: 3\r\n\r\nquote", kGoodPath, "quo", "", 3},
    {"EndInTheStatusLine", "HTTP/1.0 20", kSendFailed},
    {"EndBehindTheStatusLine", kOk, kSendFailed},
    {"EndInAHeader", kOk + "Content-Ty", kSendFailed},
    {"EndBehindAHeader", kOk + "Content-Type: text/plain\r\n", kSendFailed},
    {"EndBehindAnInterimReply", "HTTP/1.1 100 Continue\r\n\r\n", kSendFailed},
    {"NoStatusLine", "quote\r\nquote\r\n\r\n", kSendFailed},
    {"NoStatusLineNorLineEnd", "quote", kSendFailed},
    {"EmptyStatusLine", "\r\n\r\nquote", kSendFailed},
    {"StatusIsNegative", "HTTP/1.0 -12 OK\r\n\r\nquote", kSendFailed},
    {"StatusIsNoNumber", "HTTP/1.0 abc OK\r\n\r\nquote", kSendFailed},
    {"AnotherProtocol", "SSH-2.0-OpenSSH\r\n", kSendFailed},
    {"BinaryGarbage", std::string("\0\xFF\x16\x03\0\r\n\r\n", 9), kSendFailed},
    {"NulInAHeader", kOk + std::string("X: \0\r\n", 6) + "\r\nquote", kSendFailed},
};

inline const ReplyCase kEndlessReplies[] = {
    {"EndlessLineInTheHead", kOk + std::string(300'000, 'x') + "\r\n\r\nquote", kSendFailed},
    {"EndlessHead", kOk + RepeatedText("X: " + std::string(1000, 'x') + "\r\n", 300) + "\r\nquote",
     kSendFailed},
};

constexpr auto kReplyName = [](const auto& info) { return info.param.name; };

}  // namespace mirelo::testing
