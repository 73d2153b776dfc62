#include "libreoffice/errand/errand.h"

#include <cstdint>
#include <exception>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
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

// A whole number that the type holds. The conversion of the library takes any number, and cuts it.
template <class Number>
void GetNumber(const Json& json, Number& number) {
  using Limits = std::numeric_limits<Number>;
  const bool is_whole = json.is_number_integer();
  const bool is_too_great =
      json.is_number_unsigned() && json.get<std::uint64_t>() > static_cast<std::uint64_t>(Limits::max());
  if (!is_whole || is_too_great) throw std::out_of_range("another number");
  const auto value = json.get<std::int64_t>();
  if (value < Limits::min() || value > Limits::max()) throw std::out_of_range("another number");
  number = static_cast<Number>(value);
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
  GetNumber(json.at("output"), command.output);
  GetNumber(json.at("errors"), command.errors);
  return command;
}

// Nothing for what is no JSON, or has not what `read` looks for.
template <class Read>
auto ReadLine(std::string_view line, Read read) -> std::optional<decltype(read(Json()))> {
  try {
    return read(Json::parse(line));
  } catch (const Json::exception&) {
    return std::nullopt;
  } catch (const std::out_of_range&) {
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
    GetNumber(json.at("http_port"), errand.http_port);
    GetNumber(json.at("stream_port"), errand.stream_port);
    errand.open = json.at("open").get<std::string>();
    errand.wishes = WishesOf(json.at("wishes"));
    std::int64_t time = 0;
    GetNumber(json.at("time"), time);
    errand.time = std::chrono::milliseconds(time);
    errand.store = json.at("store").get<std::string>();
    return errand;
  });
}

std::optional<News> NewsOf(std::string_view line) {
  return ReadLine(line, [](const Json& json) {
    News news;
    int kind = 0;
    GetNumber(json.at("kind"), kind);
    if (kind < 0 || kind > static_cast<int>(News::Kind::kStored)) throw std::out_of_range("another kind");
    news.kind = static_cast<News::Kind>(kind);
    json.at("text").get_to(news.text);
    json.at("wish").get_to(news.is_of_wish);
    GetNumber(json.at("quotes"), news.quotes);
    return news;
  });
}

}  // namespace mirelo::libreoffice
