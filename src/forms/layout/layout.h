#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mirelo::forms::layout {

// Controls carry no places. A form's layout says where they go: for each panel a tree of parts, whose leaves
// name the controls. Controls that no part names are put below the others, so that none is lost.
struct Part {
  enum class Kind {
    Control,  // `name`
    Spin,     // the text box `name` and the scroll bar `other` as one box with arrows
    Swatch,   // the text box `name` as a patch of its colour
    Words,    // the text `name`, which names the field behind it
    Heading,  // the text `name` above what belongs together
    Title,    // the label `name` as such a heading
    Indent,   // sets what stands behind it in from the edge
    Space,    // takes what is left over
    Row,      // parts side by side
    Column,   // parts one below the other
    Fields,   // lines of two parts, both kinds aligned: what a field is called, and the field
    Palette,  // equal cells in columns of `rows`, one after the other, below the control `other`
    Unseen    // the control `name` has no place
  };

  Kind kind;
  std::string name;
  std::string other;
  std::vector<Part> parts;
  int rows = 0;
  int stretch = 0;     // its share of what is left over
  std::string called;  // what a screen reader calls a control that has no words of its own

  // What Enter asks on a control that can be clicked, before it clicks it; empty for a click at once.
  std::string asks = {};
  // Of a grid: the widths in twips that columns have while nobody has chosen one. Such a column is at least
  // as wide as its header.
  std::vector<std::int32_t> usual_widths = {};
  bool has_first_focus = false;
};

inline Part Control(std::string name) { return {Part::Kind::Control, std::move(name), {}, {}, 0, 0, {}}; }
inline Part Spin(std::string text_box, std::string scroll_bar) {
  return {Part::Kind::Spin, std::move(text_box), std::move(scroll_bar), {}, 0, 0, {}};
}
inline Part Swatch(std::string name) { return {Part::Kind::Swatch, std::move(name), {}, {}, 0, 0, {}}; }
inline Part Words(std::string text) { return {Part::Kind::Words, std::move(text), {}, {}, 0, 0, {}}; }
inline Part Heading(std::string text) { return {Part::Kind::Heading, std::move(text), {}, {}, 0, 0, {}}; }
inline Part Title(std::string label) { return {Part::Kind::Title, std::move(label), {}, {}, 0, 0, {}}; }
inline Part Indent() { return {Part::Kind::Indent, {}, {}, {}, 0, 0, {}}; }
inline Part Space() { return {Part::Kind::Space, {}, {}, {}, 0, 1, {}}; }
inline Part Row(std::vector<Part> parts) { return {Part::Kind::Row, {}, {}, std::move(parts), 0, 0, {}}; }
inline Part Column(std::vector<Part> parts) {
  return {Part::Kind::Column, {}, {}, std::move(parts), 0, 0, {}};
}
// Each line is a row of two parts.
inline Part Fields(std::vector<Part> lines) {
  return {Part::Kind::Fields, {}, {}, std::move(lines), 0, 0, {}};
}
inline Part Palette(std::vector<Part> cells, int rows, std::string above) {
  return {Part::Kind::Palette, {}, std::move(above), std::move(cells), rows, 0, {}};
}
inline Part Unseen(std::string name) { return {Part::Kind::Unseen, std::move(name), {}, {}, 0, 0, {}}; }

inline Part Wide(Part part, int stretch = 1) {
  part.stretch = stretch;
  return part;
}
inline Part Called(Part part, std::string called) {
  part.called = std::move(called);
  return part;
}

inline Part Asking(Part part, std::string question) {
  part.asks = std::move(question);
  return part;
}
inline Part WithUsualWidths(Part part, std::vector<std::int32_t> twips) {
  part.usual_widths = std::move(twips);
  return part;
}
// The control that gets the focus when the form is shown and has no active control of its own.
inline Part FocusedFirst(Part part) {
  part.has_first_focus = true;
  return part;
}

// The parts of a form by their panel's name; "" is the form itself. Panels without an entry get their
// controls one below the other.
using FormLayout = std::map<std::string, Part>;

}  // namespace mirelo::forms::layout
