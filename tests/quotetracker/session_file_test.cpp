#include "quotetracker/session_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

#include "support/temp_directory.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::TempDirectory;

std::vector<SessionChunk> ReadAll(const std::string& path) {
  SessionReader reader(path);
  std::vector<SessionChunk> chunks;
  while (auto chunk = reader.Next()) chunks.push_back(*std::move(chunk));
  return chunks;
}

std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class SessionFile : public ::testing::Test {
 protected:
  void WriteFile(std::string_view bytes) { std::ofstream(path_, std::ios::binary) << bytes; }

  // A good session of two chunks.
  std::string GoodBytes() {
    SessionWriter writer(path_);
    writer.Add(5us, "first");
    writer.Add(1'000'005us, "second one");
    return FileBytes(path_);
  }

  std::string Refusal() {
    try {
      CheckSession(path_);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "accepted";
  }

  TempDirectory directory_;
  std::string path_ = (directory_ / "session").string();
};

TEST_F(SessionFile, ReadsBackWhatWasWritten) {
  std::string every_byte;
  for (int i = 0; i < 256; ++i) every_byte += static_cast<char>(i);
  const std::string large(200'000, 'x');
  {
    SessionWriter writer(path_);
    writer.Add(0us, every_byte);
    writer.Add(1us, "\0"s);
    writer.Add(3'600'000'000us, large);
  }
  EXPECT_THAT(ReadAll(path_), ElementsAre(SessionChunk{0us, every_byte}, SessionChunk{1us, "\0"s},
                                          SessionChunk{3'600'000'000us, large}));
  EXPECT_EQ(CheckSession(path_), 3U);
}

TEST_F(SessionFile, HasTheBytesThatItsFormatStates) {
  {
    SessionWriter writer(path_);
    writer.Add(0x0102us, "123456789");
  }
  // CBF43926 is the known CRC-32 of these nine digits.
  EXPECT_EQ(FileBytes(path_), "QTSESS\r\n\x01\0\0\0\0\0\0\0"s + "\x02\x01\0\0\0\0\0\0"s + "\x09\0\0\0"s +
                                  "\x26\x39\xF4\xCB"s + "123456789");
}

TEST_F(SessionFile, MayHoldNoChunk) {
  { SessionWriter writer(path_); }
  EXPECT_THAT(ReadAll(path_), IsEmpty());
}

TEST_F(SessionFile, IsWholeWhileItIsBeingWritten) {
  SessionWriter writer(path_);
  writer.Add(1us, "one");
  EXPECT_EQ(CheckSession(path_), 1U);
  writer.Add(2us, "two");
  EXPECT_EQ(CheckSession(path_), 2U);
}

TEST_F(SessionFile, LeavesOutChunksWithoutBytes) {
  {
    SessionWriter writer(path_);
    writer.Add(1us, "");
  }
  EXPECT_THAT(ReadAll(path_), IsEmpty());
}

TEST_F(SessionFile, KeepsItsTimesInOrder) {
  {
    SessionWriter writer(path_);
    writer.Add(9us, "a");
    writer.Add(3us, "b");
  }
  EXPECT_THAT(ReadAll(path_), ElementsAre(SessionChunk{9us, "a"}, SessionChunk{9us, "b"}));
}

TEST_F(SessionFile, IsRefusedWhenItCannotBeRead) {
  EXPECT_THAT(Refusal(), HasSubstr(path_ + ": cannot be read: "));
}

TEST_F(SessionFile, IsNotWrittenWhereNothingCanBe) {
  EXPECT_THROW(SessionWriter((directory_ / "none" / "session").string()), std::runtime_error);
}

TEST_F(SessionFile, IsRefusedWhenItIsNone) {
  for (const std::string& bytes :
       {""s, "QTSESS"s, "Ticker,Date,Time,Last\r\n"s, "QTSESS\n\n\x01\0\0\0\0\0\0\0"s}) {
    SCOPED_TRACE(bytes);
    WriteFile(bytes);
    EXPECT_EQ(Refusal(), path_ + ": is no recorded session");
  }
}

TEST_F(SessionFile, IsRefusedWhenItsVersionIsUnknown) {
  std::string bytes = GoodBytes();
  bytes[8] = 2;
  WriteFile(bytes);
  EXPECT_EQ(Refusal(), path_ + ": is a session of version 2, which this program does not know");
}

TEST_F(SessionFile, IsRefusedWhereverItIsCutOff) {
  const std::string bytes = GoodBytes();
  const std::size_t second = 16 + 16 + 5;
  for (std::size_t length = 17; length < bytes.size(); ++length) {
    if (length == second) continue;  // a whole session of one chunk
    SCOPED_TRACE(length);
    WriteFile(std::string_view(bytes).substr(0, length));
    EXPECT_THAT(Refusal(), HasSubstr("is damaged at byte"));
    EXPECT_THAT(Refusal(), HasSubstr("that is cut off"));
  }
}

TEST_F(SessionFile, IsRefusedForEachByteOfAChunkThatChanged) {
  const std::string good = GoodBytes();
  for (std::size_t at = 16 + 8; at < 16 + 16 + 5; ++at) {
    SCOPED_TRACE(at);
    std::string bytes = good;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x40);
    WriteFile(bytes);
    EXPECT_THAT(Refusal(), HasSubstr("is damaged at byte"));
  }
}

TEST_F(SessionFile, SaysWhatIsWrongWithAChunk) {
  struct Case {
    std::size_t at;
    std::string bytes;
    const char* message;
  };
  const std::size_t second = 16 + 16 + 5;
  const std::string good = GoodBytes();
  for (const Case& c :
       {Case{16 + 8, "\0\0\0\0"s, ": is damaged at byte 16: a chunk of 0 bytes"},
        Case{16 + 8, "\xFF\xFF\xFF\xFF"s, ": is damaged at byte 16: a chunk of 4294967295 bytes"},
        Case{16 + 8, "\0\0\x90\0"s, ": is damaged at byte 32: a chunk that is cut off"},
        Case{16, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, ": is damaged at byte 16: a time that no session has"},
        Case{second, "\0\0\0\0\0\0\0\0"s,
             ": is damaged at byte 37: a chunk that is earlier than the one before it"},
        Case{second + 16, "S", ": is damaged at byte 53: bytes that are not the recorded ones"}}) {
    std::string bytes = good;
    bytes.replace(c.at, c.bytes.size(), c.bytes);
    WriteFile(bytes);
    EXPECT_EQ(Refusal(), path_ + c.message);
  }
}

}  // namespace
}  // namespace mirelo::quotetracker
