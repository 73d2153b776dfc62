// What the headers of the facade and the stream say of defaults and bounds is what the catalogue has.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "snapshot/tickers_per_request.h"
#include "support/file_text.h"

namespace mirelo::app {
namespace {

using ::testing::HasSubstr;

std::string HeaderText(const std::string& name) {
  return mirelo::testing::TextOfFile(MIRELO_SOURCE_DIR "/src/" + name);
}

const Setting& RowOf(std::string_view key) {
  for (const Setting& row : catalogue::kRows) {
    if (row.section == catalogue::kSettings && row.key == key) return row;
  }
  throw std::string(key) + " is no setting";
}
std::string DefaultOf(std::string_view key) { return std::string(RowOf(key).facade_default.value()); }

std::string InBrackets(const std::string& text) { return "(" + text + ")"; }
std::string Quoted(std::string_view key) { return InBrackets('"' + DefaultOf(key) + '"'); }
std::string Number(std::string_view key) { return InBrackets(DefaultOf(key)); }
std::string PaletteIndex(std::string_view key) {
  return "(" + std::to_string(mGlobal::GetColorIndex(std::stoi(DefaultOf(key)))) + ", ";
}
std::string NumberFormat(std::string_view key) {
  return InBrackets("\"0." + std::string(std::stoul(DefaultOf(key)), '0') + '"');
}
std::string BoundsAndNumber(std::string_view key) {
  const Setting& row = RowOf(key);
  return std::to_string(row.least) + " to " + std::to_string(row.greatest) + " " + Number(key);
}

// The comment behind a member's declaration, or right above it.
std::string CommentOn(const std::string& header, const std::string& member) {
  const auto at = header.find(" " + member + "() const;");
  if (at == std::string::npos) return "no such member";
  const auto end = header.find('\n', at);
  const std::string behind = header.substr(at, end - at);
  if (behind.find("//") != std::string::npos) return behind;
  const auto line = header.rfind('\n', at);
  return header.substr(header.rfind("\n\n", line), line - header.rfind("\n\n", line));
}

TEST(HeaderDefaults, OfTheFacadeAreTheCatalogues) {
  struct Case {
    const char* member;
    const char* key;
    std::string (*says)(std::string_view key);
  };
  const std::string header = HeaderText("core/cMirelo.h");
  for (const auto& [member, key, says] : {Case{"FillColorFildOff", "FillColorOFF", PaletteIndex},
                                          {"FillColorFildOn", "FillColorON", PaletteIndex},
                                          {"TableStyle", "Style", Quoted},
                                          {"UserVerticalSheet", "txtVerticalSheet", Quoted},
                                          {"DecimalPlacesFormat", "txtDecimalPlaces", NumberFormat},
                                          {"GreyOut", "GreyOut", Number},
                                          {"ColorPoints", "ColorPoints", Number},
                                          {"ChartStyle", "ChartStyle", Quoted},
                                          {"ChartPoints", "ChartPoints", Number},
                                          {"BuildCharts", "BuildCharts", Number},
                                          {"RowsLimit", "RowsLimit", Number},
                                          {"VerticalTable", "VerticalTable", Number},
                                          {"Seconds", "Seconds", BoundsAndNumber}}) {
    EXPECT_THAT(CommentOn(header, member), HasSubstr(says(key))) << member;
  }
}

TEST(HeaderDefaults, OfDownloadsAreTheCatalogues) {
  const std::string header = HeaderText("core/cMirelo.h");
  EXPECT_THAT(header, HasSubstr("& Host = \"" + DefaultOf("Webaddress") + "\","));
  EXPECT_THAT(header, HasSubstr(" Port = " + DefaultOf("HTTPPort") + ","));
  EXPECT_THAT(header,
              HasSubstr("multiple of " + std::to_string(kTickersPerRequest) + " (kTickersPerRequest)"));
}

TEST(HeaderDefaults, OfPaintedChartsAreTheCatalogues) {
  const std::string header = HeaderText("core/cMirelo.h");
  EXPECT_THAT(header, HasSubstr(" Color_Points = " + DefaultOf("ColorPoints") + ","));
  EXPECT_THAT(
      header,
      HasSubstr(" Use_Stay_Color_With_Points = " + std::string(catalogue::kGreyOutOfNewCharts) + ");"));
}

TEST(HeaderDefaults, OfTheStreamAreTheCatalogues) {
  EXPECT_THAT(HeaderText("streaming/cQTStreaming.h"),
              HasSubstr("Webaddress and SocketPort (" + DefaultOf("Webaddress") + ":" +
                        DefaultOf("SocketPort") + ")"));
}

}  // namespace
}  // namespace mirelo::app
