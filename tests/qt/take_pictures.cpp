// Takes pictures of the windows for the documentation, from a run with a person in it.
//   take_pictures FOLDER

#include <gtest/gtest.h>

#include <QComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <cstdio>
#include <string>

#include "automation/array.h"
#include "qt/dialog_rig.h"
#include "qt/person.h"

namespace mirelo::qt {
namespace {

QString folder;

QWidget* Find(const char* control) { return Person::Find(control); }

void Take(const char* name) {
  const QString file = folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(".png");
  if (!QApplication::activeModalWidget()->grab().save(file)) qFatal("cannot write %s", qPrintable(file));
}

void SelectTab(int tab) {
  auto* bar = qobject_cast<QTabWidget*>(Find("C1TTickersSettings"))->tabBar();
  Person::Click(bar, bar->tabRect(tab).center());
}

void Run() {
  quotetracker::ServerOptions usual;
  usual.http_port = 16239;
  usual.stream_port = 16240;
  DialogRig rig(std::move(usual));
  Person person(rig.loop);
  person.Does("switch charts on", [] {
    SelectTab(2);
    Person::Click(Find("chkBuildCharts"), QPoint(8, Find("chkBuildCharts")->height() / 2));
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
  person.Does("look", [] { Take("tickers"); });
  person.Does("look at the settings", [] { SelectTab(1); });
  person.Does("look", [] { Take("settings"); });
  person.Does("look at the charting", [] { SelectTab(2); });
  person.Does("look", [] { Take("charting"); });
  person.Does("look at the fields", [] { SelectTab(3); });
  person.Does("look", [] { Take("fields"); });
  person.Does("pick a color", [] {
    SelectTab(1);
    Person::Click(Find("ButOn"));
  });
  person.Does("look and take none", [] {
    Take("palette");
    QApplication::activeModalWidget()->close();
  });
  person.Does("cancel", [] { Person::Press(Qt::Key_Escape); });
  rig.facade->LoadFrmMirelo();
  person.Does("look at the report", [] { Take("error"); });
  person.Does("abort", [] { Person::Click(Find("btnAbort")); });
  rig.facade->GetLastQuote(Variant("MSFT"));
}

}  // namespace
}  // namespace mirelo::qt

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: take_pictures FOLDER\n");
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const mirelo::qt::TestApplication application(argc, argv);
  mirelo::qt::folder = QString::fromLocal8Bit(argv[1]);
  mirelo::qt::Run();
  return ::testing::Test::HasFailure() ? 1 : 0;
}
