#include "adapters/curl/redirect.h"

#include <curl/curl.h>

#include <memory>

#include "host/canonical_url.h"

namespace mirelo::curl {

namespace {

constexpr std::uint16_t kDefaultPort = 80;

// libcurl's parsed URL. A part that could not be set or is not there is nothing.
class Url {
 public:
  Url() : url_(curl_url()) {}

  bool Set(CURLUPart part, const std::string& value, unsigned flags = 0) {
    return curl_url_set(url_.get(), part, value.c_str(), flags) == CURLUE_OK;
  }
  std::optional<std::string> Get(CURLUPart part, unsigned flags = 0) const {
    char* value = nullptr;
    if (curl_url_get(url_.get(), part, &value, flags) != CURLUE_OK) return std::nullopt;
    const std::unique_ptr<char, decltype(&curl_free)> owner(value, curl_free);
    return std::string(value);
  }

 private:
  struct Cleanup {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
  };
  std::unique_ptr<CURLU, Cleanup> url_;
};

std::string Bracketed(const std::string& host) {
  const bool is_ipv6 = host.find(':') != std::string::npos && !host.starts_with('[');
  return is_ipv6 ? "[" + host + "]" : host;
}

}  // namespace

std::string HttpOrigin(const std::string& host, std::uint16_t port) {
  const std::string number = std::to_string(port == 0 ? kDefaultPort : port);
  Url url;
  if (!url.Set(CURLUPART_SCHEME, "http") || !url.Set(CURLUPART_HOST, Bracketed(host)) ||
      !url.Set(CURLUPART_PORT, number)) {
    return {};
  }
  return "http://" + *url.Get(CURLUPART_HOST) + ":" + number;
}

std::optional<Destination> Redirected(const Destination& from, const std::string& location) {
  Url url;
  if (!url.Set(CURLUPART_URL, from.origin + from.target, CURLU_URLENCODE)) return std::nullopt;
  if (!url.Set(CURLUPART_URL, location, CURLU_URLENCODE)) return std::nullopt;
  const auto scheme = url.Get(CURLUPART_SCHEME);
  const auto host = url.Get(CURLUPART_HOST);
  const auto port = url.Get(CURLUPART_PORT, CURLU_DEFAULT_PORT);
  const auto path = url.Get(CURLUPART_PATH);
  if (!host || !port || !path || (scheme != "http" && scheme != "https")) return std::nullopt;
  const auto query = url.Get(CURLUPART_QUERY);
  return Destination{*scheme + "://" + *host + ":" + *port,
                     host::RequestTarget(query ? *path + "?" + *query : *path)};
}

}  // namespace mirelo::curl
