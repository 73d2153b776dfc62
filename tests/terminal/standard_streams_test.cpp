#include "terminal/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/memory_shortage.h"
#include "support/temp_directory.h"

namespace mirelo::terminal {
namespace {

// A file that two streams write, as a terminal is.
class SharedFile {
 public:
  SharedFile() : descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600)) {}
  ~SharedFile() { ::close(descriptor); }

  std::string Text() const {
    std::ifstream file(path_);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

 private:
  testing::TempDirectory folder_;
  std::filesystem::path path_ = folder_ / "file";

 public:
  const int descriptor;
};

TEST(StandardStream, TakesNoMemoryForWordsWhereThereMayBeNone) {
  static constexpr char words[] = "words that are longer than what a text has room for in itself\n";
  SharedFile file;
  StandardStream err(file.descriptor);
  err << "before ";
  bool memory_was_asked_for = true;
  {
    const testing::MemoryShortage shortage;  // the first to ask for any fails
    err.PutWithoutMemory(words);
    try {
      std::vector<char>(1).clear();
    } catch (const std::bad_alloc&) {
      memory_was_asked_for = false;
    }
  }
  EXPECT_FALSE(memory_was_asked_for);
  EXPECT_EQ(file.Text(), std::string("before ") + words);
}

TEST(StandardStream, WaitsForItsFlush) {
  SharedFile file;
  StandardStream out(file.descriptor);
  out << "one\n";
  EXPECT_EQ(file.Text(), "");
  out.Flush();
  EXPECT_EQ(file.Text(), "one\n");
  EXPECT_TRUE(out.Good());
}

TEST(StandardStream, WritesMuchAtOnceAndTheRestAtItsEnd) {
  SharedFile file;
  {
    StandardStream out(file.descriptor);
    out << std::string(100'000, 'x');
    EXPECT_EQ(file.Text().size(), 100'000U);
    out << "end";
  }
  EXPECT_EQ(file.Text().size(), 100'003U);
}

TEST(StandardStream, ForComplaintsWritesWholeLinesBehindWhatWasSaidBefore) {
  SharedFile file;
  StandardStream out(file.descriptor);
  StandardStream err(file.descriptor, out);
  out << "first\n";
  err << "second: " << std::string("a\nb");
  EXPECT_EQ(file.Text(), "");
  err << "\n";
  EXPECT_EQ(file.Text(), "first\nsecond: a\\nb\n");
}

TEST(StandardStream, WaitsAsLongAsItIsHeld) {
  SharedFile file;
  StandardStream out(file.descriptor);
  StandardStream err(file.descriptor, out);
  err.Hold();
  err << "first\n";
  err.Flush();
  EXPECT_EQ(file.Text(), "");
  err << "second\n";
  err.Release();
  EXPECT_EQ(file.Text(), "first\nsecond\n");
  err << "third\n";
  EXPECT_EQ(file.Text(), "first\nsecond\nthird\n");
}

TEST(StandardStream, SaysThatItsReaderHasGone) {
  std::signal(SIGPIPE, SIG_IGN);
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ::close(ends[0]);
  StandardStream out(ends[1]);
  EXPECT_FALSE(out.IsTerminal());
  EXPECT_EQ(out.LineWidth(), 0U);
  out << "text";
  EXPECT_TRUE(out.Good()) << "nothing was tried";
  out.Flush();
  EXPECT_FALSE(out.Good());
  EXPECT_TRUE(out.ReaderHasGone());
  out.Forgive();
  EXPECT_TRUE(out.Good());
  ::close(ends[1]);
}

TEST(StandardStream, SaysThatThereIsNoRoom) {
  const int full = ::open("/dev/full", O_WRONLY);
  StandardStream out(full);
  out << "text";
  out.Flush();
  EXPECT_FALSE(out.Good());
  EXPECT_FALSE(out.ReaderHasGone());
  EXPECT_EQ(out.Trouble(), "No space left on device");
  ::close(full);
}

// Otherwise the next file that is opened would get what is printed.
TEST(StandardStreams, AreFilledWhereTheyWereClosed) {
  testing::ChildProcess child([](const testing::ChildProcess::Test& test) {
    for (int descriptor = 0; descriptor <= 2; ++descriptor) ::close(descriptor);
    PrepareStandardStreams();
    const int next = ::open("/dev/null", O_RDWR);
    Out() << "text";
    Out().Flush();
    test.Report(next);
    test.Report(Out().Good() ? 1 : 0);
    char byte = 0;
    test.Report(static_cast<std::int32_t>(::read(STDIN_FILENO, &byte, 1)));
  });
  std::int32_t next = 0;
  std::int32_t good = 1;
  std::int32_t read = 0;
  ASSERT_TRUE(child.Read(next) && child.Read(good) && child.Read(read));
  EXPECT_GT(next, 2);
  EXPECT_EQ(good, 0) << "nobody can have read it";
  EXPECT_EQ(read, -1);
  EXPECT_TRUE(child.Finish());
}

}  // namespace
}  // namespace mirelo::terminal
