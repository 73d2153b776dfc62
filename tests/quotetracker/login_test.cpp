#include "quotetracker/login.h"

#include <gtest/gtest.h>

namespace mirelo::quotetracker {
namespace {

TEST(LoginDigest, IsTheMd5OfSecretAndCleanedTime) {
  struct Case {
    const char* secret;
    const char* time;
    const char* digest;  // by md5sum, of what stands behind it
  };
  for (const auto& [secret, time, digest] : {
           Case{"abc", "", "900150983CD24FB0D6963F7D28E17F72"},                   // abc
           Case{"", "", "D41D8CD98F00B204E9800998ECF8427E"},                      //
           Case{"s", "12/31/2005 09:30:15", "EA04A6D203DFBA5896A161117354F718"},  // s12312005 0930
           Case{"s", "12/31/2005", "2F2717E1BCD7B53E00D0C40CD2513C83"},           // s12312005
           Case{"s", "09:30", "20F5C45A6E3C09E0718C1B8EA9C955D7"},                // s09
           Case{"\xA0\xFF", "a b", "73740A991F850349FDD4A1BD663C3A1E"},           // A0 FF "a b"
       }) {
    SCOPED_TRACE(time);
    EXPECT_EQ(LoginDigest(secret, time), digest);
  }
}

}  // namespace
}  // namespace mirelo::quotetracker
