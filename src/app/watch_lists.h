#pragma once

#include <string>
#include <vector>

#include "core/CAppSettings.h"

namespace mirelo::app {

// Lists of tickers that go by a name, kept with the settings. Names are found without regard to case. The
// installed host's registry must be open.
class WatchLists {
 public:
  WatchLists();

  // The names of all lists that hold tickers.
  std::vector<std::string> Names();
  // The tickers of a list, in their order; none for a list that there is not.
  std::vector<std::string> Tickers(const std::string& name);
  // The same; error 5 for a list that there is not, with a text that says what to do.
  std::vector<std::string> Existing(const std::string& name);
  // Errors of CAppSettings::SaveSetting. Without tickers the list is gone.
  void Store(const std::string& name, const std::vector<std::string>& tickers);

 private:
  CAppSettings store_;
};

// The tickers, and behind them those of the list; an empty name stands for none. Error 5 as Existing.
std::vector<std::string> WithList(std::vector<std::string> tickers, const std::string& list);

// Whether a list can bear the name: letters, digits, "-", "_" and "." of ASCII, at most 40.
bool IsListName(const std::string& name);

}  // namespace mirelo::app
