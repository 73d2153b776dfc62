#include "app/windows.h"

#include <utility>

#include "adapters/qt/busy_internet.h"
#include "adapters/qt/choice_box.h"
#include "adapters/qt/file_box.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "linux/linux_host.h"

namespace mirelo::app {

namespace {

constexpr const char* kTitle = "Mirelo";
constexpr qt::FileKind kWorkbooks{"Workbooks (*.xlsx)", "xlsx"};

int StyleFor(Screen::Mood mood) {
  return mood == Screen::Mood::kTrouble ? host::Desktop::kExclamation : host::Desktop::kInformation;
}

class QtScreen : public Screen {
 public:
  QtScreen(qt::QtLoop& loop, qt::QtDesktop& desktop) : loop_(loop), desktop_(desktop) {}

  std::optional<std::size_t> Ask(Mood mood, const std::string& text,
                                 const std::vector<std::string>& choices) override {
    return qt::ShowChoiceBox(loop_, desktop_.TopWindow(), {text, kTitle, StyleFor(mood)}, choices);
  }

  void Tell(Mood mood, const std::string& text) override {
    desktop_.MessageBox(text, StyleFor(mood), kTitle);
  }

  std::optional<std::filesystem::path> AskForFile(const std::filesystem::path& folder) override {
    return qt::AskForFile(loop_, desktop_.TopWindow(), "Open Workbook", kWorkbooks, folder);
  }

  std::optional<std::filesystem::path> AskForNewFile(const std::filesystem::path& folder,
                                                     const std::string& name) override {
    return qt::AskForNewFile(loop_, desktop_.TopWindow(), "New Workbook", kWorkbooks, folder, name);
  }

  void PutAbove(const std::string& form, Line line) override {
    desktop_.PutAbove(form, {line.text, line.button, line.press});
  }

 private:
  qt::QtLoop& loop_;
  qt::QtDesktop& desktop_;
};

struct Alone {
  qt::QtLoop loop;
  qt::QtDesktop desktop{loop};
};

class LoneScreen final : private Alone, public QtScreen {
 public:
  LoneScreen() : QtScreen(loop, desktop) {}
};

}  // namespace

std::unique_ptr<Screen> ShowWindows(LinuxHost& host) {
  auto loop = std::make_unique<qt::QtLoop>();
  auto desktop = std::make_unique<qt::QtDesktop>(*loop);
  auto screen = std::make_unique<QtScreen>(*loop, *desktop);
  host.ShowOn(std::move(desktop));
  host.RunOn(std::move(loop));
  host.FetchThrough([](host::WinInetApi& inner) { return std::make_unique<qt::BusyInternet>(inner); });
  return screen;
}

std::unique_ptr<Screen> ShowAlone() { return std::make_unique<LoneScreen>(); }

}  // namespace mirelo::app
