#include <gtest/gtest.h>

#include "calc/live_office.h"

namespace mirelo::testing {

namespace {

// The office that tests have started ends with them, and ends well.
class Office : public ::testing::Environment {
 public:
  void TearDown() override { EXPECT_TRUE(LiveOffice::End()) << "the office did not end well"; }
};

}  // namespace

}  // namespace mirelo::testing

int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  ::testing::AddGlobalTestEnvironment(new mirelo::testing::Office());
  return RUN_ALL_TESTS();
}
