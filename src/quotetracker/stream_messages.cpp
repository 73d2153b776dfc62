#include "quotetracker/stream_messages.h"

namespace mirelo::quotetracker {
namespace {

std::string Tag(std::string_view bracket, std::string_view name) {
  std::string tag(bracket);
  tag += name;
  tag += '>';
  return tag;
}

// Takes "<tag>value</tag>" off the front of the text; nothing, and the text untouched, when it does not begin
// so.
std::optional<std::string_view> TakeElement(std::string_view& text, std::string_view tag) {
  const std::string opening = Tag("<", tag);
  const std::string closing = Tag("</", tag);
  if (!text.starts_with(opening)) return std::nullopt;
  const auto end = text.find(closing, opening.size());
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view value = text.substr(opening.size(), end - opening.size());
  text.remove_prefix(end + closing.size());
  return value;
}

// The value of a tag that is all there is.
std::optional<std::string_view> OnlyElement(std::string_view text, std::string_view tag) {
  const auto value = TakeElement(text, tag);
  return text.empty() ? value : std::nullopt;
}

StreamRequest ParseLogin(std::string_view text) {
  const auto name = TakeElement(text, "AppName");
  const auto id = TakeElement(text, "AppID");
  const auto version = TakeElement(text, "AppVer");
  const auto auth = TakeElement(text, "AppAuth");
  if (!name || !id || !version || !auth || !text.empty()) return UnknownRequest{};
  return LoginRequest{std::string(*name), std::string(*id), std::string(*version), std::string(*auth)};
}

void AppendSymbols(std::vector<std::string>& symbols, std::string_view group) {
  while (!group.empty()) {
    const auto comma = group.find(',');
    const std::string_view symbol = group.substr(0, comma);
    if (!symbol.empty()) symbols.emplace_back(symbol);
    group.remove_prefix(comma == std::string_view::npos ? group.size() : comma + 1);
  }
}

StreamRequest ParseQuotes(std::string_view text) {
  const auto type = TakeElement(text, "ReqType");
  if (type == "UNSUBALL" && text.empty()) return UnsubscribeAllRequest{};
  if (type != "SUB" || text.empty()) return UnknownRequest{};
  SubscribeRequest request;
  while (const auto group = TakeElement(text, "Symbols")) AppendSymbols(request.symbols, *group);
  if (!text.empty()) return UnknownRequest{};
  return request;
}

}  // namespace

StreamRequest ParseStreamRequest(std::string_view message) {
  if (const auto login = OnlyElement(message, "LOGIN")) return ParseLogin(*login);
  if (const auto sources = OnlyElement(message, "ENUMSOURCES")) {
    if (const auto type = OnlyElement(*sources, "SourceType")) return SourcesRequest{std::string(*type)};
  }
  if (const auto site = OnlyElement(message, "L1SITE")) {
    if (const auto file = OnlyElement(*site, "STREAMER")) return StreamerRequest{std::string(*file)};
  }
  if (const auto quotes = OnlyElement(message, "L1QUOTES")) return ParseQuotes(*quotes);
  return UnknownRequest{};
}

bool MessageSplitter::Add(std::string_view bytes) {
  // What was taken goes only now, so that taking many short messages moves nothing.
  bytes_.erase(0, begin_);
  searched_ -= begin_;
  begin_ = 0;
  bytes_ += bytes;
  return bytes_.size() <= kMostLength || bytes_.find(kEnd, searched_) != std::string::npos;
}

std::optional<std::string> MessageSplitter::Next() {
  const auto end = bytes_.find(kEnd, searched_);
  if (end == std::string::npos) {
    searched_ = bytes_.size();
    return std::nullopt;
  }
  std::string message = bytes_.substr(begin_, end - begin_);
  begin_ = searched_ = end + 1;
  return message;
}

}  // namespace mirelo::quotetracker
