#include "quotetracker/login.h"

#include <openssl/evp.h>

#include <array>
#include <stdexcept>

namespace mirelo::quotetracker {
namespace {

std::string CleanedTime(std::string_view server_time) {
  std::string cleaned;
  for (const char c : server_time.substr(0, server_time.rfind(':'))) {
    if (c != '/' && c != ':') cleaned += c;
  }
  return cleaned;
}

std::string Md5InHex(std::string_view text) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned length = 0;
  if (EVP_Digest(text.data(), text.size(), digest.data(), &length, EVP_md5(), nullptr) != 1) {
    throw std::runtime_error("this machine's OpenSSL computes no MD5");
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string hex;
  for (unsigned i = 0; i < length; ++i) {
    hex += kDigits[digest[i] >> 4];
    hex += kDigits[digest[i] & 0x0F];
  }
  return hex;
}

}  // namespace

std::string LoginDigest(std::string_view app_secret, std::string_view server_time) {
  return Md5InHex(std::string(app_secret) + CleanedTime(server_time));
}

}  // namespace mirelo::quotetracker
