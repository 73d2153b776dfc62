#pragma once

class QWidget;

namespace mirelo::forms {
class Button;
class CheckBox;
class ComboBox;
class Grid;
class Image;
class Label;
class Line;
class ListBox;
class ScrollBar;
class TextBox;
}  // namespace mirelo::forms

namespace mirelo::qt {

class Views;

// A widget for a control of each kind, with its view among `views`. Whoever asks gives it a parent. Panels
// and tabs, which hold other controls, are made where forms are laid out.
QWidget* MakeWidget(forms::Button& button, Views& views);
QWidget* MakeWidget(forms::CheckBox& box, Views& views);
QWidget* MakeWidget(forms::ComboBox& box, Views& views);
QWidget* MakeWidget(forms::Grid& grid, Views& views);
QWidget* MakeWidget(forms::Image& image, Views& views);
QWidget* MakeWidget(forms::Label& label, Views& views);
QWidget* MakeWidget(forms::Line& line, Views& views);
QWidget* MakeWidget(forms::ListBox& list, Views& views);
QWidget* MakeWidget(forms::ScrollBar& bar, Views& views);
QWidget* MakeWidget(forms::TextBox& box, Views& views);

// One box with arrows for the two. The arrows are the scroll bar's.
QWidget* MakeSpinWidget(forms::TextBox& box, forms::ScrollBar& bar, Views& views);
// A patch of the box's colour.
QWidget* MakeSwatchWidget(forms::TextBox& box, Views& views);

}  // namespace mirelo::qt
