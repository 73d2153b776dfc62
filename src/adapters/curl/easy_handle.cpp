#include "adapters/curl/easy_handle.h"

#include <new>

namespace mirelo::curl {

// HTTP/1.0 and no other protocol; nothing is kept between transfers, and nothing is asked of the environment.
EasyHandle NewEasyHandle() {
  EasyHandle easy(curl_easy_init());
  if (!easy) throw std::bad_alloc();
  const auto set = [&](CURLoption option, auto value) { curl_easy_setopt(easy.get(), option, value); };
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_0});
  set(CURLOPT_PROXY, "");
  set(CURLOPT_FORBID_REUSE, 1L);
  set(CURLOPT_FRESH_CONNECT, 1L);
  set(CURLOPT_DNS_CACHE_TIMEOUT, 0L);
  set(CURLOPT_NOSIGNAL, 1L);
  return easy;
}

}  // namespace mirelo::curl
