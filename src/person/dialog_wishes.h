#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirelo {

// What somebody wants of the settings dialog.
struct DialogWishes {
  struct Setting {
    std::string key;    // in the system's own spelling
    std::string value;  // that the setting allows
  };
  struct Tick {
    std::string ticker;
    std::string field;
  };

  std::vector<Setting> settings;
  std::vector<std::string> columns;  // of the quote table, from the left; empty to leave them
  std::vector<std::string> tickers;  // of the table, from above; empty to leave them
  std::string list;                  // a watch list of more tickers; empty for none
  std::vector<Tick> ticks;           // fields of vertical tables
  std::vector<std::string> history;  // fields to tick for every ticker, whose columns are shown if need be
  bool charts = false;               // whether to tick the charts of every ticker, too
  bool accepts_costs = false;        // whether to press Go whatever it costs
};

// The fields of a history that somebody names, joined by commas; those that most people want where he names
// none. Throws Unfulfilled for what is no field.
std::vector<std::string> HistoryFields(const std::string& text);

// Adds what the charts and the histories among the wishes cannot be without: the fields that charts show, and
// the settings that switch both on, unless there are wishes for these.
void AddWhatHistoriesNeed(DialogWishes& wishes);

// A wish that the dialog cannot fulfil. The text says why, and what to do unless it is to wish for a setting
// as well: that one ("Seconds=0", and why in brackets where it is not plain) stands by itself, since it
// depends on the front how it is wished for.
class Unfulfilled : public std::runtime_error {
 public:
  explicit Unfulfilled(const std::string& why, std::string setting_to_add = {})
      : std::runtime_error(why), setting_to_add_(std::move(setting_to_add)) {}

  const std::string& setting_to_add() const { return setting_to_add_; }

 private:
  std::string setting_to_add_;
};

// How wishes are written, for texts about them: what stands in front of one's name, and of a setting's.
struct WishSpelling {
  std::string_view name;
  std::string_view setting;
};
inline constexpr WishSpelling kAsOptions{"--", "--set "};  // on a command line
inline constexpr WishSpelling kAsNames{"", "the wish "};   // in a script

}  // namespace mirelo
