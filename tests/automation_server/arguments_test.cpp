#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

class ArgumentsOfCalls : public ServerTest {
 protected:
  ArgumentsOfCalls() {
    internet.answer = [](const AnsweringInternet::Request&) { return "reply"; };
  }

  Door facade = New("cMirelo");
  Door store = New("CAppSettings");
};

TEST_F(ArgumentsOfCalls, TakeTheirDefaultsWhereTheyAreLeftOut) {
  Call(facade, "DownloadURL", {"/req?"});
  const auto& request = internet.requests.at(0);
  EXPECT_EQ(request.host, "127.0.0.1");
  EXPECT_EQ(request.port, 16239);
  EXPECT_EQ(request.verb, "GET");
  EXPECT_EQ(request.body, "");
}

TEST_F(ArgumentsOfCalls, TakeTheirDefaultsInTheMidstOfOthers) {
  Call(facade, "DownloadURL", {"/req?", LeftOut(), 80, LeftOut(), "body"});
  const auto& request = internet.requests.at(0);
  EXPECT_EQ(request.host, "127.0.0.1");
  EXPECT_EQ(request.port, 80);
  EXPECT_EQ(request.body, "body");
}

TEST_F(ArgumentsOfCalls, MayNotBeLeftOutWhereTheyHaveNoDefault) {
  const auto error = ErrorOf([&] { Call(facade, "DownloadURL"); });
  ExpectError(error, 449, "Argument not optional", "Mirelo");
  EXPECT_EQ(NumberOf([&] { Call(facade, "DownloadURL", {LeftOut(), "localhost"}); }), 449);
  EXPECT_EQ(NumberOf([&] { Call(store, "GetSetting", {"Settings", "Seconds"}); }), 449);
  EXPECT_TRUE(internet.requests.empty());
}

TEST_F(ArgumentsOfCalls, MayNotBeMoreThanTheMemberTakes) {
  const auto error = ErrorOf([&] { Call(facade, "LoadMasPosition", {1}); });
  ExpectError(error, 450, "Wrong number of arguments or invalid property assignment", "Mirelo");
  EXPECT_EQ(NumberOf([&] { Call(facade, "DownloadURL", {"/", "h", 1, "GET", "", 6}); }), 450);
  EXPECT_EQ(NumberOf([&] { Call(facade, "LoadMasPosition", {LeftOut()}); }), 450);
  EXPECT_EQ(NumberOf([&] { Get(facade, "Seconds", {1}); }), 450);
  EXPECT_EQ(NumberOf([&] { Let(facade, "DovantaFormatUserDate", "d", {1}); }), 450);
}

TEST_F(ArgumentsOfCalls, AreConvertedToWhatTheParametersTake) {
  Call(facade, "DownloadURL", {5, "host", "81"});
  EXPECT_EQ(internet.requests.at(0).resource, "5");
  EXPECT_EQ(internet.requests.at(0).port, 81);
  EXPECT_EQ(NumberOf([&] { Call(facade, "DownloadURL", {"/", "host", "port"}); }), 13);
  EXPECT_EQ(NumberOf([&] { Call(facade, "DownloadURL", {"/", "host", 65'535}); }), 6);
  EXPECT_EQ(NumberOf([&] { Call(facade, "DownloadURL", {VariantArray()}); }), 13);
}

TEST_F(ArgumentsOfCalls, ByReferenceComeBackAsTheMemberLeftThem) {
  Arguments arguments{"Settings", "Seconds", "25"};
  CallChanging(store, "SaveSetting", arguments);
  EXPECT_EQ(arguments[2]->TypeName(), "String") << "a text is stored as it is";

  arguments = {"Settings", "Seconds", 25.4};
  CallChanging(store, "SaveSetting", arguments);
  EXPECT_EQ(arguments[2]->TypeName(), "Long");
  EXPECT_EQ(arguments[2]->ToInt32(), 25);
}

TEST_F(ArgumentsOfCalls, ByReferenceComeBackAlsoWhenTheMemberFailsBehindIt) {
  registry.Fail("RegSetValueExA");
  Arguments arguments{"Settings", "Seconds", 25.4};
  const auto error = ErrorOf([&] { CallChanging(store, "SaveSetting", arguments); });
  EXPECT_EQ(error.Number(), ErrorNumber(0x80044281));
  EXPECT_EQ(arguments[2]->TypeName(), "Long");
}

TEST_F(ArgumentsOfCalls, ByValueComeBackAsTheyWere) {
  Arguments arguments{"/req?", "host", "81"};
  CallChanging(facade, "DownloadURL", arguments);
  EXPECT_EQ(arguments[2]->TypeName(), "String");
}

TEST_F(ArgumentsOfCalls, MayBeNamed) {
  const auto download = facade->IdOf("DownloadURL");
  EXPECT_EQ(facade->PlaceOf(download, "URL"), 0U);
  EXPECT_EQ(facade->PlaceOf(download, "strpostQUERY"), 4U);
  ExpectError(ErrorOf([&] { facade->PlaceOf(download, "Url2"); }), 448, "Named argument not found", "Mirelo");
  EXPECT_EQ(NumberOf([&] { facade->PlaceOf(999, "URL"); }), 438);
}

}  // namespace
}  // namespace mirelo::testing
