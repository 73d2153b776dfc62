#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirelo::host {
class MessageLoop;
}
namespace mirelo::day {
class QuoteJournal;
class WorkingDay;
}  // namespace mirelo::day

namespace mirelo::app {

// Why quotes cannot be kept in a file of this name; empty where they can. Its ending says of which kind it
// is.
std::string WhyNoAlsoFile(const std::string& file);

// The files beside the workbook in which every quote of a day is kept.
class AlsoFiles {
 public:
  // Opens each of them once, so that one that is refused is told before anything else is done:
  // host::JournalRefused, with a text that says what to do. Error 5 where two names lead to one file.
  explicit AlsoFiles(std::vector<std::filesystem::path> files);
  ~AlsoFiles();
  AlsoFiles(const AlsoFiles&) = delete;
  AlsoFiles& operator=(const AlsoFiles&) = delete;

  // Has the day keep its quotes there, and tells through its Status what a person should know. To be called
  // before the day is started; `loop` must outlive this, and this the day. host::JournalRefused as above.
  void Begin(host::MessageLoop& loop, day::WorkingDay& day);

  // Ends that; the files are complete then.
  void End();

  // Prints how many quotes are in each file, and how many are not. False where some are not.
  bool Summarize() const;

 private:
  struct Kept;

  std::vector<std::filesystem::path> files_;
  std::vector<std::unique_ptr<Kept>> kept_;
};

}  // namespace mirelo::app
