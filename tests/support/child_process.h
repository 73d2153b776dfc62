#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>

namespace mirelo::testing {

// Another process that runs a part of the test, and a pipe of numbers each way. It is forked, so the test
// must hold nothing at that moment that must not be in two processes: no open database. It does not outlive
// the test.
class ChildProcess {
 public:
  // The test, as the child sees it.
  class Test {
   public:
    Test(int from_test, int to_test) : from_test_(from_test), to_test_(to_test) {}
    void Report(std::int32_t number) const;
    // Waits for a number of the test's; false when there comes none any more.
    bool Await(std::int32_t& number) const;

   private:
    int from_test_;
    int to_test_;
  };

  // `body` runs in the child, which ends behind it: with status 0, or 1 when it throws.
  explicit ChildProcess(const std::function<void(const Test&)>& body);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void Send(std::int32_t number) const;
  // The next number that the child reports; false when it has ended and all was read.
  bool Read(std::int32_t& number) const;

  pid_t Id() const { return process_; }

  // Ends it on the spot, wherever it is.
  void Kill() const;

  // Waits for its end. True when it left with status 0.
  bool Finish();

 private:
  pid_t process_ = -1;
  int to_child_ = -1;
  int from_child_ = -1;
};

// Takes root's right to read and write what nobody may from this process for good; others have no such right.
void DropRightsOfRoot();

}  // namespace mirelo::testing
