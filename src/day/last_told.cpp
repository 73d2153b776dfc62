#include "day/last_told.h"

namespace mirelo::day {

void LastTold::Tell(const std::string& text, std::int64_t quotes) {
  told_ = {text, quotes};
  Keep(text);
}

void LastTold::Explain(const std::string& text, std::int64_t quotes) {
  explained_ = {text, quotes};
  Keep(text);
}

std::string LastTold::Line(std::int64_t quotes) const {
  for (const Said* said : {&explained_, &told_}) {
    if (!said->text.empty() && said->quotes == quotes) return said->text;
  }
  return {};
}

void LastTold::Keep(const std::string& text) {
  std::erase(lines_, text);
  if (lines_.size() == kMostLines) lines_.erase(lines_.begin());
  lines_.push_back(text);
}

}  // namespace mirelo::day
