#include "automation_server/interface_text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace mirelo::testing {
namespace {

TEST(InterfacesOfWindows, AreThoseOfTheTables) {
  std::ifstream file(MIRELO_SOURCE_DIR "/src/windows/mirelo.idl");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(text, InterfaceText())
      << "write it again: cmake --build --preset dev --target write_interfaces && "
         "build/dev/bin/write_interfaces >src/windows/mirelo.idl";
}

}  // namespace
}  // namespace mirelo::testing
