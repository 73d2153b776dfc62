// The page about the wire, docs/level1.md, held to the code: what it says is played to the stream class.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/array.h"
#include "streaming/level1_fields.h"
#include "streaming/reference_stream.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using Credential = MemoryVault::Credential;

using Row = std::vector<std::string>;

std::string Stripped(std::string_view text) {
  constexpr std::string_view kAround = " `";
  const auto first = text.find_first_not_of(kAround);
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(kAround) - first + 1));
}

std::vector<std::string> LinesOfPage() {
  std::ifstream page(MIRELO_SOURCE_DIR "/docs/level1.md");
  std::vector<std::string> lines;
  for (std::string line; std::getline(page, line);) lines.push_back(line);
  return lines;
}

// The rows of the table whose first heading is this.
std::vector<Row> TableOf(const std::string& heading) {
  const auto lines = LinesOfPage();
  auto line = std::find_if(lines.begin(), lines.end(),
                           [&](const std::string& text) { return text.starts_with("| " + heading + " |"); });
  std::vector<Row> rows;
  for (; line != lines.end() && line->starts_with('|'); ++line) {
    std::istringstream cells(line->substr(1));
    Row row;
    for (std::string cell; std::getline(cells, cell, '|');) row.push_back(Stripped(cell));
    rows.push_back(row);
  }
  rows.erase(rows.begin(), rows.begin() + std::min<std::ptrdiff_t>(2, std::ssize(rows)));
  return rows;
}

// The value that stands for a field's kind on the wire, and how a quote shows it.
struct Sample {
  Level1Wire& (*put)(Level1Wire&, int id);
  const char* shown;
};

const std::map<std::string, Sample>& Samples() {
  static const std::map<std::string, Sample> samples{
      {"double", {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Double(id, 2.5); }, "2.5"}},
      {"long volume",
       {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Long(id, 2'147'483'649); }, "-2147483647"}},
      {"integer", {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Integer(id, -7); }, "-7"}},
      {"text", {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Text(id, "Z\xFC"); }, "Zü"}},
      {"stamp",
       {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Fixed(id, "12312005093015"); },
        "12/31/2005 09:30:15"}},
      {"dropped", {[](Level1Wire& wire, int id) -> Level1Wire& { return wire.Fixed(id, "U"); }, ""}},
  };
  return samples;
}

std::string BytesOf(std::string_view hex) {
  std::istringstream words{std::string(hex)};
  std::string bytes;
  for (std::string word; words >> word;) bytes += static_cast<char>(std::stoi(word, nullptr, 16));
  return bytes;
}

class Level1Page : public StreamTest {
 protected:
  Level1Page() {
    vault.credentials = {{Credential::ApplicationName, "MireloDemo"},
                         {Credential::ApplicationSecret, "demo-secret"}};
    facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
    stream->connect();
  }

  // The one quote that waits, without what each quote has.
  FlatQuote TakeOne() {
    const auto quotes = Take();
    EXPECT_THAT(quotes, SizeIs(1));
    if (quotes.empty()) return {};
    FlatQuote flat = Flat(*quotes[0]);
    for (const char* name : {"NameID", "DateQT", "TimeQT"}) flat.erase(name);
    return flat;
  }
};

TEST_F(Level1Page, TellsTheConversationWordForWord) {
  stream->arrTickers(VariantArray::OfTexts({"MSFT", "IBM", "GE", "F", "T", "XOM"}));
  stream->st_StreamerFile("SWISS.SDF");

  const auto rows = TableOf("From");
  ASSERT_THAT(rows, SizeIs(8));
  std::vector<std::string> said;
  for (const Row& row : rows) {
    if (row[0] == "client") said.push_back(row[1] + "\xFF");
    if (row[0] == "server") Deliver(row[1].starts_with("quote") ? Quote("MSFT") : row[1]);
  }
  EXPECT_EQ(events, 1) << "the quote";
  stream->stop_sub();
  EXPECT_EQ(Sent(), said);
}

TEST_F(Level1Page, NamesTheKindsOfRecordsAndTellsTheirHead) {
  const auto rows = TableOf("Bytes");
  ASSERT_THAT(rows, SizeIs(4));
  std::vector<std::string> kinds;
  std::istringstream words(rows[0][1]);
  for (std::string word; std::getline(words, word, '`') && std::getline(words, word, '`');) {
    kinds.push_back(word);
  }
  EXPECT_THAT(kinds, ElementsAre("S1", "L1", "HO", "HT"));
  for (const std::string& kind : kinds) {
    SCOPED_TRACE(kind);
    Renew();
    stream->connect();
    Deliver(Level1Wire(kind).Symbol("X").Last(2.5));
    EXPECT_EQ(TakeOne(), (FlatQuote{{"Symbol", "X"}, {"Last_Price", "2.5"}}));
  }
  // Behind the head are ids and values: here one field, whose value takes four bytes.
  const std::size_t one_field = Level1Wire().LastSize(1).Bytes().size();
  EXPECT_EQ(std::stoul(rows[0][0]) + std::stoul(rows[1][0]) + std::stoul(rows[2][0]) + 4, one_field);
}

// Widths are those of the bytes that NamesEveryFieldItsKindAndItsMember has read with another field behind.
TEST_F(Level1Page, TellsHowManyBytesEachKindOfValueTakes) {
  const auto rows = TableOf("Kind of value");
  ASSERT_EQ(rows.size(), Samples().size());
  for (const Row& row : rows) {
    SCOPED_TRACE(row[0]);
    Level1Wire wire;
    Samples().at(row[0]).put(wire, 2);
    const std::string value = wire.Bytes().substr(6);
    if (row[0] == "text") {
      EXPECT_EQ(row[1], "up to a zero byte");
      EXPECT_EQ(value.find('\0'), value.size() - 1);
    } else {
      EXPECT_EQ(row[1], std::to_string(value.size()));
    }
  }
}

TEST_F(Level1Page, NamesEveryFieldItsKindAndItsMember) {
  const auto rows = TableOf("Id");
  ASSERT_EQ(rows.size() + 1, kFieldTable.size());
  for (const Row& row : rows) {
    const int id = std::stoi(row[0]);
    SCOPED_TRACE(row[1]);
    const Level1Field& field = kFieldTable.at(static_cast<std::size_t>(id));
    EXPECT_EQ(row[1], field.descriptor.substr(0, field.descriptor.find(':')));

    Renew();
    stream->connect();
    Level1Wire wire;
    const Sample& sample = Samples().at(row[2]);
    sample.put(wire, id);
    if (row[3] != "Symbol") wire.Symbol("X");
    const bool is_last = row[3] == "Last_Price";
    Deliver(is_last ? wire.Bid(1) : wire.Last(1));  // a change, so that there is a quote
    FlatQuote expected{{is_last ? "Bid_Price" : "Last_Price", "1"}, {"Symbol", "X"}};
    if (!row[3].empty()) expected[row[3]] = sample.shown;
    EXPECT_EQ(TakeOne(), expected);
  }
}

TEST_F(Level1Page, ShowsTheBytesOfARecord) {
  std::string bytes;
  for (const Row& row : TableOf("Hex")) bytes += BytesOf(row[0]);
  ASSERT_THAT(bytes, SizeIs(53));
  Deliver(bytes);
  EXPECT_EQ(TakeOne(), (FlatQuote{{"Symbol", "MSFT"},
                                  {"Last_Price", "28.350000000000001"},
                                  {"Volume", "1200"},
                                  {"Bid_Size", "12"},
                                  {"Date_Time", "12/31/2005 09:30:15"}}));
  for (const Row& row : TableOf("Hex")) {
    if (row[1] == "kind" || row[1] == "length") continue;
    EXPECT_EQ(BytesOf(row[0])[0], static_cast<char>(std::stoi(row[1]))) << row[0];
  }
}

}  // namespace
}  // namespace mirelo::testing
