#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace mirelo::app {

// A program that runs beside this one and is ended with it: SIGTERM at destruction, SIGKILL if it has not
// gone two seconds later. Its standard output can be read line by line; standard error is shared.
class ChildProcess {
 public:
  // Raises error 53 (with the reason and the path as text) when the program cannot be started.
  ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // The next line of its output, without the line end. Nothing when the output ended or `patience` ran
  // out; without patience what has come already.
  std::optional<std::string> ReadLine(std::chrono::milliseconds patience);

  bool IsRunning();
  pid_t Id() const { return pid_; }  // -1 once it is known to have ended

  // Sends it a signal; one that has ended gets none.
  void Signal(int signal);
  // Waits for its end. The result is its exit code, or 128 and the number of the signal that ended it; -1
  // when `patience` ran out.
  int Wait(std::chrono::milliseconds patience);

 private:
  void Stop();

  pid_t pid_ = -1;
  int status_ = 0;  // as waitpid(2) gave it, once it has ended
  int output_ = -1;
  std::string buffered_;
};

// The folder that this program's own executable lies in; where another one's process runs this program, as an
// office does, it has to say which that is.
std::filesystem::path ProgramFolder();
void SetProgramFolder(std::filesystem::path folder);

}  // namespace mirelo::app
