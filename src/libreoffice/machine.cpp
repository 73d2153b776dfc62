#include "libreoffice/machine.h"

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include "adapters/calc/office_loop.h"
#include "automation/runtime_error.h"
#include "host/host.h"
#include "libreoffice/office_process.h"
#include "linux/linux_host.h"
#include "terminal/standard_streams.h"

namespace mirelo::libreoffice {

namespace {

using Context = css::uno::Reference<css::uno::XComponentContext>;

// What fails behind no call of a macro, such as a handler of its own in which it set nobody to catch errors.
void TellOfFailure(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (...) {
    terminal::Err() << "mirelo: " << CurrentError().Description() << "\n";
  }
}

class AtTheEnd final : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
 public:
  explicit AtTheEnd(std::function<void()> act) : act_(std::move(act)) {}

  void SAL_CALL queryTermination(const css::lang::EventObject&) override {}
  void SAL_CALL notifyTermination(const css::lang::EventObject&) override { act_(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override { act_(); }

 private:
  std::function<void()> act_;
};

class Machine {
 public:
  explicit Machine(const Context& context) {
    auto loop = std::make_unique<calc::OfficeLoop>(OfficeOf(context), TellOfFailure);
    css::frame::Desktop::create(context)->addTerminateListener(
        new AtTheEnd([running = loop.get()] { running->End(); }));
    host_.RunOn(std::move(loop));
    host_.WaitForWholeReplies();
  }

 private:
  LinuxHost host_;
  host::HostScope installed_{host_};
};

}  // namespace

void InstallMachine(const Context& context) {
  [[maybe_unused]] static Machine& machine = *new Machine(context);
}

}  // namespace mirelo::libreoffice
