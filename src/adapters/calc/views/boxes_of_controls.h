#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/layout/boxes.h"

namespace mirelo::forms {
class Button;
class CheckBox;
class ComboBox;
class Grid;
class Image;
class Label;
class Line;
class ListBox;
class Panel;
class ScrollBar;
class Tab;
class TextBox;
}  // namespace mirelo::forms

namespace mirelo::calc {

class Views;

// A view for a control of each kind, among `views`, and its place in a layout.
forms::layout::Box MakeBox(forms::Button& button, Views& views);
forms::layout::Box MakeBox(forms::CheckBox& box, Views& views);
forms::layout::Box MakeBox(forms::ComboBox& box, Views& views);
forms::layout::Box MakeBox(forms::Image& image, Views& views);
forms::layout::Box MakeBox(forms::Line& line, Views& views);
forms::layout::Box MakeBox(forms::ListBox& list, Views& views);
forms::layout::Box MakeBox(forms::ScrollBar& bar, Views& views);
forms::layout::Box MakeBox(forms::TextBox& box, Views& views);
// One that can be clicked is a field of its colour, which asks that on Enter; empty for nothing.
forms::layout::Box MakeBox(forms::Label& label, Views& views, const std::string& asks = "");

// `usual_widths` in twips: a column of one of them is at least as wide as its header.
forms::layout::Box MakeBox(forms::Grid& grid, Views& views, std::vector<std::int32_t> usual_widths);

// One box with arrows for the two. The arrows are the scroll bar's.
forms::layout::Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar, Views& views);
// A patch of the box's colour.
forms::layout::Box MakeSwatchBox(forms::TextBox& box, Views& views);
// The buttons of a strip of tabs, without what stands on the tabs.
forms::layout::Box MakeTabStrip(forms::Tab& tab, Views& views);
// A panel's text and picture, which stand above and beside what it holds.
forms::layout::Box MakePanelHeading(forms::Panel& panel, Views& views);
forms::layout::Box MakePanelPicture(forms::Panel& panel, Views& views);
// Words of the layout's own; and those above what belongs together.
forms::layout::Box MakeWords(const std::string& text, Views& views);
forms::layout::Box MakeHeading(const std::string& text, Views& views);
// A label as such a heading.
forms::layout::Box MakeTitle(forms::Label& label, Views& views);

}  // namespace mirelo::calc
