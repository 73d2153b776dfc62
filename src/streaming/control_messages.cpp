// What passes on the stream as text in tags, the login aside: requests to the server, and its list of
// sources.

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "streaming/messages.h"
#include "streaming/stream_internals.h"
#include "streaming/tags.h"

namespace mirelo {

namespace {

constexpr std::int32_t kLengthOfSource = 8;       // <SOURCE>
constexpr std::int32_t kLengthOfSourceType = 12;  // <SOURCETYPE>

std::string Message(std::string_view tags) { return std::string(tags).append(kMessageEnd); }

// Tickers joined by commas in groups: four in the first, five in each later one. The count starts at one
// ticker already, which makes that difference; the server knows the request in this form.
std::string SymbolGroups(const VariantArray& tickers) {
  constexpr int kGroupEnd = 5;
  std::string groups;
  int counter = 1;
  const std::int32_t last = tickers.UBound();
  for (std::int32_t i = tickers.LBound(); i <= last; ++i) {
    if (counter < kGroupEnd) {
      groups += tickers(i).ToText();
      if (counter + 1 != kGroupEnd && i != last) groups += ',';
      ++counter;
    } else {
      groups += "</Symbols><Symbols>" + tickers(i).ToText();
      counter = 1;
      if (i != last) groups += ',';
    }
  }
  return groups;
}

}  // namespace

void cQTStreaming::Internals::SendEnumSources(const std::string& source_type) {
  SourcesPending = false;
  stream.SendWinsock(Message("<ENUMSOURCES><SourceType>" + source_type + "</SourceType></ENUMSOURCES>"));
}

void cQTStreaming::Internals::SendL1Site(const std::string& streamer_file) {
  if (streamer_file.empty()) return;
  stream.SendWinsock(Message("<L1SITE><STREAMER>" + streamer_file + "</STREAMER></L1SITE>"));
}

void cQTStreaming::Internals::SendSubscribe() {
  stream.SendWinsock(Message("<L1QUOTES><ReqType>SUB</ReqType><Symbols>" +
                             SymbolGroups(stream.arrTickers_.AsArray()) + "</Symbols></L1QUOTES>"));
}

void cQTStreaming::stop_sub() { SendWinsock(Message("<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>")); }

void cQTStreaming::Internals::ParseSources(std::string_view text) {
  const std::int32_t sources = FindTag(text, "<SOURCES>");
  const std::int32_t sources_end = FindTag(text, "</SOURCES>");
  if (sources >= sources_end) return stream.OnStatusText.Raise("Data source list is not updated");

  const std::int32_t type = FindTag(text, "<SOURCETYPE>") + kLengthOfSourceType;
  const std::int32_t type_end = FindTag(text, "</SOURCETYPE>");
  const std::int32_t items = type_end + kLengthOfSourceType + 1;
  const std::string source_type = UCase(AnsiToText(Between(text, type, type_end)));
  if (!ParseSourceItems(source_type, Between(text, items, sources_end))) return;

  stream.OnStatusText.Raise("Data source list updated successfully");
  stream.PerformanceFollowingProcess.Raise(1);
}

// A failure is reported; the items before it stay stored.
bool cQTStreaming::Internals::ParseSourceItems(const std::string& type, std::string_view text) try {
  std::int32_t opening = FindTag(text, "<SOURCE>");
  std::int32_t closing = FindTag(text, "</SOURCE>", opening);  // fails when there is no item at all
  while (closing > opening) {
    StoreSourceItem(type, Between(text, opening + kLengthOfSource, closing));
    opening = FindTag(text, "<SOURCE>", closing);
    if (opening == 0) break;
    closing = FindTag(text, "</SOURCE>", opening);
  }
  return true;
} catch (...) {
  const RuntimeError error = CurrentError();
  stream.OnStatusText.Raise(std::to_string(error.Number()) + "  " + error.Description());
  return false;
}

void cQTStreaming::Internals::StoreSourceItem(const std::string& type, std::string_view item) {
  const std::string file = GetTagValue(item, "<FILENAME>");
  const std::string name = GetTagValue(item, "<NAME>");
  if (file.empty() || name.empty()) return;
  // Sources for trading, for news on request and for streamed news (TRADE, SNAPNEWS, STRNEWS) are not kept.
  if (type == "L1") mGlobal::AppSettings().SaveSetting(catalogue::kSources, name, Variant(file));
}

}  // namespace mirelo
