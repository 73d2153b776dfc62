// A screen of 1920 by 1080 pixels at a scale factor of 2: 960 by 540 for what is shown.

#include <fstream>

#include "qt/run_tests.h"
#include "support/temp_directory.h"

int main(int argc, char** argv) {
  const mirelo::testing::TempDirectory folder;
  const auto screens = folder / "screens.json";
  std::ofstream(screens) << R"({"screens": [{"name": "small", "x": 0, "y": 0, "width": 1920, "height": 1080,
                                             "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens.string()).c_str());
  qputenv("QT_SCALE_FACTOR", "2");
  return mirelo::qt::RunTests(argc, argv);
}
