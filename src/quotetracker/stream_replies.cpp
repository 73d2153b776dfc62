#include "quotetracker/stream_replies.h"

namespace mirelo::quotetracker {
namespace {

std::string Element(std::string_view tag, std::string_view value) {
  std::string text;
  text.reserve(2 * tag.size() + value.size() + 5);
  text.append("<").append(tag).append(">").append(value).append("</").append(tag).append(">");
  return text;
}

}  // namespace

std::string Greeting(std::string_view server_time, std::string_view server_version) {
  return "OK" +
         Element("CONNECT", Element("SERVERTIME", server_time) + Element("SERVERVERSION", server_version));
}

std::string LoginReply(std::string_view code, std::string_view description) {
  return "LO" + Element("STATUSCODE", code) + Element("STATUSDESC", description);
}

std::string SourcesReply(std::string_view source_type, std::span<const Source> sources) {
  std::string list = Element("SOURCETYPE", source_type);
  for (const Source& source : sources) {
    list += Element("SOURCE", Element("FILENAME", source.file) + Element("NAME", source.name));
  }
  return "ES" + Element("SOURCES", list);
}

std::string StreamerReply(std::string_view file) { return "OK" + Element("STREAMER", file); }

}  // namespace mirelo::quotetracker
