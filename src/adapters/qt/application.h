#pragma once

#include <memory>
#include <string>

class QApplication;

namespace mirelo::qt {

// Qt, started. One may exist at a time; the loop and the desktop of windows need it. Numbers and dates of the
// rest of the program stay in the locale that they were in.
//
// Where there is no screen, Qt ends the program instead of failing: ask WhyNoWindows first.
class Application {
 public:
  Application();
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

 private:
  // Qt keeps references to the command line.
  int argument_count_ = 1;
  char program_[7] = "mirelo";
  char* arguments_[2] = {program_, nullptr};
  std::unique_ptr<QApplication> application_;
};

// Why no window can be shown, as a sentence without its full stop; empty when windows can be. It tries, in a
// process of its own. Call it before Qt is started.
std::string WhyNoWindows();

}  // namespace mirelo::qt
