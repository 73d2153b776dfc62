#pragma once

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>

#include "qt/person.h"

namespace mirelo::qt {

// Windows in memory can't do everything, and a machine for tests may lack what a session has. What Qt warns
// of beside that is a fault of ours, and ends the program.
inline void EndAtWarnings(QtMsgType, const QMessageLogContext&, const QString& text) {
  for (const char* usual : {"This plugin does not support", "QStandardPaths: "}) {
    if (text.startsWith(QLatin1String(usual))) return;
  }
  std::fprintf(stderr, "%s\n", qPrintable(text));
  std::abort();
}

// The rest of a main function, with windows that are drawn in memory.
inline int RunTests(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  qInstallMessageHandler(EndAtWarnings);
  const TestApplication application(argc, argv);
  return RUN_ALL_TESTS();
}

}  // namespace mirelo::qt
