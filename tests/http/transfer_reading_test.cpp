#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "http/scripted_transfer.h"

namespace mirelo::testing {
namespace {

class Reading : public ScriptedTransfer {};

TEST_F(Reading, JoinsTheChunksToTheResponse) {
  internet.chunks = {"OK\r\n", std::string(4096, 'x'), "end"};
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "OK\r\n" + std::string(4096, 'x') + "end");
}

TEST_F(Reading, TakesTheBytesAsTextOfTheAnsiCodePage) {
  internet.chunks = {std::string("\x80\xE9\0a", 4)};
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), std::string("\u20AC\u00E9\0a", 7));
}

TEST_F(Reading, EndsAtAFailedReadAsAtTheEndOfTheBody) {
  internet.chunks = {"cut "};
  transfer.OnProgress.Subscribe(
      [&](float, std::int32_t, std::int32_t) { internet.failing = {"InternetReadFile"}; });
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "cut ");
  EXPECT_EQ(states.back(), 11);
}

TEST_F(Reading, GoesOnBehindAFailedReadThatHasBytes) {
  internet.chunks = {"one ", "two"};
  internet.failing = {"InternetReadFile"};
  internet.failing_reads_have_bytes = true;
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "one two");
  EXPECT_EQ(states.back(), 11);
  ASSERT_EQ(progress.size(), 3u);  // the one of the empty last read included
  EXPECT_EQ(std::get<2>(progress[0]), 4);
  EXPECT_EQ(std::get<2>(progress[1]), 7);
  EXPECT_EQ(std::get<2>(progress[2]), 7);
}

TEST_F(Reading, ReplacesTheResponseOfAnEarlierTransfer) {
  internet.chunks = {"first", "", "second"};
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "first");
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "second");
}

TEST_F(Reading, ReportsEachChunkTheEmptyLastOneIncluded) {
  internet.content_length = "6";
  internet.chunks = {"abcd", "ef"};
  int reads = 0;
  internet.on_call = [&](const std::string& name) {
    if (name == "InternetReadFile" && ++reads == 2) clock.Advance(1.5);
  };
  transfer.Execute();
  ASSERT_EQ(progress.size(), 3u);
  const Progress expected[] = {{0.0F, 6, 4}, {1.5F, 6, 6}, {1.5F, 6, 6}};
  for (std::size_t i = 0; i < progress.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_NEAR(std::get<0>(progress[i]), std::get<0>(expected[i]), 1e-3);
    EXPECT_EQ(std::get<1>(progress[i]), std::get<1>(expected[i]));
    EXPECT_EQ(std::get<2>(progress[i]), std::get<2>(expected[i]));
  }
}

TEST_F(Reading, CountsTheSecondsFromMidnightAndSoBackwardsAcrossIt) {
  clock.Set({2011, 1, 20, 23, 59, 59});
  internet.on_call = [&](const std::string& name) {
    if (name == "InternetReadFile") clock.Advance(2);
  };
  transfer.Execute();
  ASSERT_EQ(progress.size(), 1u);
  EXPECT_NEAR(std::get<0>(progress[0]), -86398, 1);
}

TEST_F(Reading, KeepsTheContentTypeWhenTheReplyHasNone) {
  internet.content_type = "text/plain";
  transfer.Execute();
  EXPECT_EQ(transfer.ContentType(), "text/plain");
  internet.content_type.reset();
  transfer.Execute();
  EXPECT_EQ(transfer.ContentType(), "text/plain");
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(Reading, TakesAContentTypeThatIsPresentButEmpty) {
  internet.content_type = "text/plain";
  transfer.Execute();
  internet.content_type = "";
  transfer.Execute();
  EXPECT_EQ(transfer.ContentType(), "");
}

TEST_F(Reading, ForgetsTheContentLengthWhenTheReplyHasNone) {
  internet.content_length = "12";
  transfer.Execute();
  internet.content_length.reset();
  transfer.Execute();
  EXPECT_EQ(std::get<1>(progress.front()), 12);
  EXPECT_EQ(std::get<1>(progress.back()), 0);
}

TEST_F(Reading, CountsTheBytesOfEachTransferAnew) {
  internet.chunks = {"first", "", "and"};
  transfer.Execute();
  transfer.Execute();
  EXPECT_EQ(std::get<2>(progress.back()), 3);
}

TEST_F(Reading, CountsUpToTwoGibibytes) {
  internet.claims = {2147483646, 1};
  transfer.Execute();
  EXPECT_EQ(std::get<2>(progress.back()), 2147483647);
  EXPECT_EQ(states.back(), 11);
}

TEST_F(Reading, RaisesWhenTheCountOverflowsBehindThem) {
  internet.claims = {2147483647, 1};
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
  ASSERT_EQ(progress.size(), 1u);
  EXPECT_EQ(std::get<2>(progress.front()), 2147483647);
  EXPECT_FALSE(transfer.SuccessDone());
  EXPECT_EQ(states.back(), 9);
  EXPECT_EQ(Closed(), std::vector<std::string>{});  // they stay open
}

TEST_F(Reading, AddsNoMoreThanTheBufferWhateverTheCountSays) {
  internet.chunks = {"one", "two"};
  internet.claims = {3, 100'000};
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "onetwo" + std::string(4096 - 3, ' '));
}

TEST_F(Reading, KeepsTheMethodWhenTheReplyCannotTellIt) {
  transfer.Method("GET");
  internet.request_method = "POST";
  internet.failing = {"HttpQueryInfoA"};
  transfer.Execute();
  EXPECT_EQ(transfer.Method(), "GET");
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(Reading, TakesTheContentLengthAsTheNumberAtItsStart) {
  const struct {
    std::string header;
    std::int32_t length;
  } cases[] = {
      {"12", 12},
      {" 12", 12},
      {"12 bytes", 12},
      {"1e3", 1000},
      {"&H10", 16},
      {"2.5", 2},
      {"3.5", 4},
      {"-5", -5},
      {"", 0},
      {"many", 0},
      {"2147483647", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"2147483647.4", 2147483647},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.header);
    internet.content_length = each.header;
    transfer.Execute();
    EXPECT_EQ(std::get<1>(progress.back()), each.length);
    EXPECT_TRUE(transfer.SuccessDone());
  }
}

TEST_F(Reading, RaisesWhenTheContentLengthOverflows) {
  for (const std::string header : {"2147483648", "-2147483649", "99999999999999999999", "1E300"}) {
    SCOPED_TRACE(header);
    internet.calls.clear();
    internet.content_length = header;
    ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
    EXPECT_FALSE(transfer.SuccessDone());
    EXPECT_EQ(Closed(), std::vector<std::string>{});  // they stay open
  }
}

}  // namespace
}  // namespace mirelo::testing
