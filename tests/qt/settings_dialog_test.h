#pragma once

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>
#include <string>
#include <vector>

#include "adapters/qt/grid_view.h"
#include "qt/dialog_rig.h"
#include "qt/person.h"

namespace mirelo::qt {

// The settings dialog on a screen, as the macros open it. What is looked at are widgets, what is done is done
// by mouse and keyboard.
struct DialogOnScreen {
  using Words = std::vector<std::string>;
  enum Tab { kTickers, kSettings, kCharting, kFields };

  // What LoadFrmMirelo answers when the person has done everything. A dialog that is still up is then closed
  // by its close box.
  int Show() {
    person.Does("close the dialog", [] { QApplication::activeModalWidget()->close(); });
    const int answer = rig.facade->LoadFrmMirelo();
    person.Forget();  // to close a dialog that has ended itself
    return answer;
  }

  template <class Widget = QWidget>
  static Widget* Find(const std::string& control) {
    return Person::Find<Widget>(control);
  }
  static void Click(const std::string& control) { Person::Click(Find(control)); }
  // The box itself, for a click on the empty space behind its words is none.
  static void Tick(const std::string& control) {
    Person::Click(Find(control), QPoint(8, Find(control)->height() / 2));
  }
  static void Open(Tab tab) {
    auto* bar = Find<QTabWidget>("C1TTickersSettings")->tabBar();
    Person::Click(bar, bar->tabRect(tab).center());
  }
  static void Replace(const std::string& control, const std::string& text) {
    Person::Click(Find(control), QPoint(8, Find(control)->height() / 2));
    Person::Press(Qt::Key_A, Qt::ControlModifier);
    Person::Type(text);
  }
  // The text of a box, whichever kind it is of.
  static std::string TextOf(const std::string& control) {
    QWidget* widget = Find(control);
    if (widget == nullptr) return "";
    if (const auto* box = qobject_cast<QComboBox*>(widget)) return box->currentText().toStdString();
    auto* edit = qobject_cast<QLineEdit*>(widget);
    if (edit == nullptr) edit = widget->findChild<QLineEdit*>();
    return edit->text().toStdString();
  }
  static bool IsTicked(const std::string& control) { return Find<QAbstractButton>(control)->isChecked(); }

  static void AddTickers(const Words& tickers) {
    Click("txtTicker");
    for (const auto& ticker : tickers) {
      Person::Type(ticker);
      Person::Press(Qt::Key_Return);
    }
  }
  // The tickers on the screen, from the top.
  static Words Tickers() {
    Words tickers;
    const QAbstractItemModel& model = *Find<GridView>("FG")->model();
    for (int row = 0; row < model.rowCount(); ++row)
      tickers.push_back(model.index(row, 0).data().toString().toStdString());
    return tickers;
  }
  // Columns by their headers.
  static int ColumnOf(const std::string& header) {
    const QAbstractItemModel& model = *Find<GridView>("FG")->model();
    for (int column = 0; column < model.columnCount(); ++column) {
      if (model.headerData(column, Qt::Horizontal).toString().toStdString() == header) return column;
    }
    ADD_FAILURE() << "no column " << header;
    return 0;
  }
  static void ClickCell(int row, const std::string& header) {
    auto* view = Find<GridView>("FG");
    const QModelIndex cell = view->model()->index(row, ColumnOf(header));
    view->scrollTo(cell);
    Person::Click(view->viewport(), view->visualRect(cell).center());
  }
  static void ClickHeader(const std::string& header) {
    QHeaderView* top = Find<GridView>("FG")->horizontalHeader();
    const int column = ColumnOf(header);
    Person::Click(top->viewport(), QPoint(top->sectionViewportPosition(column) + top->sectionSize(column) / 2,
                                          top->height() / 2));
  }
  static Words TickedFields(int row) {
    Words fields;
    const QAbstractItemModel& model = *Find<GridView>("FG")->model();
    for (int column = 0; column < model.columnCount(); ++column) {
      if (model.index(row, column).data(Qt::CheckStateRole) == Qt::Checked)
        fields.push_back(model.headerData(column, Qt::Horizontal).toString().toStdString());
    }
    return fields;
  }
  static Words Items(const std::string& list) {
    Words items;
    const auto* widget = Find<QListWidget>(list);
    for (int row = 0; row < widget->count(); ++row) items.push_back(widget->item(row)->text().toStdString());
    return items;
  }
  static QPoint PlaceOf(const std::string& list, int row) {
    auto* widget = Find<QListWidget>(list);
    return widget->visualItemRect(widget->item(row)).center();
  }

  DialogRig rig;
  Person person{rig.loop};
};

class SettingsDialog : public ::testing::Test, protected DialogOnScreen {};

}  // namespace mirelo::qt
