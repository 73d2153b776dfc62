// mirelo dialog where no window can be shown.

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "app/program.h"
#include "support/built_program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The variables that name a screen, none of which is set.
class DialogWithoutScreen : public ::testing::Test {
 protected:
  DialogWithoutScreen() {
    for (const char* variable : kVariables) ::unsetenv(variable);
  }
  ProgramResult Run(const std::vector<std::string>& arguments) {
    return RunMirelo(folder_.path(), arguments);
  }

  static constexpr const char* kVariables[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  TempDirectory folder_;
};

TEST_F(DialogWithoutScreen, SaysSoAndHowToGoOn) {
  const auto result = Run({"dialog"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("error: there is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set"),
                    HasSubstr("mirelo go"), HasSubstr("mirelo settings")));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "home/.local/share/mirelo/registry.db"));
}

TEST_F(DialogWithoutScreen, SaysSoBeforeAWorkingDay) {
  const auto result = Run({"run", "--window", "--for", "1s"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("error: there is no screen"), HasSubstr("mirelo go")));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "quotes.xlsx"));
}

TEST_F(DialogWithoutScreen, EndsInOrderWhenTheScreenCannotBeReached) {
  const std::pair<const char*, const char*> broken[] = {{"DISPLAY", ":4711"},
                                                        {"DISPLAY", "no display"},
                                                        {"WAYLAND_DISPLAY", "no-socket"},
                                                        {"QT_QPA_PLATFORM", "none"}};
  for (const auto& [variable, value] : broken) {
    SCOPED_TRACE(variable);
    ::setenv(variable, value, 1);
    const auto result = Run({"dialog"});
    ::unsetenv(variable);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("error: the screen cannot be reached: " + std::string(variable) +
                                            " is \"" + value + "\""),
                                  HasSubstr("mirelo go")));
  }
}

TEST_F(DialogWithoutScreen, TellsWhatToInstallWhereThereAreNoWindows) {
  const auto alone = folder_ / "mirelo";
  std::filesystem::copy_file(BuiltProgram("mirelo"), alone);
  const auto result = RunProgram(alone, folder_.path(), {"dialog"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_THAT(result.err, AllOf(HasSubstr("error: cannot start " + (folder_ / "mirelo-windows").string() +
                                          ": No such file or directory"),
                                HasSubstr("libqt6widgets6"), HasSubstr("mirelo go")));
}

TEST_F(DialogWithoutScreen, LeavesOtherCommandsAsTheyAre) {
  ::setenv("DISPLAY", ":4711", 1);
  const auto result = Run({"settings", "list"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
