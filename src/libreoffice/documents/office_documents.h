#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <filesystem>
#include <memory>

#include "host/documents.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Documents that LibreOffice Calc opens and stores, in this office, where nobody looks at them: the kinds of
// stored_kinds.h. Their files are held, looked after and replaced as workbooks' are, and by nobody else: the
// office itself locks none.
class OfficeDocuments : public host::Documents {
 public:
  explicit OfficeDocuments(const css::uno::Reference<css::uno::XComponentContext>& context);

  std::unique_ptr<host::Document> New() override;
  // Error 1004 also for a file that is not what its ending says, and for one with a password.
  std::unique_ptr<host::Document> Open(const std::filesystem::path& file) override;
  std::unique_ptr<host::DocumentHold> Hold(const std::filesystem::path& file) override;
  void RequireSavable(const std::filesystem::path& file) override;

 private:
  css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace mirelo::libreoffice
