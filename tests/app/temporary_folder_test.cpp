#include "app/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "support/environment_variable.h"
#include "support/temp_directory.h"

namespace mirelo::app {
namespace {

namespace fs = std::filesystem;

class TemporaryFolders : public ::testing::Test {
 protected:
  // A folder with something in it, as a process leaves it that is killed.
  fs::path LeftByAKilledProcess() const {
    const pid_t process = ::fork();
    if (process == 0) {
      const TemporaryFolder folder;
      std::ofstream(folder.Path() / "registry.db") << "settings";
      ::_exit(0);
    }
    ::waitpid(process, nullptr, 0);
    return fs::directory_iterator(below_.path())->path();
  }
  static void MakeOld(const fs::path& folder) {
    fs::last_write_time(folder, fs::file_time_type::clock::now() - std::chrono::minutes(2));
  }

  testing::TempDirectory below_;

 private:
  testing::EnvironmentVariable temporary_{"TMPDIR", below_.path().c_str()};
};

TEST_F(TemporaryFolders, OfAKilledProcessAreRemovedByTheNextOne) {
  const fs::path left = LeftByAKilledProcess();
  MakeOld(left);
  const TemporaryFolder next;
  EXPECT_FALSE(fs::exists(left));
  EXPECT_TRUE(fs::is_directory(next.Path()));
}

TEST_F(TemporaryFolders, OfALivingProcessStayHoweverOldTheyAre) {
  const TemporaryFolder mine;
  MakeOld(mine.Path());
  const TemporaryFolder next;
  EXPECT_TRUE(fs::is_directory(mine.Path()));
}

TEST_F(TemporaryFolders, ThatAreNewStay) {
  const fs::path left = LeftByAKilledProcess();
  const TemporaryFolder next;
  EXPECT_TRUE(fs::exists(left));
}

TEST_F(TemporaryFolders, AreGoneAtTheirEnd) {
  { const TemporaryFolder folder; }
  EXPECT_TRUE(fs::is_empty(below_.path()));
}

}  // namespace
}  // namespace mirelo::app
