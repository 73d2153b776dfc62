#include <gmock/gmock.h>

#include <QApplication>

// The loop of windows needs Qt's application object; the windows themselves are drawn nowhere.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
