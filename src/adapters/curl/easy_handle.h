#pragma once

#include <curl/curl.h>

#include <memory>

namespace mirelo::curl {

struct EasyCleanup {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
// A handle for a transfer. It is in no multi handle when it goes.
using EasyHandle = std::unique_ptr<CURL, EasyCleanup>;

// An easy handle with the options that all transfers have in common, for one reply and no other: libcurl
// remembers the last header that a handle received beyond the life of that header, and when the next reply on
// the handle begins with a folded line, it writes there. To make a handle takes a microsecond. Raises
// std::bad_alloc.
EasyHandle NewEasyHandle();

}  // namespace mirelo::curl
