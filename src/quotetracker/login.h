#pragma once

#include <string>
#include <string_view>

namespace mirelo::quotetracker {

// What an application must prove that it knows when it logs in to the stream. The defaults are for
// demonstrations.
struct Credentials {
  std::string app_name = "MireloDemo";
  std::string app_secret = "demo-secret";
};

// The digest that proves knowledge of the secret at a server's time: the MD5 of secret and time as 32
// upper-case hexadecimal digits, the time cut at its last colon and without slashes and colons ("12/31/2005
// 09:30:15" counts as "12312005 0930"). Computed by OpenSSL, so that it checks the client's own arithmetic.
std::string LoginDigest(std::string_view app_secret, std::string_view server_time);

}  // namespace mirelo::quotetracker
