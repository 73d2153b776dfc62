#include "quotetracker/login.h"

#include "automation/hex.h"
#include "quotetracker/md5.h"

namespace mirelo::quotetracker {
namespace {

std::string CleanedTime(std::string_view server_time) {
  std::string cleaned;
  for (const char c : server_time.substr(0, server_time.rfind(':'))) {
    if (c != '/' && c != ':') cleaned += c;
  }
  return cleaned;
}

std::string InHex(const Md5Digest& digest) {
  std::string hex;
  for (const unsigned char byte : digest) AppendHex(hex, byte);
  return hex;
}

}  // namespace

std::string LoginDigest(std::string_view app_secret, std::string_view server_time) {
  return InHex(Md5Of(std::string(app_secret) + CleanedTime(server_time)));
}

}  // namespace mirelo::quotetracker
