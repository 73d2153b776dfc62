// The service whose methods are the cell functions (CalcAddIns.xcu). The office makes it when the first
// formula needs one of them.

#include <sal/types.h>

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <mirelo/XFunctions.hpp>
#include <optional>
#include <string>
#include <utility>

#include "libreoffice/functions/quote_answers.h"
#include "uno/errors.h"
#include "uno/text.h"

namespace mirelo::libreoffice {

namespace {

using About = day::QuoteQuestion::About;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;

constexpr const char* kImplementation = "mirelo.Functions";
constexpr const char* kService = "com.sun.star.sheet.AddIn";

// The one column that an argument names. What is left out is void, an empty cell 0, a range rows of cells.
std::optional<std::string> ColumnOf(const Any& argument) {
  rtl::OUString text;
  if (argument >>= text) return text.isEmpty() ? "Last" : uno::TextOf(text);
  double number = 0;
  if (argument >>= number) return number == 0 ? "Last" : uno::TextOf(rtl::OUString::number(number));
  if (!argument.hasValue()) return "Last";
  Sequence<Sequence<Any>> rows;
  if (!(argument >>= rows) || rows.getLength() != 1) return std::nullopt;
  const Sequence<Any> cells = *rows.getConstArray();
  if (cells.getLength() != 1) return std::nullopt;
  return ColumnOf(*cells.getConstArray());
}

class Functions final : public cppu::WeakImplHelper2<::mirelo::XFunctions, css::lang::XServiceInfo> {
 public:
  explicit Functions(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  Any SAL_CALL getQuote(const rtl::OUString& ticker, const Any& column) override {
    return uno::AtTheBorder([&] { return Answer(About::Value, ticker, ColumnOf(column)); });
  }
  Any SAL_CALL getQuoteStatus(const rtl::OUString& ticker, const Any& column) override {
    return uno::AtTheBorder([&] { return Answer(About::Status, ticker, ColumnOf(column)); });
  }
  Any SAL_CALL getQuoteAge(const rtl::OUString& ticker) override {
    return uno::AtTheBorder([&] { return Answer(About::Age, ticker, ""); });
  }

  rtl::OUString SAL_CALL getImplementationName() override {
    return uno::AtTheBorder([] { return rtl::OUString::createFromAscii(kImplementation); });
  }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return uno::AtTheBorder([&] { return cppu::supportsService(this, name); });
  }
  Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    return uno::AtTheBorder([] {
      const rtl::OUString name = rtl::OUString::createFromAscii(kService);
      return Sequence<rtl::OUString>(&name, 1);
    });
  }

 private:
  Any Answer(About about, const rtl::OUString& ticker, std::optional<std::string> column) {
    return Any(QuoteAnswers::Of(context_).ResultFor({about, uno::TextOf(ticker), std::move(column)}));
  }

  const Reference<css::uno::XComponentContext> context_;
};

}  // namespace

}  // namespace mirelo::libreoffice

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_Functions(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  return cppu::acquire(new mirelo::libreoffice::Functions(context));
}
