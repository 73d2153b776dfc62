#include <windows.h>
// Needs what stands in windows.h.
#include <bcrypt.h>

#include <stdexcept>

#include "quotetracker/md5.h"

namespace mirelo::quotetracker {

Md5Digest Md5Of(std::string_view bytes) {
  BCRYPT_ALG_HANDLE md5 = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
  Md5Digest digest{};
  auto* const data = reinterpret_cast<UCHAR*>(const_cast<char*>(bytes.data()));  // which is not written to
  const bool is_made = ::BCryptOpenAlgorithmProvider(&md5, BCRYPT_MD5_ALGORITHM, nullptr, 0) == 0 &&
                       ::BCryptCreateHash(md5, &hash, nullptr, 0, nullptr, 0, 0) == 0 &&
                       ::BCryptHashData(hash, data, static_cast<ULONG>(bytes.size()), 0) == 0 &&
                       ::BCryptFinishHash(hash, digest.data(), digest.size(), 0) == 0;
  if (hash != nullptr) ::BCryptDestroyHash(hash);
  if (md5 != nullptr) ::BCryptCloseAlgorithmProvider(md5, 0);
  if (!is_made) throw std::runtime_error("this Windows computes no MD5");
  return digest;
}

}  // namespace mirelo::quotetracker
