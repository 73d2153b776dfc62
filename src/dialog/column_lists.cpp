// The two lists of columns, and the buttons that move entries between and in them. The first entry of
// ListRight is the ticker column, which no button moves.

#include <cstdint>
#include <string>

#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

namespace {

using forms::ListBox;

constexpr std::int32_t kNothing = -1;  // index of no entry

// The statements of these are the calling routine's.

// Takes the selected entry out of the list; without a selection `text` stays as it is.
void TakeSelected(Frame& frame, ListBox& list, std::string& text) {
  std::int32_t index = 0;
  STEP(index = list.ListIndex());
  if (index > kNothing) {
    STEP(text = list.List(index));
    STEP(list.RemoveItem(index));
  }
}

// Selects an entry and moves it to the end of the other list.
void MoveEntry(Frame& frame, ListBox& from, std::int32_t index, ListBox& to) {
  std::string text;
  STEP(from.ListIndex(index));
  STEP(text = from.List(index));
  STEP(from.RemoveItem(index));
  STEP(to.AddItem(text));
}

// Moves the selected entry so many places down, and selects it there.
void ShiftSelected(Frame& frame, ListBox& list, std::int32_t places) {
  std::int32_t index = 0;
  std::string text;
  STEP(index = list.ListIndex());
  STEP(text = list.List(index));
  STEP(list.RemoveItem(index));
  STEP(list.AddItem(text, index + places));
  STEP(list.ListIndex(index + places));
}

}  // namespace

void frmMirelo::ButLeft_Click() {
  Routine("Mirelo.frmMirelo.ButLeft_Click", [&](Frame& frame) {
    STEP(MoveToLeft());
    frame.pop();
  });
}

void frmMirelo::ButRight_Click() {
  Routine("Mirelo.frmMirelo.ButRight_Click", [&](Frame& frame) {
    STEP(MoveToRight());
    frame.pop();
  });
}

void frmMirelo::ListLeft_DblClick() {
  Routine("Mirelo.frmMirelo.ListLeft_DblClick", [&](Frame& frame) {
    STEP(MoveToRight());
    frame.pop();
  });
}

void frmMirelo::ListRight_DblClick() {
  Routine("Mirelo.frmMirelo.ListRight_DblClick", [&](Frame& frame) {
    if (frame.test([&] { return ListRight.ListIndex() != 0; })) {
      STEP(MoveToLeft());
    }
    frame.pop();
  });
}

void frmMirelo::MoveToLeft() {
  Routine("Mirelo.frmMirelo.MoveToLeft", [&](Frame& frame) {
    std::string text;  // stays empty without a selection, and is added all the same
    TakeSelected(frame, ListRight, text);
    STEP(ListLeft.AddItem(text));
    STEP(ListLeft.ListIndex(ListLeft.ListCount() - 1));
    STEP(ListLeft.SetFocus());
    STEP(ButRight.Enabled(true));
    STEP(ButAllRight.Enabled(true));
    STEP(ButLeft.Enabled(false));
    STEP(ButAllLeft.Enabled(false));
    STEP(ButUp.Enabled(false));
    STEP(ButDown.Enabled(false));
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::MoveToRight() {
  Routine("Mirelo.frmMirelo.MoveToRight", [&](Frame& frame) {
    std::string text;  // as in MoveToLeft
    TakeSelected(frame, ListLeft, text);
    STEP(ListRight.AddItem(text));
    STEP(ListRight.ListIndex(ListRight.ListCount() - 1));
    STEP(ListRight.SetFocus());
    STEP(ButLeft.Enabled(true));
    STEP(ButAllLeft.Enabled(true));
    STEP(ButRight.Enabled(false));
    STEP(ButAllRight.Enabled(false));
    STEP(EnableUpDn());
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::ButAllLeft_Click() {
  Routine("Mirelo.frmMirelo.ButAllLeft_Click", [&](Frame& frame) {
    for ([[maybe_unused]] const std::int32_t n : frame.loop([&] {
           return Bounds{1, ListRight.ListCount() - 1};
         })) {
      MoveEntry(frame, ListRight, 1, ListLeft);
    }
    STEP(ButLeft.Enabled(false));
    STEP(ButAllLeft.Enabled(false));
    STEP(ButRight.Enabled(true));
    STEP(ButAllRight.Enabled(true));
    STEP(ListLeft.ListIndex(0));
    STEP(ListLeft.SetFocus());
    STEP(EnableUpDn());
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::ButAllRight_Click() {
  Routine("Mirelo.frmMirelo.ButAllRight_Click", [&](Frame& frame) {
    for ([[maybe_unused]] const std::int32_t n : frame.loop([&] {
           return Bounds{1, ListLeft.ListCount()};
         })) {
      MoveEntry(frame, ListLeft, 0, ListRight);
    }
    STEP(ButLeft.Enabled(true));
    STEP(ButAllLeft.Enabled(true));
    STEP(ButRight.Enabled(false));
    STEP(ButAllRight.Enabled(false));
    STEP(ListRight.ListIndex(2));  // the third entry, whatever was added
    STEP(ListRight.SetFocus());
    STEP(EnableUpDn());
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::ButUp_Click() {
  Routine("Mirelo.frmMirelo.ButUp_Click", [&](Frame& frame) {
    ShiftSelected(frame, ListRight, -1);
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::ButDown_Click() {
  Routine("Mirelo.frmMirelo.ButDown_Click", [&](Frame& frame) {
    ShiftSelected(frame, ListRight, 1);
    STEP(GetListVerticFields());
    frame.pop();
  });
}

void frmMirelo::ListLeft_Click() {
  Routine("Mirelo.frmMirelo.ListLeft_Click", [&](Frame& frame) {
    if (frame.test([&] { return ListLeft.ListIndex() >= 0; })) {
      STEP(ButRight.Enabled(true));
      STEP(ButAllRight.Enabled(true));
      STEP(ListRight.ListIndex(kNothing));
      STEP(ButLeft.Enabled(false));
      STEP(ButAllLeft.Enabled(false));
      STEP(ButDown.Enabled(false));
      STEP(ButUp.Enabled(false));
    }
    frame.pop();
  });
}

void frmMirelo::ListRight_Click() {
  Routine("Mirelo.frmMirelo.ListRight_Click", [&](Frame& frame) {
    if (frame.test([&] { return ListRight.ListIndex() == 0; })) {
      STEP(ButLeft.Enabled(false));
      STEP(ButAllLeft.Enabled(false));
      STEP(ButRight.Enabled(false));
      STEP(ButAllRight.Enabled(false));
      STEP(ListLeft.ListIndex(kNothing));
    } else if (frame.test([&] { return ListRight.ListIndex() > 0; })) {
      STEP(ButLeft.Enabled(true));
      STEP(ButAllLeft.Enabled(true));
      STEP(ListLeft.ListIndex(kNothing));
      STEP(ButRight.Enabled(false));
      STEP(ButAllRight.Enabled(false));
    }
    STEP(EnableUpDn());
    frame.pop();
  });
}

void frmMirelo::EnableUpDn() {
  Routine("Mirelo.frmMirelo.EnableUpDn", [&](Frame& frame) {
    const std::int32_t index = ListRight.ListIndex();
    const std::int32_t last = ListRight.ListCount() - 1;
    if (last < 2) {
      STEP(ButUp.Enabled(false));
      STEP(ButDown.Enabled(false));
    } else if (index == 0) {
      STEP(ButUp.Enabled(false));
      STEP(ButDown.Enabled(false));
      STEP(ListRight.SetFocus());
    } else if (index == 1) {
      STEP(ButUp.Enabled(false));
      STEP(ButDown.Enabled(true));
      STEP(ListRight.SetFocus());
    } else if (index == last) {
      STEP(ButUp.Enabled(true));
      STEP(ButDown.Enabled(false));
      STEP(ListRight.SetFocus());
    } else if (index != kNothing) {
      STEP(ButUp.Enabled(true));
      STEP(ButDown.Enabled(true));
    }
    frame.pop();
  });
}

}  // namespace mirelo
