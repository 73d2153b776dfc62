#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/dialog/screen.h"

namespace mirelo::testing {

// A screen at which somebody answers as the test has said, in that order. Who is asked more than that gives
// up, and the test fails.
class ScriptedScreen : public app::Screen {
 public:
  // The next answers: the button that is pressed (empty for Cancel), the file that is named (empty for none).
  std::deque<std::string> presses;
  std::deque<std::filesystem::path> names;

  std::vector<std::string> asked;     // the texts of questions
  std::vector<std::string> told;      // and of messages
  std::vector<std::string> proposed;  // where a box for files began, with the name that it proposed
  Line line;                          // the last that was put above a form
  std::vector<std::string> lines;     // the texts of all

  std::optional<std::size_t> Ask(Mood, const std::string& text,
                                 const std::vector<std::string>& choices) override {
    asked.push_back(text);
    const auto press = Next(presses, text);
    if (!press || press->empty()) return std::nullopt;
    for (std::size_t i = 0; i < choices.size(); ++i) {
      if (choices[i] == *press) return i;
    }
    ADD_FAILURE() << "no button " << *press << " below: " << text;
    return std::nullopt;
  }
  void Tell(Mood, const std::string& text) override { told.push_back(text); }
  std::optional<std::filesystem::path> AskForFile(const std::filesystem::path& folder) override {
    proposed.push_back(folder.string());
    return NextName();
  }
  std::optional<std::filesystem::path> AskForNewFile(const std::filesystem::path& folder,
                                                     const std::string& name) override {
    proposed.push_back((folder / name).string());
    return NextName();
  }
  void PutAbove(const std::string& form, Line put) override {
    EXPECT_EQ(form, "frmMirelo");
    line = std::move(put);
    lines.push_back(line.text);
  }

 private:
  std::optional<std::filesystem::path> NextName() {
    const auto name = Next(names, "for a file");
    return name && !name->empty() ? name : std::nullopt;
  }
  template <class Answer>
  std::optional<Answer> Next(std::deque<Answer>& answers, const std::string& question) {
    if (answers.empty()) {
      ADD_FAILURE() << "asked once too often: " << question;
      return std::nullopt;
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace mirelo::testing
