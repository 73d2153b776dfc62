#include "app/calc/office_window.h"

#include <chrono>
#include <string>
#include <system_error>
#include <utility>

#include "adapters/poll/poll_loop.h"
#include "app/calc/extension.h"
#include "app/calc/office_place.h"
#include "app/calc/office_process.h"
#include "app/exit_code.h"
#include "app/interrupt.h"
#include "app/temporary_folder.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kBetweenGlances{100};

// The extensions of all users, and ours beside them, for an office that has not got it.
void LinkExtensions(const OfficePlace& office, const fs::path& folder) {
  PutExtensionInto(folder, office);
  std::error_code error;
  for (fs::directory_iterator entry(office.extensions, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::error_code ignored;
    fs::create_directory_symlink(entry->path(), folder / entry->path().filename(), ignored);
  }
}

}  // namespace

// Ctrl-C in the terminal is no way to end a window in which somebody works, unless it is meant.
int ShowOffice(const OfficePlace& office, const std::optional<fs::path>& file) {
  OfficeStart start;
  start.program = office.Soffice();
  const TemporaryFolder folder;
  if (!IsInstalledForAll(office) && !IsInstalledForUser()) {
    const fs::path extensions = folder.Path() / "extensions";
    LinkExtensions(office, extensions);
    start.arguments.push_back("-env:BUNDLED_EXTENSIONS=" + FileAddress(extensions));
    Err()
        << "The extension is lent to this LibreOffice alone; mirelo calc --install gives it to every one of "
           "yours. One that runs already goes on without it.\n";
  }
  start.arguments.push_back("--calc");
  if (file) start.arguments.push_back(fs::absolute(*file).string());
  poll::PollLoop loop;
  Interrupt interrupt(loop, Interrupt::Second::kIsCounted);
  OfficeProcess process(start);
  bool is_warned = false;
  while (!process.ExitCode()) {
    if (interrupt.Pause(kBetweenGlances)) continue;
    interrupt.Forget();
    if (std::exchange(is_warned, true)) {
      process.Kill();
    } else {
      Err() << "LibreOffice goes on: close its windows. Ctrl-C once more kills it, with what is not saved\n";
    }
  }
  return *process.ExitCode() == 0 ? kGood : kFailed;
}

}  // namespace mirelo::app
