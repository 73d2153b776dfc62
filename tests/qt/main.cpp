#include "qt/run_tests.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return mirelo::qt::RunTests(argc, argv);
}
