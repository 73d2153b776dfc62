#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/login.h"
#include "quotetracker/quote_source.h"
#include "quotetracker/record_feed.h"
#include "quotetracker/stream_fault.h"
#include "quotetracker/stream_messages.h"

namespace mirelo::quotetracker {

// What the server has to say at one time: a reply, or a batch of records.
struct StreamUnit {
  StreamStep step = StreamStep::kGreeting;
  std::string bytes;
};

// The conversation with one client, without its socket: the greeting, the answers to what the client says,
// and the records that it has subscribed to. Before a good login everything but a login is refused with a
// login reply.
//
// Status codes of a login: "0" good; "1" unknown application or wrong digest; "2" a login in another form;
// "3" not logged in yet.
class StreamConversation {
 public:
  // The source outlives the conversation.
  StreamConversation(QuoteSource& source, Credentials credentials, std::string version,
                     std::vector<std::string> kinds, std::uint64_t seed);

  StreamUnit Greet();

  // The reply to a message, its byte 255 taken off; nothing for one that has none.
  std::optional<StreamUnit> Answer(std::string_view message);

  RecordFeed& Feed() { return feed_; }

 private:
  std::optional<StreamUnit> Take(const LoginRequest& login);
  std::optional<StreamUnit> Take(const SourcesRequest& request);
  std::optional<StreamUnit> Take(const StreamerRequest& request);
  std::optional<StreamUnit> Take(const SubscribeRequest& request);
  std::optional<StreamUnit> Take(const UnsubscribeAllRequest&);
  std::optional<StreamUnit> Take(const UnknownRequest&);

  QuoteSource& source_;
  Credentials credentials_;
  std::string version_;
  RecordFeed feed_;
  std::string server_time_;  // as greeted
  bool logged_in_ = false;
};

}  // namespace mirelo::quotetracker
