#include "libreoffice/errand/errand.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace mirelo::libreoffice {

namespace {

using Json = nlohmann::json;

constexpr auto kDump = Json::error_handler_t::replace;

Json JsonOf(const DialogWishes& wishes) {
  Json settings = Json::array();
  for (const auto& [key, value] : wishes.settings) settings.push_back({key, value});
  Json ticks = Json::array();
  for (const auto& [ticker, field] : wishes.ticks) ticks.push_back({ticker, field});
  return {{"settings", settings},
          {"columns", wishes.columns},
          {"tickers", wishes.tickers},
          {"list", wishes.list},
          {"ticks", ticks},
          {"history", wishes.history},
          {"charts", wishes.charts},
          {"yes", wishes.accepts_costs}};
}

DialogWishes WishesOf(const Json& json) {
  DialogWishes wishes;
  for (const Json& setting : json.at("settings")) wishes.settings.push_back({setting.at(0), setting.at(1)});
  for (const Json& tick : json.at("ticks")) wishes.ticks.push_back({tick.at(0), tick.at(1)});
  json.at("columns").get_to(wishes.columns);
  json.at("tickers").get_to(wishes.tickers);
  json.at("list").get_to(wishes.list);
  json.at("history").get_to(wishes.history);
  json.at("charts").get_to(wishes.charts);
  json.at("yes").get_to(wishes.accepts_costs);
  return wishes;
}

Json JsonOf(const std::optional<CommandLine>& command) {
  if (!command) return nullptr;
  return {{"words", command->words},
          {"programs", command->programs.string()},
          {"output", command->output},
          {"errors", command->errors}};
}

std::optional<CommandLine> CommandOf(const Json& json) {
  if (json.is_null()) return std::nullopt;
  CommandLine command;
  json.at("words").get_to(command.words);
  command.programs = json.at("programs").get<std::string>();
  json.at("output").get_to(command.output);
  json.at("errors").get_to(command.errors);
  return command;
}

// Nothing for what is no JSON, or has not what `read` looks for.
template <class Read>
auto ReadLine(std::string_view line, Read read) -> std::optional<decltype(read(Json()))> {
  try {
    return read(Json::parse(line));
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace

std::string LineOf(const Errand& errand) {
  const Json json{{"command", JsonOf(errand.command)}, {"folder", errand.folder.string()},
                  {"http_port", errand.http_port},     {"stream_port", errand.stream_port},
                  {"open", errand.open.string()},      {"wishes", JsonOf(errand.wishes)},
                  {"time", errand.time.count()},       {"store", errand.store.string()}};
  return json.dump(-1, ' ', false, kDump);
}

std::string LineOf(const News& news) {
  const Json json{{"kind", static_cast<int>(news.kind)},
                  {"text", news.text},
                  {"wish", news.is_of_wish},
                  {"quotes", news.quotes}};
  return json.dump(-1, ' ', false, kDump);
}

std::optional<Errand> ErrandOf(std::string_view line) {
  return ReadLine(line, [](const Json& json) {
    Errand errand;
    errand.command = CommandOf(json.at("command"));
    errand.folder = json.at("folder").get<std::string>();
    json.at("http_port").get_to(errand.http_port);
    json.at("stream_port").get_to(errand.stream_port);
    errand.open = json.at("open").get<std::string>();
    errand.wishes = WishesOf(json.at("wishes"));
    errand.time = std::chrono::milliseconds(json.at("time").get<std::int64_t>());
    errand.store = json.at("store").get<std::string>();
    return errand;
  });
}

std::optional<News> NewsOf(std::string_view line) {
  return ReadLine(line, [](const Json& json) {
    News news;
    const int kind = json.at("kind").get<int>();
    if (kind >= 0 && kind <= static_cast<int>(News::Kind::kStored)) news.kind = static_cast<News::Kind>(kind);
    json.at("text").get_to(news.text);
    json.at("wish").get_to(news.is_of_wish);
    json.at("quotes").get_to(news.quotes);
    return news;
  });
}

}  // namespace mirelo::libreoffice
