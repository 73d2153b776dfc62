// What clients can call, class by class, held against a list of its own: names, kinds, types and defaults.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "automation_server/class.h"
#include "automation_server/classes.h"
#include "automation_server/member.h"
#include "automation_server/told_members.h"

namespace mirelo::testing {
namespace {

using automation_server::Class;
using automation_server::Classes;
using automation_server::Member;
using ::testing::ElementsAre;
using Lines = ToldMembers::Lines;

Lines MembersOf(std::string_view name) { return ToldMembers::MembersOf(name); }
Lines EventsOf(std::string_view name) { return ToldMembers::EventsOf(name); }

TEST(Members, AreThoseOfEightClassesThatClientsMakeByName) {
  Lines creatable;
  for (const Class& known : Classes()) {
    if (known.IsCreatable()) creatable.emplace_back(known.name());
  }
  EXPECT_THAT(creatable, ElementsAre("cMirelo", "cQTStreaming", "cQTData", "cQTDatas", "cTickerDateTime",
                                     "cTickerDateTimes", "CAppSettings", "WinInet"));
}

TEST(Members, OfTheFacade) {
  EXPECT_THAT(
      MembersOf("cMirelo"),
      ElementsAre(
          "StatusRunWorkQT: get let long", "m_ObjExcelApplication: get set object",
          "masPrevVolume: get let set variant", "FillColorFildOff: get long", "FillColorFildOn: get long",
          "TableStyle: get text", "UserVerticalSheet: get text", "DecimalPlacesFormat: get text",
          "DovantaFormatUserDate: get let text", "VerticalIndex: get integer", "GreyOut: get integer",
          "ColorPoints: get integer", "ChartStyle: get text", "ChartPoints: get long",
          "BuildCharts: get integer", "RowsLimit: get long", "VerticalTable: get integer",
          "Seconds: get long", "ExcelApplication: get set variant", "LoadFrmMirelo() long",
          "DownloadURL(URL text, Host text = 127.0.0.1, Port integer = 16239, Method text = GET, "
          "strPostQuery text = ) variant",
          "GetLastQuote(Tickers variant) variant", "LoadMasPosition()",
          "Change_Colors(Dest_Chart object, Change_Now double, Change_Today double, Chart_Style text, "
          "Color_Points integer = 1, Use_Stay_Color_With_Points integer = 0) variant",
          "Update_Charts(Dest_Sheet object, Vert_Array variant, ChartPoints long, ChartStyle text, "
          "ColorPoints integer, GreyOut integer)"));
  EXPECT_THAT(EventsOf("cMirelo"), ElementsAre());
}

TEST(Members, OfTheStream) {
  EXPECT_THAT(
      MembersOf("cQTStreaming"),
      ElementsAre("GetQTData() object", "QTConteiner: get set object", "arrTickers: get let variant",
                  "Owner: set object", "st_StreamerFile: get let text",
                  "Enumerate_Sources_Result_ID: get let boolean", "DovantaFormatUserDate: get let text",
                  "StartStop: get let boolean", "copy_cQTDatas: get set object", "connect() boolean",
                  "DisConnect() variant", "SendWinsock(as_cmd text)", "RaiseEventTimerProc()",
                  "GiveStreamerFile(Site text = ) text", "stop_sub()", "FreeQTDataBuffer()",
                  "GetCurrentData() object"));
  EXPECT_THAT(EventsOf("cQTStreaming"),
              ElementsAre("OnStatusText(sText text)", "PerformanceFollowingProcess(typeProcess integer)",
                          "QTDatas()"));
}

TEST(Members, OfAQuote) {
  const Lines expected{
      "Last_Volume: get let long",    "TimeQT: get let text",        "DateQT: get let text",
      "NameID: get let text",         "Tick: get let text",          "UPC: get let text",
      "CloseTicker: get let double",  "Yield: get let double",       "Open_Interest: get let long",
      "PE: get let double",           "Market_Cap: get let text",    "Exchange: get let text",
      "Earnings: get let double",     "Dividend: get let double",    "Average_Volume: get let long",
      "Avg_Trade_Size: get let long", "Trades: get let long",        "Prev_Volume: get let long",
      "Company_Name: get let text",   "Week_52_Low: get let double", "Week_52_High: get let double",
      "Date_Time: get let text",      "Low: get let double",         "High: get let double",
      "Last_Size: get let long",      "Ask_Size: get let long",      "Bid_Size: get let long",
      "Prev_Close: get let double",   "OpenTicker: get let double",  "Volume: get let long",
      "Change: get let double",       "Last_Price: get let double",  "Ask_Price: get let double",
      "Bid_Price: get let double",    "Symbol: get let text"};
  EXPECT_EQ(MembersOf("cQTData"), expected);
}

TEST(Members, OfTheStateOfATicker) {
  const Lines expected{
      "DateQuoteTrecker: get let text", "OpenTicker: get let double", "Avg_Trade_Size: get let long",
      "Trades: get let long",           "Tick: get let text",         "Low: get let double",
      "High: get let double",           "Last_Size: get let long",    "Ask_Size: get let long",
      "Bid_Size: get let long",         "Volume: get let long",       "Change: get let double",
      "Last_Price: get let double",     "Ask_Price: get let double",  "Bid_Price: get let double",
      "PrevVolume: get let long",       "LastVolume: get let long",   "Week52Low: get let double",
      "Week52High: get let double",     "Symbol: get let text"};
  EXPECT_EQ(MembersOf("cTickerDateTime"), expected);
}

TEST(Members, OfTheCollections) {
  const auto expected = [](const std::string& item) {
    return ElementsAre("Add(" + item + " object, VarKey variant = )", "Remove(VarIndex variant)",
                       "Item(VarIndex variant) object, default", "ItemAdd(VarIndex variant) object",
                       "Count: get long", "Clear()", "NewEnum() object, enumerates");
  };
  EXPECT_THAT(MembersOf("cQTDatas"), expected("CLeItem"));
  EXPECT_THAT(MembersOf("cTickerDateTimes"), expected("CTiItem"));
}

TEST(Members, OfTheSettingsStore) {
  EXPECT_THAT(
      MembersOf("CAppSettings"),
      ElementsAre("Init(CompanyName text, AppName text)", "AppName: get let text",
                  "CompanyName: get let text", "MainBranch: get let text", "RootKey: get let long",
                  "DeleteSetting(section text, key text)", "GetAllKeys(section text, ref keys array) boolean",
                  "GetSetting(section text, key text, default variant) variant",
                  "SaveSetting(section text, key text, ref value variant)"));
}

TEST(Members, OfATransfer) {
  EXPECT_THAT(MembersOf("WinInet"),
              ElementsAre("TimeoutSec: get let long", "Cancel()", "Execute()", "SuccessDone: get let boolean",
                          "Response: get let text", "ContentType: get let text", "PostQuery: get let text",
                          "AcceptTypes: get let text", "Referer: get let text", "Resource: get let text",
                          "Method: get let text", "Password: get let text", "UserName: get let text",
                          "Port: get let integer", "HostName: get let text", "AgentName: get let text"));
  EXPECT_THAT(EventsOf("WinInet"),
              ElementsAre("OnProgress(Elapsed single, ContentLength long, BytesRead long)",
                          "OnStateChanged(State long)"));
}

TEST(Members, HaveNamesThatDifferInMoreThanTheirCase) {
  for (const Class& known : Classes()) {
    std::set<std::string> names;
    for (const Member& member : known.members()) {
      EXPECT_TRUE(names.insert(UCase(std::string(member.name))).second) << known.name() << "." << member.name;
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
