#pragma once

#include <string>
#include <vector>

#include "dialog/grid_test.h"

namespace mirelo::testing {

// The tab of columns with a few of them in each list, and no button on yet.
class ListsTest : public PlainGridTest {
 protected:
  ListsTest() {
    form.C1TTickersSettings.UserSelect(kFields);
    Fill({"Tick", "Volume", "High"}, {"Ticker", "Last", "Bid", "Ask"});
  }

  void Fill(const Texts& left, const Texts& right) {
    form.ListLeft.Clear();
    for (const auto& text : left) form.ListLeft.AddItem(text);
    form.ListRight.Clear();
    for (const auto& text : right) form.ListRight.AddItem(text);
    for (forms::Button* button : MoveButtons()) button->Enabled(false);
  }

  std::vector<forms::Button*> MoveButtons() {
    return {&form.ButRight, &form.ButAllRight, &form.ButLeft, &form.ButAllLeft, &form.ButUp, &form.ButDown};
  }
  // The names of those that are on, without "But".
  Texts ButtonsOn() {
    Texts names;
    for (const forms::Button* button : MoveButtons()) {
      if (button->Enabled()) names.push_back(button->Name().substr(3));
    }
    return names;
  }

  const Texts& Left() const { return form.ListLeft.Items(); }
  const Texts& Right() const { return form.ListRight.Items(); }
  std::string SelectedLeft() const { return Selected(form.ListLeft); }
  std::string SelectedRight() const { return Selected(form.ListRight); }

 private:
  static std::string Selected(const forms::ListBox& list) {
    return list.ListIndex() < 0 ? "nothing" : list.List(list.ListIndex());
  }
};

}  // namespace mirelo::testing
