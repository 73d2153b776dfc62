// mirelo settings and mirelo credentials, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "adapters/sqlite/database.h"
#include "app/program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Settings : public ::testing::Test {
 protected:
  ProgramResult Run(std::vector<std::string> arguments, const std::string& input = "") {
    arguments.insert(arguments.begin(), "settings");
    return RunMirelo(folder_.path(), arguments, input);
  }
  std::string Get(const std::string& name) { return Run({"get", name}).out; }

  TempDirectory folder_;
};

TEST_F(Settings, AreTheirDefaultsAtFirst) {
  EXPECT_EQ(Get("HTTPPort"), "16239\n");
  EXPECT_EQ(Get("webaddress"), "127.0.0.1\n");
}

TEST_F(Settings, KeepWhatIsSet) {
  const auto result = Run({"set", "HTTPPort", "8080"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(Get("HTTPPort"), "8080\n");
}

TEST_F(Settings, RefuseWhatNoReaderCouldUse) {
  const auto result = Run({"set", "HTTPPort", "eighty"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("a port from 1 to 32767"));
  EXPECT_EQ(Get("HTTPPort"), "16239\n");
}

TEST_F(Settings, AreStoredInTheirOwnSpelling) {
  EXPECT_EQ(Run({"set", "ListRight", "ticker, last"}).exit_code, 0);
  EXPECT_EQ(Get("ListRight"), "Ticker,Last\n");
  EXPECT_EQ(Run({"set", "Style", "yellow"}).exit_code, 0);
  EXPECT_EQ(Get("Style"), "Yellow\n");
}

TEST_F(Settings, OfOlderVersionsThatNobodyCanUseAreTold) {
  Run({"set", "Style", "Green"});
  const auto file = folder_ / "home/.local/share/mirelo/registry.db";
  sqlite::Database(file).Execute("UPDATE value SET data = CAST('Red' || char(0) AS BLOB)");
  EXPECT_THAT(Run({"list"}).out,
              HasSubstr("    This value is of no use: it must be Blue, Green, Yellow or None.\n"));
}

TEST_F(Settings, RefuseANameThatNobodyKnows) {
  const auto result = Run({"set", "HTPPort", "80"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("HTPPort"), HasSubstr("mirelo settings list")));
}

TEST_F(Settings, GoBackToTheirDefaults) {
  Run({"set", "Seconds", "7"});
  EXPECT_EQ(Run({"delete", "Seconds"}).exit_code, 0);
  EXPECT_EQ(Get("Seconds"), "10\n");
}

TEST_F(Settings, AreListedWithValueDefaultAndMeaning) {
  Run({"set", "Seconds", "7"});
  Run({"set", "WidthField\\Ticker", "1500"});
  const auto result = Run({"list"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("Seconds"), HasSubstr("10 (dialog: 60)"),
                    HasSubstr("Port of QuoteTracker's HTTP interface."), HasSubstr("WidthField\\Ticker")));
}

TEST_F(Settings, TravelAsText) {
  Run({"set", "Seconds", "7"});
  ASSERT_EQ(Run({"export", "mine.txt"}).exit_code, 0);
  Run({"set", "Seconds", "8"});
  const auto result = Run({"import", "mine.txt"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(Get("Seconds"), "7\n");
}

TEST_F(Settings, TravelThroughTheStandardStreams) {
  Run({"set", "Seconds", "7"});
  const std::string text = Run({"export"}).out;
  Run({"set", "Seconds", "8"});
  EXPECT_EQ(Run({"import"}, text).exit_code, 0);
  EXPECT_EQ(Get("Seconds"), "7\n");
}

TEST_F(Settings, AreImportedAllOrNone) {
  const auto result = Run({"import"}, "Settings\tSeconds\ttext\t7\nSettings\tHTTPPort\ttext\teighty\n");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("Line 2"));
  EXPECT_EQ(Get("Seconds"), "10\n");
}

TEST_F(Settings, SayWhyTheyCouldNotBeStored) {
  ASSERT_EQ(Run({"set", "Seconds", "7"}).exit_code, 0);
  const auto file = folder_ / "home/.local/share/mirelo/registry.db";
  sqlite::Database(file).Execute(
      "CREATE TRIGGER refuse BEFORE UPDATE ON value BEGIN SELECT RAISE(ABORT, 'no room'); END");
  const std::string why = "error: Failed saving the application setting. The settings file " + file.string() +
                          " cannot be used: no room\n";
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{"set", "Seconds", "8"}, {"delete", "Seconds"}, {"import", "-"}}) {
    const auto result = Run(command, "Settings\tSeconds\ttext\t8\n");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, why);
  }
  EXPECT_EQ(Get("Seconds"), "7\n");
}

TEST_F(Settings, NameTheFileThatCannotBeReadOrWritten) {
  EXPECT_EQ(Run({"import", "absent.txt"}).err, "error: cannot read absent.txt: No such file or directory\n");
  EXPECT_EQ(Run({"import", "/proc"}).err, "error: cannot read /proc: Is a directory\n");
  const auto result = Run({"export", "/proc/nothing/mine.txt"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("/proc/nothing/mine.txt"));
}

TEST_F(Settings, AreNotImportedFromWhatDoesNotEnd) {
  const auto result = Run({"import", "/dev/zero"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "error: cannot read /dev/zero: it is longer than 16 MiB, as no settings are\n");
  EXPECT_EQ(Run({"import", "-"}, std::string((16 << 20) + 1, '\n')).exit_code, 1);
}

class Credentials : public ::testing::Test {
 protected:
  ProgramResult Run(const std::string& command, const std::string& input = "") {
    return RunMirelo(folder_.path(), {"credentials", command}, input);
  }

  TempDirectory folder_;
};

TEST_F(Credentials, AreReadFromTheStandardInputAndTheSecretIsNeverShown) {
  const auto stored = Run("set", "Demo\nsesame\n");
  EXPECT_EQ(stored.exit_code, 0) << stored.err;
  EXPECT_THAT(stored.out + stored.err, Not(HasSubstr("sesame")));
  EXPECT_EQ(Run("show-name").out, "Demo\n");
}

TEST_F(Credentials, AreBothNeeded) {
  const auto result = Run("set", "Demo\n");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("Application secret is missing"));
  EXPECT_EQ(Run("show-name").exit_code, 1);
}

TEST_F(Credentials, CanBeForgotten) {
  Run("set", "Demo\nsesame\n");
  EXPECT_EQ(Run("clear").exit_code, 0);
  const auto result = Run("show-name");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_THAT(result.err, HasSubstr("mirelo credentials set"));
}

}  // namespace
}  // namespace mirelo::testing
