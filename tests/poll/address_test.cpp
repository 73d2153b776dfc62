#include <gtest/gtest.h>

#include <string>

#include "adapters/poll/poll_winsock_library.h"
#include "adapters/poll/tcp_address.h"
#include "support/error_number.h"
#include "support/manual_loop.h"

namespace mirelo::poll {
namespace {

using host::WinsockLibrary;
using testing::NumberOf;

TEST(Address, TakesADottedAddressOrAName) {
  struct Case {
    const char* text;
    const char* host;
    int port;
    bool dotted;
  };
  const Case cases[] = {
      {"127.0.0.1:16240", "127.0.0.1", 16240, true},
      {"0.0.0.0:1", "0.0.0.0", 1, true},
      {"255.255.255.255:65535", "255.255.255.255", 65535, true},
      {"localhost:80", "localhost", 80, false},
      {"quotes.example.com:16240", "quotes.example.com", 16240, false},
      {"my-pc_2:080", "my-pc_2", 80, false},
      {"3com.example:7", "3com.example", 7, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    TcpAddress address;
    address.SetText(c.text);
    EXPECT_EQ(address.Text(), c.text);
    EXPECT_EQ(address.Host(), c.host);
    EXPECT_EQ(address.Port(), c.port);
    EXPECT_EQ(address.Ip().has_value(), c.dotted);
  }
}

TEST(Address, RefusesTextOfAnotherFormWithError5) {
  const std::string long_label(64, 'a');
  std::string long_name = "a";
  while (long_name.size() <= 253) long_name += ".a";
  const std::string cases[] = {
      "",
      ":",
      "127.0.0.1",
      "127.0.0.1:",
      ":16240",
      "127.0.0.1:0",
      "127.0.0.1:65536",
      "127.0.0.1:-1",
      "127.0.0.1:+1",
      "127.0.0.1: 1",
      "127.0.0.1:1 ",
      "127.0.0.1:1x",
      "127.0.0.1:99999999999999999999",
      " 127.0.0.1:1",
      "127.0.0:1",
      "127.0.0.256:1",
      "127.0.0.1.1:1",
      "1234:1",
      "::1:1",
      "[::1]:1",
      "http://host:1",
      "a b:1",
      "a..b:1",
      ".a:1",
      "a.:1",
      "h\xC3\xB6st:1",
      long_label + ":1",
      long_name + ":1",
      std::string("a\0b:1", 5),
  };
  for (const std::string& text : cases) {
    SCOPED_TRACE("'" + text + "'");
    TcpAddress address;
    EXPECT_EQ(NumberOf([&] { address.SetText(text); }), 5);
  }
}

TEST(Address, KeepsWhatItHeldWhenATextIsRefused) {
  TcpAddress address;
  address.SetText("localhost:80");
  EXPECT_EQ(NumberOf([&] { address.SetText("nowhere"); }), 5);
  EXPECT_EQ(address.Text(), "localhost:80");
  EXPECT_EQ(address.Port(), 80);
}

TEST(Factories, KnowTcpOverIpVersion4Only) {
  testing::ManualLoop loop;
  PollWinsockLibrary library(loop);
  EXPECT_NE(library.CreateAddress(WinsockLibrary::kInet), nullptr);
  EXPECT_EQ(NumberOf([&] { library.CreateAddress(10); }), 5);

  struct Case {
    const char* name;
    int family, type, protocol;
    int error;
  };
  const Case cases[] = {
      {"TCP over IPv4", 2, 1, 6, 0},     {"another family", 10, 1, 6, 5},    {"datagrams", 2, 2, 6, 5},
      {"another protocol", 2, 1, 17, 5}, {"a default protocol", 2, 1, 0, 5},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(NumberOf([&] { library.FindProtocol(c.family, c.type, c.protocol); }), c.error);
  }
}

}  // namespace
}  // namespace mirelo::poll
