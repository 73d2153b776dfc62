#include <openssl/evp.h>

#include <stdexcept>

#include "quotetracker/md5.h"

namespace mirelo::quotetracker {

Md5Digest Md5Of(std::string_view bytes) {
  Md5Digest digest{};
  if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_md5(), nullptr) != 1) {
    throw std::runtime_error("this machine's OpenSSL computes no MD5");
  }
  return digest;
}

}  // namespace mirelo::quotetracker
