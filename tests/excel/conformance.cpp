#include "conformance.h"

namespace mirelo::testing {

namespace {

std::string NameOfThisTest() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string suite = test->test_suite_name();  // "All/Borders"
  suite.erase(0, suite.find('/') + 1);
  std::string name = test->name();  // "TakeEveryStyle/Calc"
  return suite + "." + name.substr(0, name.find('/'));
}

void SkipFor(std::string_view reason) { GTEST_SKIP() << reason; }

}  // namespace

KnownLimit::KnownLimit(std::span<const Limit> limits) {
  if (limits.empty()) return;
  const std::string name = NameOfThisTest();
  for (const Limit& limit : limits) {
    if (limit.test == name) limit_ = &limit;
  }
  if (limit_ == nullptr) return;
  if (!limit_->is_run) {
    SkipFor(limit_->reason);
    return;
  }
  using Reporter = ::testing::ScopedFakeTestPartResultReporter;
  catching_.emplace(Reporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures_);
}

void KnownLimit::Tell() {
  if (!catching_) return;
  catching_.reset();
  bool has_failed = false;
  for (int i = 0; i < failures_.size(); ++i)
    has_failed = has_failed || failures_.GetTestPartResult(i).failed();
  if (has_failed) return SkipFor(limit_->reason);
  ADD_FAILURE() << "this test passes, and needs no more to be on the list of limits";
}

}  // namespace mirelo::testing
