#include "calc/live_office.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XTableCharts.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/util/XCloseable.hpp>
#include <utility>

namespace mirelo::testing {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// Behind all tests.
class End : public ::testing::Environment {
 public:
  void TearDown() override {
    LiveOffice::Get().Close();
    EXPECT_TRUE(EndOfficeOfTests()) << "the office did not end well";
  }
};
[[maybe_unused]] const auto* const kEnd = ::testing::AddGlobalTestEnvironment(new End);

constexpr const char* kNew = "private:factory/scalc";

}  // namespace

LiveOffice& LiveOffice::Get() {
  static auto& office = *new LiveOffice();  // its documents are closed at the end
  return office;
}

LiveOffice::Document LiveOffice::NewDocument(Window window) {
  Close();
  document_ = Load(rtl::OUString::createFromAscii(kNew), window);
  window_ = window;
  return document_;
}

LiveOffice::Document LiveOffice::AnotherDocument(Window window) {
  return others_.emplace_back(Load(rtl::OUString::createFromAscii(kNew), window));
}

LiveOffice::Document LiveOffice::OpenBeside(const rtl::OUString& url) {
  return others_.emplace_back(Load(url, Window::kShown));
}

LiveOffice::Document LiveOffice::Load(const rtl::OUString& url, Window window) const {
  css::uno::Sequence<css::beans::PropertyValue> how(1);
  how[0].Name = "Hidden";
  how[0].Value <<= window == Window::kHidden;
  const auto desktop = css::frame::Desktop::create(Context());
  return {desktop->loadComponentFromURL(url, "_blank", 0, how), UNO_QUERY_THROW};
}

LiveOffice::Document LiveOffice::EmptyDocument(Window window) {
  if (!others_.empty() || !document_.is() || window_ != window || !Empty()) return NewDocument(window);
  return document_;
}

// A new sheet in place of all others. Calc does not outlive the removal of one with charts.
bool LiveOffice::Empty() {
  try {
    const auto sheets = document_->getSheets();
    const auto names = sheets->getElementNames();
    for (const rtl::OUString& name : names) {
      const Reference<css::table::XTableChartsSupplier> sheet(sheets->getByName(name), UNO_QUERY_THROW);
      if (sheet->getCharts()->getElementNames().hasElements()) return false;
    }
    sheets->insertNewByName("New", 0);
    for (const rtl::OUString& name : names) sheets->removeByName(name);
    Reference<css::container::XNamed>(sheets->getByName("New"), UNO_QUERY_THROW)->setName("Sheet1");
    // Or it would keep all of them.
    Reference<css::document::XUndoManagerSupplier>(document_, UNO_QUERY_THROW)->getUndoManager()->clear();
    return true;
  } catch (const css::uno::Exception&) {  // a test closed it, or protected it
    return false;
  }
}

void LiveOffice::Close() {
  if (document_.is()) others_.push_back(std::exchange(document_, Document()));
  for (const Document& document : std::exchange(others_, {})) {
    const Reference<css::util::XCloseable> closing(document, UNO_QUERY_THROW);
    try {
      closing->close(true);
    } catch (const css::lang::DisposedException&) {  // a test closed it
    }
  }
}

}  // namespace mirelo::testing
