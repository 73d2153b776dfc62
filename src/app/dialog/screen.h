#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirelo::app {

// What a program shows at a screen beside the system's own forms and message boxes.
class Screen {
 public:
  enum class Mood { kQuestion, kTrouble };
  // A line of a window, with a button behind it that calls `press`; without a caption there is no button.
  struct Line {
    std::string text;
    std::string button;
    std::function<void()> press;
  };

  virtual ~Screen() = default;

  // A box with a button for each choice, and one that cancels. Which choice was made; nothing for none.
  virtual std::optional<std::size_t> Ask(Mood mood, const std::string& text,
                                         const std::vector<std::string>& choices) = 0;
  // A box with a button that closes it.
  virtual void Tell(Mood mood, const std::string& text) = 0;

  // Boxes that ask for the file of a workbook; nothing when the person wants none. The one asks for a file
  // that is there and begins in `folder`, or where the person keeps documents when that is empty. The other
  // takes any name, proposes one, and asks nothing about a file that is there.
  virtual std::optional<std::filesystem::path> AskForFile(const std::filesystem::path& folder) = 0;
  virtual std::optional<std::filesystem::path> AskForNewFile(const std::filesystem::path& folder,
                                                             const std::string& name) = 0;

  // Shows a line above the form of that name whenever the form is shown from now on.
  virtual void PutAbove(const std::string& form, Line line) = 0;
};

}  // namespace mirelo::app
