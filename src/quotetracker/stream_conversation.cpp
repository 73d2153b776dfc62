#include "quotetracker/stream_conversation.h"

#include <utility>

#include "quotetracker/sources.h"
#include "quotetracker/stream_replies.h"

namespace mirelo::quotetracker {
namespace {

StreamUnit LoginUnit(std::string_view code, std::string_view description) {
  return {StreamStep::kLogin, LoginReply(code, description)};
}

}  // namespace

StreamConversation::StreamConversation(QuoteSource& source, Credentials credentials, std::string version,
                                       std::vector<std::string> kinds, std::uint64_t seed)
    : source_(source),
      credentials_(std::move(credentials)),
      version_(std::move(version)),
      feed_(source, std::move(kinds), seed) {}

StreamUnit StreamConversation::Greet() {
  const Stamp now = ToStamp(source_.Now());
  server_time_ = std::string(now.Date()) + " " + std::string(now.Time());
  return {StreamStep::kGreeting, Greeting(server_time_, version_)};
}

std::optional<StreamUnit> StreamConversation::Answer(std::string_view message) {
  const StreamRequest request = ParseStreamRequest(message);
  if (!logged_in_ && !std::holds_alternative<LoginRequest>(request)) {
    return message.starts_with("<LOGIN>") ? LoginUnit("2", "Login not understood")
                                          : LoginUnit("3", "Login first");
  }
  return std::visit([this](const auto& known) { return Take(known); }, request);
}

std::optional<StreamUnit> StreamConversation::Take(const LoginRequest& login) {
  const bool known = login.app_name == credentials_.app_name && login.app_id == credentials_.app_name;
  logged_in_ = known && login.app_auth == LoginDigest(credentials_.app_secret, server_time_);
  return logged_in_ ? LoginUnit("0", "Login accepted") : LoginUnit("1", "Application not authorised");
}

std::optional<StreamUnit> StreamConversation::Take(const SourcesRequest& request) {
  const bool level1 = request.source_type == "L1";
  return StreamUnit{StreamStep::kSources,
                    SourcesReply(request.source_type, level1 ? Level1Sources() : std::span<const Source>())};
}

std::optional<StreamUnit> StreamConversation::Take(const StreamerRequest& request) {
  return StreamUnit{StreamStep::kStreamer, StreamerReply(request.file)};
}

std::optional<StreamUnit> StreamConversation::Take(const SubscribeRequest& request) {
  feed_.Subscribe(request.symbols);
  return std::nullopt;
}

std::optional<StreamUnit> StreamConversation::Take(const UnsubscribeAllRequest&) {
  feed_.Clear();
  return std::nullopt;
}

std::optional<StreamUnit> StreamConversation::Take(const UnknownRequest&) { return std::nullopt; }

}  // namespace mirelo::quotetracker
