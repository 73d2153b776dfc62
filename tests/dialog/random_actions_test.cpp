// Whatever a person does on the tabs of tickers and columns, some things always hold.

#include <functional>
#include <random>

#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ContainerEq;

constexpr const char* kChartsHeader = "Charts (Last & Volume)";

class RandomActions : public VerticalGridTest {
 protected:
  void Seed(std::uint32_t seed) { random_.seed(seed); }
  std::int32_t Below(std::int32_t count) {
    return static_cast<std::int32_t>(random_() % static_cast<std::uint32_t>(count));
  }

  // One action, and its name.
  std::string Act() {
    const std::vector<std::pair<const char*, std::function<void()>>> actions{
        {"add", [this] { AddOne(); }},
        {"add again", [this] { AddOne(); }},
        {"delete", [this] { form.ButDel.UserPress(); }},
        {"up", [this] { form.ButTickerUp.UserPress(); }},
        {"down", [this] { form.ButTickerDown.UserPress(); }},
        {"sort",
         [this] {
           if (FG.Rows() > 1) form.ButSort.UserPress();
         }},
        {"click the grid", [this] { ClickSomewhere(); }},
        {"click the grid again", [this] { ClickSomewhere(); }},
        {"drag in the grid", [this] { DragSomewhere(); }},
        {"toggle", [this] { FG.UserToggle(); }},
        {"edit", [this] { FG.UserEditCell("typed"); }},
        {"vertical tables", [this] { form.chkVerTable.UserClick(); }},
        {"charts", [this] { ToggleCharts(); }},
        {"left list", [this] { form.ListLeft.UserSelect(Below(20)); }},
        {"right list", [this] { form.ListRight.UserSelect(Below(20)); }},
        {"double click left", [this] { form.ListLeft.UserDoubleClick(Below(20)); }},
        {"double click right", [this] { form.ListRight.UserDoubleClick(Below(20)); }},
        {"left", [this] { form.ButLeft.UserPress(); }},
        {"right", [this] { form.ButRight.UserPress(); }},
        {"field up", [this] { form.ButUp.UserPress(); }},
        {"field down", [this] { form.ButDown.UserPress(); }},
        {"all left",
         [this] {
           if (Below(8) == 0) form.ButAllLeft.UserPress();
         }},
        {"all right",
         [this] {
           if (Below(8) == 0) form.ButAllRight.UserPress();
         }},
        {"tickers' tab", [this] { form.C1TTickersSettings.UserSelect(kTickers); }},
        {"columns' tab", [this] { form.C1TTickersSettings.UserSelect(kFields); }},
    };
    const auto& [name, action] =
        actions[static_cast<std::size_t>(Below(static_cast<std::int32_t>(actions.size())))];
    action();
    return name;
  }

  void AddOne() { Add({std::string(1, static_cast<char>('a' + Below(12)))}); }
  // Without fields a click that means all cells is an error, and there is nothing to sort without tickers:
  // those have their own tests.
  void ClickSomewhere() {
    if (FG.Cols() != 2) FG.UserClickCell(Below(FG.Rows()), Below(FG.Cols()));
  }
  void DragSomewhere() {
    if (FG.Cols() != 2) FG.UserDragTo(Below(FG.Rows()), Below(FG.Cols()));
  }

  void ExpectWholeLists() {
    ASSERT_FALSE(form.ListRight.Items().empty());
    EXPECT_EQ(form.ListRight.List(0), "Ticker");
    EXPECT_THAT(SortedEntries(), ContainerEq(entries_));
  }

  void ExpectTidyGrid() {
    Texts sorted = Tickers();
    std::sort(sorted.begin(), sorted.end());
    for (const std::string& ticker : sorted) EXPECT_EQ(ticker.size(), 1U) << "\"" << ticker << "\"";
    EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());

    EXPECT_EQ(Headers(), ExpectedHeaders());
    for (std::int32_t row = 1; row < FG.Rows(); ++row) {
      const std::string ticks = Ticks(row);
      EXPECT_EQ(ticks.find('?'), std::string::npos) << ticks;
      ExpectNoChartWithoutItsFields(row);
    }
  }

  Texts ExpectedHeaders() const {
    if (form.chkVerTable.Value() == 0) return {"Ticker"};
    Texts headers{""};
    for (const std::string& name : form.ListRight.Items()) {
      if (name != "Tick" && name != "52w Low" && name != "52w High") headers.push_back(name);
    }
    if (form.chkBuildCharts.Value() == 1) headers.emplace_back(kChartsHeader);
    return headers;
  }

  void ExpectNoChartWithoutItsFields(std::int32_t row) {
    const Texts headers = Headers();
    if (headers.back() != kChartsHeader || FG.TextMatrix(row, LastColumn()) != "-1") return;
    for (const char* field : {"Last", "LastVolume"}) {
      const auto found = std::find(headers.begin(), headers.end(), field);
      ASSERT_NE(found, headers.end()) << field;
      EXPECT_EQ(FG.TextMatrix(row, static_cast<std::int32_t>(found - headers.begin())), "-1") << field;
    }
  }

  // The buttons follow from the selections, once there is one.
  void ExpectFittingButtons() {
    const std::int32_t left = form.ListLeft.ListIndex();
    const std::int32_t right = form.ListRight.ListIndex();
    const std::int32_t count = form.ListRight.ListCount();
    EXPECT_TRUE(left < 0 || right < 0) << "both lists have a selection";
    if (left < 0 && right < 0) return;
    const bool in_right = right > 0;
    EXPECT_EQ(form.ButRight.Enabled(), left >= 0);
    EXPECT_EQ(form.ButAllRight.Enabled(), left >= 0);
    EXPECT_EQ(form.ButLeft.Enabled(), in_right);
    EXPECT_EQ(form.ButAllLeft.Enabled(), in_right);
    EXPECT_EQ(form.ButUp.Enabled(), in_right && count > 2 && right > 1);
    EXPECT_EQ(form.ButDown.Enabled(), in_right && count > 2 && right < count - 1);
  }

  Texts SortedEntries() const {
    Texts all = form.ListLeft.Items();
    all.insert(all.end(), form.ListRight.Items().begin(), form.ListRight.Items().end());
    std::sort(all.begin(), all.end());
    return all;
  }

  std::minstd_rand random_;
  Texts entries_;
};

TEST_F(RandomActions, LoseNoColumnAndNoTickerAndLeaveTheButtonsFitting) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    Seed(seed);
    Save("VerticalTable", Below(2));
    Save("ListLeft",
         "Tick,Ask,Time,Volume,High,Low,BidSize,AskSize,AvgTrade,NumTrades,Open,52w Low,52w High");
    Open("Last,Change,Bid,LastVolume,Date", {"X", "Y", "Z"}, Below(2) == 1);
    entries_ = SortedEntries();
    std::string actions = "seed " + std::to_string(seed);
    for (int i = 0; i < 150; ++i) {
      const auto tickers = FG.Rows();
      const std::string action = Act();
      actions += ", " + action;
      SCOPED_TRACE(actions);
      ExpectWholeLists();
      ExpectTidyGrid();
      ExpectFittingButtons();
      if (action == "delete") {
        EXPECT_GE(FG.Rows(), tickers - 1);
      } else {
        EXPECT_GE(FG.Rows(), tickers);
      }
      ASSERT_THAT(CallStack(), ::testing::IsEmpty());
      ASSERT_FALSE(HasFailure());
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
