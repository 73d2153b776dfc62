// Lists of entries, and texts with a list to choose them from.

#include <algorithm>
#include <com/sun/star/awt/XComboBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <string>
#include <vector>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/views.h"
#include "forms/combo_box.h"
#include "forms/layout/measures.h"
#include "forms/list_box.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using css::uno::Sequence;
using forms::layout::Box;
using forms::layout::Extent;

namespace {

void ShowItems(const View& view, const std::vector<std::string>& items) {
  Sequence<rtl::OUString> texts(static_cast<sal_Int32>(items.size()));
  for (std::size_t i = 0; i < items.size(); ++i) texts[static_cast<sal_Int32>(i)] = OfficeText(items[i]);
  if (view.Get<Sequence<rtl::OUString>>("StringItemList") != texts) view.Set("StringItemList", texts);
}

void ShowSelected(const View& view, std::int32_t index) {
  Sequence<sal_Int16> selected(index < 0 ? 0 : 1);
  if (index >= 0) selected[0] = static_cast<sal_Int16>(index);
  if (view.Get<Sequence<sal_Int16>>("SelectedItems") != selected) view.Set("SelectedItems", selected);
}

Extent NeededByCombo(const Views& views) {
  return {layout::kLettersOfCombo * views.LetterWidth() + views.LineHeight(), views.LineHeight()};
}

// Both tell of an entry that was chosen: the text first, and then the choice. So a text that is an entry
// waits for what follows.
void TakeText(forms::ComboBox& box, const View& view, const Views& views) {
  const std::string text = TextOf(view.As<css::awt::XTextComponent>()->getText());
  if (text != box.Text()) views.Act(view, [&] { box.UserEdit(text); });
}

bool IsEntry(const forms::ComboBox& box, const std::string& text) {
  return std::ranges::find(box.Items(), text) != box.Items().end();
}

Box MakeEditableCombo(forms::ComboBox& box, Views& views) {
  View& view = views.Add("ComboBox", &box, box.Name());
  view.Set("Dropdown", true);
  view.Set("Autocomplete", false);  // it would put in what nobody has typed
  view.Set("LineCount", sal_Int16{layout::kLinesOfDroppedList});
  view.show = [&] {
    ShowItems(view, box.Items());
    view.SetText("Text", box.Text());
  };
  view.connect = [&] {
    view.As<css::awt::XTextComponent>()->addTextListener(new OnText(views.Heard([&](const auto&) {
      const std::string text = TextOf(view.As<css::awt::XTextComponent>()->getText());
      if (!IsEntry(box, text)) return TakeText(box, view, views);
      const auto later = views.Living([&](const auto&) { TakeText(box, view, views); });
      views.loop().StartTimer({}, [later] { later(0); });
    })));
    view.As<css::awt::XComboBox>()->addItemListener(new OnItem(
        views.Heard([&](const auto& event) { views.Act(view, [&] { box.UserChoose(event.Selected); }); })));
  };
  return views.BoxOf(view, [&] { return NeededByCombo(views); });
}

Box MakeClosedCombo(forms::ComboBox& box, Views& views) {
  View& view = views.Add("ListBox", &box, box.Name());
  view.Set("Dropdown", true);
  view.Set("LineCount", sal_Int16{layout::kLinesOfDroppedList});
  view.show = [&] {
    ShowItems(view, box.Items());
    ShowSelected(view, box.ListIndex());
  };
  view.connect = [&] {
    view.As<css::awt::XListBox>()->addItemListener(new OnItem(views.Heard([&](const auto& event) {
      if (event.Selected != box.ListIndex()) views.Act(view, [&] { box.UserChoose(event.Selected); });
    })));
  };
  return views.BoxOf(view, [&] { return NeededByCombo(views); });
}

}  // namespace

Box MakeBox(forms::ComboBox& box, Views& views) {
  const bool editable = box.ComboStyle() == forms::ComboBox::Style::DropDown;
  Box place = editable ? MakeEditableCombo(box, views) : MakeClosedCombo(box, views);
  place.wide = true;
  return place;
}

Box MakeBox(forms::ListBox& list, Views& views) {
  View& view = views.Add("ListBox", &list, list.Name());
  view.show = [&] {
    ShowItems(view, list.Items());
    ShowSelected(view, list.ListIndex());
  };
  view.connect = [&] {
    const auto window = view.As<css::awt::XListBox>();
    window->addItemListener(new OnItem(views.Heard([&](const auto& event) {
      if (event.Selected != list.ListIndex()) views.Act(view, [&] { list.UserSelect(event.Selected); });
    })));
    window->addActionListener(new OnAction(views.Heard([&](const auto&) {
      const std::int32_t index = view.As<css::awt::XListBox>()->getSelectedItemPos();
      views.Act(view, [&] { list.UserDoubleClick(index); });
    })));
  };
  Box place = views.BoxOf(view, [&] {
    return Extent{layout::kLettersOfList * views.LetterWidth(), layout::kLinesOfList * views.LineHeight()};
  });
  place.wide = place.high = true;
  return place;
}

}  // namespace mirelo::calc
