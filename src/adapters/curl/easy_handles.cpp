#include "adapters/curl/easy_handles.h"

#include <cstddef>
#include <new>

namespace mirelo::curl {

namespace {

constexpr std::size_t kMostSpare = 4;

// HTTP/1.0 and no other protocol; nothing is kept between transfers, and nothing is asked of the environment.
void TellWhatAllHaveInCommon(CURL* easy) {
  const auto set = [easy](CURLoption option, auto value) { curl_easy_setopt(easy, option, value); };
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_0});
  set(CURLOPT_PROXY, "");
  set(CURLOPT_FORBID_REUSE, 1L);
  set(CURLOPT_FRESH_CONNECT, 1L);
  set(CURLOPT_DNS_CACHE_TIMEOUT, 0L);
  set(CURLOPT_NOSIGNAL, 1L);
}

}  // namespace

EasyHandles::Handle EasyHandles::Take() {
  CURL* easy = nullptr;
  if (spare_.empty()) {
    easy = curl_easy_init();
    if (easy == nullptr) throw std::bad_alloc();
    TellWhatAllHaveInCommon(easy);
    spare_.reserve(kMostSpare);  // so that giving it back cannot fail
  } else {
    easy = spare_.back().release();
    spare_.pop_back();
  }
  return Handle(easy, GiveBack(this));
}

void EasyHandles::Keep(CURL* easy) {
  if (spare_.size() == kMostSpare) return curl_easy_cleanup(easy);
  spare_.emplace_back(easy);
}

}  // namespace mirelo::curl
