// What a person sees of a day's quotes on a screen, without a screen.

#include "app/live/live_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "terminal/text_columns.h"

namespace mirelo::app {
namespace {

using namespace std::chrono_literals;
using day::QuoteRow;
using day::QuoteValue;
using terminal::Key;
using terminal::Piece;
using terminal::TextOf;
using terminal::Tone;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const LiveModel::Time kBegin{100h};

QuoteRow Row(const char* ticker, double last, double change) {
  return {QuoteValue::Text(ticker), QuoteValue(last), QuoteValue(change)};
}

// A model of the columns Ticker, Last and Change, and what it shows.
struct Shown {
  LiveModel model{{"Ticker", "Last", "Change"}};
  day::QuoteRows rows{Row("MSFT", 28.5, 0.5), Row("IBM", 150, -50), Row("DELL", 9, 0)};
  terminal::ScreenSize size{10, 60};
  LiveModel::Time now = kBegin;
  std::vector<std::string> about;

  terminal::Picture Draw() {
    model.Take(rows, now);
    return model.Draw(size, now, about);
  }
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const auto& line : Draw()) lines.push_back(TextOf(line));
    return lines;
  }
  // The tickers, from above.
  std::string Tickers() {
    std::string tickers;
    for (const std::string& line : Lines()) {
      const std::string ticker = line.substr(std::min<std::size_t>(line.size(), 2), 4);
      if (!ticker.empty() && ticker != "Tick") tickers += ticker.substr(0, ticker.find(' ')) + " ";
    }
    return tickers;
  }
  void Press(const char* characters) {
    for (; *characters != '\0'; ++characters) model.Press({Key::Kind::Character, *characters});
  }
  void Press(Key::Kind kind) { model.Press({kind, '\0'}); }
  Piece PieceWith(std::size_t line, const std::string& text) {
    const terminal::Picture picture = Draw();
    for (const Piece& piece : picture.at(line)) {
      if (piece.text.Bytes().find(text) != std::string::npos) return piece;
    }
    ADD_FAILURE() << "nothing shows " << text;
    return {};
  }
};

TEST(LiveModel, ShowsTheTableWithThePercentagesOfItsChanges) {
  Shown shown;
  const auto lines = shown.Lines();
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[0], "  Ticker    Last   Change       %");
  EXPECT_EQ(lines[1], "* MSFT      28.5      0.5   +1.79");
  EXPECT_EQ(lines[2], "* IBM        150      -50  -25.00");
  EXPECT_EQ(lines[3], "* DELL         9        0   +0.00");
  EXPECT_EQ(lines[4], "");
}

TEST(LiveModel, HasNoPercentageWhereThePriceBeforeIsNone) {
  Shown shown;
  shown.rows = {Row("A", 5, 5),
                Row("B", 1, 1 - 1e-15),
                {QuoteValue::Text("C"), QuoteValue(), QuoteValue(1.0)},
                {QuoteValue::Text("D"), QuoteValue::Text("n/a"), QuoteValue::Text("?")},
                {}};
  for (const auto& line : shown.Lines()) EXPECT_THAT(line, Not(HasSubstr("+")));
}

TEST(LiveModel, ColoursPricesByTheSignOfTheirChange) {
  Shown shown;
  for (const char* text : {"28.5", "0.5", "+1.79"})
    EXPECT_EQ(shown.PieceWith(1, text).style.tone, Tone::Up) << text;
  for (const char* text : {"150", "-50", "-25.00"})
    EXPECT_EQ(shown.PieceWith(2, text).style.tone, Tone::Down) << text;
  EXPECT_EQ(shown.PieceWith(3, "9").style.tone, Tone::Plain);
  EXPECT_EQ(shown.PieceWith(1, "MSFT").style.tone, Tone::Plain);
}

TEST(LiveModel, ColoursPricesByTheirLastMoveWhereNoChangeIsKnown) {
  Shown shown;
  shown.model = LiveModel({"Ticker", "Last"});
  shown.rows = {{QuoteValue::Text("A"), QuoteValue(5.0)}};
  EXPECT_EQ(shown.PieceWith(1, "5").style.tone, Tone::Plain);
  shown.rows[0][1] = QuoteValue(4.0);
  EXPECT_EQ(shown.PieceWith(1, "4").style.tone, Tone::Down);
  EXPECT_EQ(shown.PieceWith(1, "4").style.tone, Tone::Down) << "until it goes up";
  shown.rows[0][1] = QuoteValue(4.5);
  EXPECT_EQ(shown.PieceWith(1, "4.5").style.tone, Tone::Up);
}

TEST(LiveModel, MarksWhatChangedInTheLastSecondAndWhatHasGrownOld) {
  Shown shown;
  shown.Draw();
  shown.now += 5s;
  EXPECT_THAT(shown.Lines()[1], StartsWith("  MSFT"));
  shown.rows[0][1] = QuoteValue(28.6);
  EXPECT_THAT(shown.Lines()[1], StartsWith("* MSFT"));
  EXPECT_TRUE(shown.PieceWith(1, "28.6").style.bold);
  EXPECT_FALSE(shown.PieceWith(1, "0.5").style.bold);
  EXPECT_THAT(shown.Lines()[2], StartsWith("  IBM"));
  shown.now += 1s;
  EXPECT_THAT(shown.Lines()[1], StartsWith("  MSFT"));
  EXPECT_FALSE(shown.PieceWith(1, "28.6").style.bold);
  shown.now += 55s;
  EXPECT_THAT(shown.Lines()[2], StartsWith("o IBM"));
  EXPECT_TRUE(shown.PieceWith(2, "150").style.dim);
  EXPECT_THAT(shown.Lines()[1], StartsWith("  MSFT")) << "it changed later";
}

TEST(LiveModel, SortsByTheColumnAndTheWayThatWerePressed) {
  Shown shown;
  shown.rows.push_back({QuoteValue::Text("ZERO"), QuoteValue(), QuoteValue()});
  EXPECT_EQ(shown.Tickers(), "MSFT IBM DELL ZERO ");
  shown.Press(">");
  EXPECT_EQ(shown.Tickers(), "DELL IBM MSFT ZERO ");
  EXPECT_THAT(shown.Lines()[0], HasSubstr("Ticker^"));
  shown.Press(">");
  EXPECT_EQ(shown.Tickers(), "DELL MSFT IBM ZERO ") << "by numbers, not by their texts";
  shown.Press("r");
  EXPECT_EQ(shown.Tickers(), "IBM MSFT DELL ZERO ") << "what is not known stays behind";
  EXPECT_THAT(shown.Lines()[0], HasSubstr("Lastv"));
  shown.Press("<<");
  EXPECT_THAT(shown.Lines()[0], HasSubstr("%v")) << "around the edge";
  shown.Press("t");
  EXPECT_EQ(shown.Tickers(), "MSFT IBM DELL ZERO ");
  shown.Press("r");
  EXPECT_EQ(shown.Tickers(), "ZERO DELL IBM MSFT ");
}

TEST(LiveModel, ScrollsWithinItsRows) {
  Shown shown;
  shown.rows.clear();
  for (int i = 10; i < 40; ++i) shown.rows.push_back(Row(("T" + std::to_string(i)).c_str(), i, 1));
  shown.size = {4, 60};
  EXPECT_EQ(shown.Tickers(), "T10 T11 T12 ");
  shown.Press(Key::Kind::Down);
  EXPECT_EQ(shown.Tickers(), "T11 T12 T13 ");
  shown.Press(Key::Kind::PageDown);
  EXPECT_EQ(shown.Tickers(), "T14 T15 T16 ");
  shown.Press(Key::Kind::End);
  EXPECT_EQ(shown.Tickers(), "T37 T38 T39 ");
  for (int i = 0; i < 50; ++i) shown.Press(Key::Kind::Down);
  EXPECT_EQ(shown.Tickers(), "T37 T38 T39 ");
  shown.Press(Key::Kind::Up);
  EXPECT_EQ(shown.Tickers(), "T36 T37 T38 ");
  shown.Press(Key::Kind::PageUp);
  EXPECT_EQ(shown.Tickers(), "T33 T34 T35 ");
  shown.Press(Key::Kind::Home);
  EXPECT_EQ(shown.Tickers(), "T10 T11 T12 ");
}

TEST(LiveModel, ScrollsColumnsPastTheFirstAndSaysThatThereAreMore) {
  Shown shown;
  shown.size = {6, 24};
  shown.about = {"state", "keys"};
  EXPECT_EQ(shown.Lines()[0], "  Ticker    Last");
  EXPECT_THAT(shown.Lines()[5], HasSubstr("state  columns ->"));
  shown.Press(Key::Kind::Right);
  EXPECT_EQ(shown.Lines()[0], "  Ticker    Change");
  shown.Press(Key::Kind::Right);
  shown.Press(Key::Kind::Right);
  EXPECT_EQ(shown.Lines()[0], "  Ticker        %");
  EXPECT_THAT(shown.Lines()[5], HasSubstr("state  <- columns"));
  shown.Press(Key::Kind::Left);
  EXPECT_EQ(shown.Lines()[0], "  Ticker    Change");
}

TEST(LiveModel, IsNeverLargerThanTheScreen) {
  Shown shown;
  shown.about = {"a long line about the day, which may be longer than a line", "株価株価株価株価株価",
                 "keys"};
  for (std::size_t lines = 0; lines < 12; ++lines) {
    for (std::size_t columns = 0; columns < 70; ++columns) {
      shown.size = {lines, columns};
      const auto picture = shown.Draw();
      ASSERT_LE(picture.size(), lines);
      for (const auto& line : picture) {
        ASSERT_LE(terminal::ColumnsOf(TextOf(line)), columns)
            << TextOf(line) << " of " << lines << "x" << columns;
      }
    }
  }
}

TEST(LiveModel, ShowsTheStateInTheLastLinesAndInReverse) {
  Shown shown;
  shown.about = {"Streaming", "5 quotes", "? help"};
  shown.size = {12, 60};
  const auto picture = shown.Draw();
  EXPECT_THAT(TextOf(picture[9]), StartsWith("Streaming "));
  EXPECT_TRUE(picture[9].front().style.reverse);
  EXPECT_EQ(TextOf(picture[10]), "5 quotes");
  EXPECT_EQ(TextOf(picture[11]), "? help");
}

TEST(LiveModel, ShowsHelpUntilItIsAskedForOnceMore) {
  Shown shown;
  shown.Press("?");
  EXPECT_EQ(shown.Lines()[0], "Keys");
  shown.Press("?");
  EXPECT_THAT(shown.Lines()[0], StartsWith("  Ticker"));
}

TEST(LiveModel, LeavesKeysToOthersThatLeadNowhere) {
  LiveModel model({"Ticker"});
  EXPECT_FALSE(model.Press({Key::Kind::Character, 'q'}));
  EXPECT_TRUE(model.Press({Key::Kind::Character, '?'}));
}

TEST(LiveModel, MakesHostileTextsVisible) {
  Shown shown;
  shown.model = LiveModel({"Tick\033[2Jer", "Last", "Change"});
  shown.rows = {Row("\033[2J\u202E", 1, 1)};
  shown.about = {"gone\033c\n", "\a"};
  for (const auto& line : shown.Lines()) {
    EXPECT_THAT(line, Not(HasSubstr("\033")));
    EXPECT_THAT(line, Not(HasSubstr("\n")));
    EXPECT_THAT(line, Not(HasSubstr("\a")));
    EXPECT_THAT(line, Not(HasSubstr("\u202E")));
  }
}

TEST(LiveModel, KeepsColumnsInPlaceWhenValuesGetShorter) {
  Shown shown;
  shown.rows[0][1] = QuoteValue(123456.75);
  const std::string wide = shown.Lines()[0];
  shown.rows[0][1] = QuoteValue(28.5);
  EXPECT_EQ(shown.Lines()[0], wide);
}

}  // namespace
}  // namespace mirelo::app
