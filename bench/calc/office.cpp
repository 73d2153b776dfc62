// The benchmarks of this folder as a job of the office's, which runs them on its main thread.

#include "calc/office.h"

#include <benchmark/benchmark.h>
#include <sal/types.h>

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/script/provider/XScript.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "uno/text.h"

namespace mirelo {

namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using Context = Reference<css::uno::XComponentContext>;

constexpr const char* kPause = "vnd.sun.star.script:Bench.Driver.Pause?language=Basic&location=application";

Context& ContextOfBenchmarks() {
  static auto& context = *new Context;
  return context;
}

void RunBenchmarks() {
  std::vector<std::string> words{"bench_calc"};
  std::istringstream given(std::getenv("MIRELO_OPTIONS"));
  for (std::string word; std::getline(given, word);) words.push_back(word);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  auto count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  benchmark::RunSpecifiedBenchmarks();
}

class Benchmarks final : public cppu::WeakImplHelper1<css::task::XJob> {
 public:
  Any SAL_CALL execute(const Sequence<css::beans::NamedValue>&) override {
    try {
      RunBenchmarks();
    } catch (const css::uno::Exception& failure) {
      std::cerr << "error: " << uno::TextOf(failure.Message) << "\n";
    } catch (const std::exception& failure) {
      std::cerr << "error: " << failure.what() << "\n";
    }
    return {};
  }
};

}  // namespace

Context OfficeContext() { return ContextOfBenchmarks(); }

// No interface of the office's waits with its loop running, but macros do.
void LetTheOfficeRun(std::chrono::milliseconds time) {
  const auto scripts = css::script::provider::theMasterScriptProviderFactory::get(OfficeContext())
                           ->createScriptProvider(Any(rtl::OUString()));
  const auto pause = scripts->getScript(uno::OfficeText(kPause));
  const Any argument(static_cast<sal_Int32>(time.count()));
  Sequence<sal_Int16> changed;
  Sequence<Any> results;
  pause->invoke(Sequence<Any>(&argument, 1), changed, results);
}

OpenDocument::OpenDocument() {
  const Reference<css::frame::XComponentLoader> loader(css::frame::Desktop::create(OfficeContext()),
                                                       css::uno::UNO_QUERY_THROW);
  model_.set(loader->loadComponentFromURL("private:factory/scalc", "_blank", 0, {}),
             css::uno::UNO_QUERY_THROW);
}

OpenDocument::~OpenDocument() {
  try {
    Reference<css::util::XCloseable>(model_, css::uno::UNO_QUERY_THROW)->close(true);
  } catch (const css::uno::Exception&) {  // it is gone
  }
}

Reference<css::sheet::XSpreadsheetDocument> OpenDocument::Spreadsheet() const {
  return {model_, css::uno::UNO_QUERY_THROW};
}

}  // namespace mirelo

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_calc_bench(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  mirelo::ContextOfBenchmarks() = context;
  auto* benchmarks = new mirelo::Benchmarks;
  benchmarks->acquire();  // the caller's
  return static_cast<com::sun::star::task::XJob*>(benchmarks);
}
