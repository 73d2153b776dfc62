// The login: a digest over the application's secret and the server's clock proves the secret without sending
// it.

#include <string>
#include <string_view>

#include "automation/text.h"
#include "automation/wipe.h"
#include "host/credential_vault.h"
#include "host/host.h"
#include "host/secret.h"
#include "streaming/messages.h"
#include "streaming/stream_internals.h"
#include "streaming/tags.h"

namespace mirelo {

namespace {

struct Credentials {
  host::Secret name;
  host::Secret secret;
};

// Not kept between logins, so that the plain texts live no longer than one.
Credentials LoadAppCredentials() {
  host::CredentialVault& vault = host::Host::Current().vault();
  const auto stored = vault.Stored();
  return {vault.Decipher(stored.name), vault.Decipher(stored.secret)};
}

// The server's time as the digest takes it: 12/31/2005 09:30:15 becomes 12312005 0930. Without a colon
// nothing is cut.
std::string DigestedTime(std::string_view server_time) {
  const auto seconds = server_time.rfind(':');
  return Replace(Replace(server_time.substr(0, seconds), "/", ""), ":", "");
}

}  // namespace

std::string cQTStreaming::Internals::BuildLoginMessage(std::string_view reply) const {
  const std::string server_time = GetTagValue(reply, "<SERVERTIME>");
  const std::string server_version = GetTagValue(reply, "<SERVERVERSION>");
  if (server_time.empty()) return {};

  const Credentials credentials = LoadAppCredentials();
  const std::string name(credentials.name.text());
  const std::string time = DigestedTime(server_time);
  std::string proved;
  const WipedAtEnd wiped(proved);
  proved.reserve(credentials.secret.text().size() + time.size());
  proved.append(credentials.secret.text()).append(time);
  // The name stands for the id as well, and the version is the server's own, not that of this system.
  return std::string("<LOGIN>")
      .append("<AppName>" + name + "</AppName>")
      .append("<AppID>" + name + "</AppID>")
      .append("<AppVer>" + server_version + "</AppVer>")
      .append("<AppAuth>" + GetAppAuth(proved) + "</AppAuth>")
      .append("</LOGIN>")
      .append(kMessageEnd);
}

std::string cQTStreaming::Internals::GetAppAuth(const std::string& text) const {
  return Hasher.DigestString(text);
}

}  // namespace mirelo
