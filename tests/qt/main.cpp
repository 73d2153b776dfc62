#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>

#include "qt/person.h"

namespace {

// Windows in memory can't do everything, and a machine for tests may lack what a session has.
void Tell(QtMsgType, const QMessageLogContext&, const QString& text) {
  for (const char* usual : {"This plugin does not support", "QStandardPaths: "}) {
    if (text.startsWith(QLatin1String(usual))) return;
  }
  std::fprintf(stderr, "%s\n", qPrintable(text));
  std::abort();
}

}  // namespace

// Windows are drawn in memory. What Qt warns of is a fault of ours, and ends the program.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleMock(&argc, argv);
  qInstallMessageHandler(Tell);
  const mirelo::qt::TestApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
