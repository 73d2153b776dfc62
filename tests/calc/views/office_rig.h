#pragma once

#include <gmock/gmock.h>

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <exception>

#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/calc_desktop.h"
#include "automation/runtime_error.h"
#include "calc/in_office/run_in_office.h"
#include "calc/views/person.h"
#include "host/host.h"
#include "libreoffice/office_process.h"
#include "support/test_host.h"

namespace mirelo::calc {

// The desktop of an office that has a document open, and a person at it.
struct Desk {
  Desk() { host.Use(loop).Use(desktop); }
  ~Desk() {
    const css::uno::Reference<css::util::XCloseable> open(document, css::uno::UNO_QUERY);
    if (open.is()) open->close(true);
  }
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  static css::uno::Reference<css::lang::XComponent> NewDocument() {
    const css::uno::Reference<css::frame::XComponentLoader> loader(
        css::frame::Desktop::create(OfficeContext()), css::uno::UNO_QUERY_THROW);
    return loader->loadComponentFromURL("private:factory/scalc", "_blank", 0, {});
  }

  css::uno::Reference<css::lang::XComponent> document = NewDocument();
  OfficeLoop loop{libreoffice::OfficeOf(OfficeContext()), [](const std::exception_ptr& failure) {
                    try {
                      std::rethrow_exception(failure);
                    } catch (...) {
                      ADD_FAILURE() << CurrentError().Description();
                    }
                  }};
  CalcDesktop desktop{OfficeContext(), loop};
  testing::TestHost host;
  host::HostScope installed{host};
  Person person{loop, desktop};
};

class OnTheDesktop : public ::testing::Test, protected Desk {};

}  // namespace mirelo::calc
