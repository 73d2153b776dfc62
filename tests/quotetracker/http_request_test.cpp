#include "quotetracker/http_request.h"

#include <gtest/gtest.h>

#include <string>

namespace mirelo::quotetracker {
namespace {

using State = HttpParse::State;

TEST(HttpRequest, IsMethodResourceAndBody) {
  const auto parse =
      ParseHttpRequest("POST /req?X() HTTP/1.0\r\nHost: a\r\ncontent-length: 3 \r\n\r\nabc and more");
  ASSERT_EQ(parse.state, State::kComplete);
  EXPECT_EQ(parse.request.method, "POST");
  EXPECT_EQ(parse.request.resource, "/req?X()");
  EXPECT_EQ(parse.request.body, "abc");
}

TEST(HttpRequest, IsReadInTheFormsThatClientsSend) {
  struct Case {
    const char* text;
    const char* resource;
  };
  for (const auto& [text, resource] : {Case{"GET /req?X() HTTP/1.0\r\n\r\n", "/req?X()"},
                                       Case{"GET /req?X() HTTP/1.1\r\nHost: a\r\n\r\n", "/req?X()"},
                                       Case{"GET /req?X() HTTP/1.0\n\n", "/req?X()"},
                                       Case{"GET /req?X() HTTP/1.0\nHost: a\n\r\n", "/req?X()"},
                                       Case{"GET /req?a b c HTTP/1.0\r\n\r\n", "/req?a b c"},
                                       Case{"GET  /req?X()  HTTP/1.0\r\n\r\n", "/req?X()"},
                                       Case{"GET /req?a%#\xC4 HTTP/1.0\r\n\r\n", "/req?a%#\xC4"},
                                       Case{"GET / HTTP/1.0\r\nno colon here\r\n\r\n", "/"}}) {
    SCOPED_TRACE(text);
    const auto parse = ParseHttpRequest(text);
    ASSERT_EQ(parse.state, State::kComplete);
    EXPECT_EQ(parse.request.resource, resource);
  }
}

TEST(HttpRequest, IsIncompleteAtEachByteButTheLast) {
  const std::string text = "POST /req?X() HTTP/1.0\r\nContent-Length: 3\r\n\r\nabc";
  for (std::size_t length = 0; length < text.size(); ++length) {
    ASSERT_EQ(ParseHttpRequest(text.substr(0, length)).state, State::kIncomplete) << length;
  }
  EXPECT_EQ(ParseHttpRequest(text).state, State::kComplete);
}

TEST(HttpRequest, IsRefusedWithItsReason) {
  struct Case {
    std::string text;
    const char* refusal;
  };
  const std::string line = "GET / HTTP/1.0\r\n";
  for (const Case& c :
       {Case{"\r\n\r\n", "400 Bad Request"}, Case{"hello\r\n\r\n", "400 Bad Request"},
        Case{"GET /\r\n\r\n", "400 Bad Request"}, Case{"GET / HTTP/2.0\r\n\r\n", "400 Bad Request"},
        Case{"GET / HTTP/1.10\r\n\r\n", "400 Bad Request"}, Case{"GET HTTP/1.0\r\n\r\n", "400 Bad Request"},
        Case{"GET req?X() HTTP/1.0\r\n\r\n", "400 Bad Request"},
        Case{" / HTTP/1.0\r\n\r\n", "400 Bad Request"},
        Case{"BREW / HTTP/1.0\r\n\r\n", "501 Not Implemented"},
        Case{"get / HTTP/1.0\r\n\r\n", "501 Not Implemented"},
        Case{line + "Content-Length: x\r\n\r\n", "400 Bad Request"},
        Case{line + "Content-Length: -1\r\n\r\n", "400 Bad Request"},
        Case{line + "Content-Length:\r\n\r\n", "400 Bad Request"},
        Case{line + "Content-Length: 99999999999999999999\r\n\r\n", "400 Bad Request"},
        Case{line + "Content-Length: 65537\r\n\r\n", "413 Content Too Large"},
        Case{std::string(HttpRequest::kMostHead, 'x'), "431 Request Header Fields Too Large"},
        Case{line + std::string(HttpRequest::kMostHead, 'x') + "\r\n\r\n",
             "431 Request Header Fields Too Large"}}) {
    SCOPED_TRACE(c.text.substr(0, 60));
    const auto parse = ParseHttpRequest(c.text);
    EXPECT_EQ(parse.state, State::kRefused);
    EXPECT_EQ(parse.refusal, c.refusal);
  }
}

}  // namespace
}  // namespace mirelo::quotetracker
