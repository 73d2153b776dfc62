// Takes pictures of the windows for the documentation, from a run with a person in it.
//   take_pictures FOLDER

#include <gtest/gtest.h>

#include <QListWidget>
#include <QPainter>
#include <QTabBar>
#include <QTabWidget>
#include <cstdio>
#include <string>

#include "adapters/qt/grid_view.h"
#include "qt/dialog_rig.h"
#include "qt/person.h"

namespace mirelo::qt {
namespace {

QString folder;

QWidget* Find(const char* control) { return Person::Find(control); }

// The window on top, with the edge that a desktop would give it.
void Take(const char* name) {
  QImage picture = QApplication::activeModalWidget()->grab().toImage();
  QPainter(&picture).drawRect(picture.rect().adjusted(0, 0, -1, -1));
  const QString file = folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(".png");
  if (!picture.save(file)) qFatal("cannot write %s", qPrintable(file));
}

void SelectTab(int tab) {
  auto* bar = Person::Find<QTabWidget>("C1TTickersSettings")->tabBar();
  Person::Click(bar, bar->tabRect(tab).center());
}

void Tick(const char* box) { Person::Click(Find(box), QPoint(8, Find(box)->height() / 2)); }

void ClickCell(int row, int column) {
  auto* grid = Person::Find<GridView>("FG");
  Person::Click(grid->viewport(), grid->visualRect(grid->model()->index(row, column)).center());
}

void Run() {
  quotetracker::ServerOptions usual;
  usual.http_port = 16239;
  usual.stream_port = 16240;
  DialogRig rig(std::move(usual));
  Person person(rig.loop);
  person.Does("choose charts and the field that they need", [] {
    SelectTab(2);
    Tick("chkBuildCharts");
    SelectTab(3);
    auto* left = Person::Find<QListWidget>("ListLeft");
    Person::DoubleClick(left->viewport(), left->visualItemRect(left->item(6)).center());
    SelectTab(0);
  });
  person.Does("add tickers", [] {
    Person::Click(Find("txtTicker"));
    for (const char* ticker : {"MSFT", "IBM", "GE", "INTC", "CSCO"}) {
      Person::Type(ticker);
      Person::Press(Qt::Key_Return);
    }
    Person::Type("ora");
  });
  person.Does("tick fields", [] {
    for (const int row : {0, 1, 3}) ClickCell(row, 8);  // the charts, which tick what they need
    ClickCell(0, 3);
    ClickCell(0, 4);
    ClickCell(1, 3);
    ClickCell(2, 0);  // brings the first column back into view
    Person::Click(Find("txtTicker"));
  });
  person.Does("look", [] { Take("dialog-tickers"); });
  person.Does("look at the settings", [] { SelectTab(1); });
  person.Does("look", [] { Take("dialog-settings"); });
  person.Does("look at the charting", [] { SelectTab(2); });
  person.Does("look", [] { Take("dialog-charting"); });
  person.Does("look at the fields", [] { SelectTab(3); });
  person.Does("look", [] { Take("dialog-fields"); });
  person.Does("pick a color", [] {
    SelectTab(1);
    Person::Click(Find("ButOn"));
  });
  person.Does("look and take none", [] {
    Take("dialog-palette");
    QApplication::activeModalWidget()->close();
  });
  person.Does("cancel", [] { Person::Press(Qt::Key_Escape); });
  rig.facade->LoadFrmMirelo();
  person.Does("look at the report", [] { Take("dialog-error"); });
  person.Does("abort", [] { Person::Click(Find("btnAbort")); });
  rig.facade->GetLastQuote(Variant("MSFT"));  // an array is wanted
}

}  // namespace
}  // namespace mirelo::qt

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: take_pictures FOLDER\n");
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(text));
  });
  const mirelo::qt::TestApplication application(argc, argv);
  mirelo::qt::folder = QString::fromLocal8Bit(argv[1]);
  mirelo::qt::Run();
  return ::testing::Test::HasFailure() ? 1 : 0;
}
