#include "adapters/curl/fresh_handles.h"

#include <new>
#include <utility>

namespace mirelo::curl {

namespace {

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

FreshHandles::Handle Made() {
  FreshHandles::Handle easy(curl_easy_init());
  if (easy) TellWhatAllHaveInCommon(easy.get());
  return easy;
}

}  // namespace

FreshHandles::Handle FreshHandles::Take() {
  MakeNext();
  if (!next_) throw std::bad_alloc();
  return std::exchange(next_, nullptr);
}

void FreshHandles::MakeNext() {
  if (!next_) next_ = Made();
}

}  // namespace mirelo::curl
