#include "libreoffice/documents/office_documents.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/packages/zip/ZipFileAccess.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/util/XCloseable.hpp>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/files.h"
#include "app/temporary_folder.h"
#include "automation/runtime_error.h"
#include "libreoffice/documents/lost_parts.h"
#include "libreoffice/errand/stored_kinds.h"
#include "libreoffice/file_address.h"
#include "spreadsheet/errors.h"
#include "uno/errors.h"
#include "uno/text.h"

namespace mirelo::libreoffice {

namespace {

namespace fs = std::filesystem;

using css::beans::PropertyValue;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using Context = Reference<css::uno::XComponentContext>;
using Spreadsheet = Reference<css::sheet::XSpreadsheetDocument>;

constexpr std::uint64_t kAnySize = std::numeric_limits<std::int64_t>::max();

template <class Value>
PropertyValue Named(const char* name, const Value& value) {
  PropertyValue named;
  named.Name = rtl::OUString::createFromAscii(name);
  named.Value <<= value;
  return named;
}

Sequence<PropertyValue> Listed(std::initializer_list<PropertyValue> values) {
  return {values.begin(), static_cast<sal_Int32>(values.size())};
}

std::string TextOf(const css::uno::Exception& failure) { return uno::FromOffice(failure).Description(); }

const StoredKind& KindOf(const fs::path& file) {
  const StoredKind* const kind = StoredKindOf(file.extension().string());
  if (kind == nullptr)
    throw spreadsheet::Refused("LibreOffice Calc is to open and write " + StoredEndings() + " files");
  return *kind;
}

Spreadsheet Load(const Context& context, const rtl::OUString& address,
                 const Sequence<PropertyValue>& arguments) {
  return {css::frame::Desktop::create(context)->loadComponentFromURL(address, "_blank", 0, arguments),
          css::uno::UNO_QUERY};
}

// The names of what a file in parts holds; none where it cannot be read so.
std::vector<std::string> PartsOf(const Context& context, const fs::path& file) try {
  const auto archive = css::packages::zip::ZipFileAccess::createWithURL(context, AddressOf(file));
  std::vector<std::string> names;
  for (const rtl::OUString& name : archive->getElementNames()) names.push_back(uno::TextOf(name));
  return names;
} catch (const css::uno::Exception&) {
  return {};
}

class OfficeDocument final : public host::Document {
 public:
  // `stamp` is that of the file before it was read; both empty for a new document.
  OfficeDocument(const Context& context, const Spreadsheet& document, fs::path file,
                 const workbook::FileStamp& stamp)
      : context_(context),
        document_(document),
        application_(calc::ApplicationOf(context_, document_)),
        file_(std::move(file)),
        stamp_(stamp),
        has_told_(file_.empty()) {}
  ~OfficeDocument() override {
    try {
      Reference<css::util::XCloseable>(document_, css::uno::UNO_QUERY_THROW)->close(true);
    } catch (const css::uno::Exception&) {  // it goes with the office
    }
  }

  std::shared_ptr<host::excel::Application> Application() const override { return application_; }

  // What the office does not understand is gone when it has read the file. So it is found by storing the
  // document once as it was read; nothing that is written into it later costs more.
  std::vector<std::string> NewLosses() override {
    if (std::exchange(has_told_, true) || !KindOf(file_).is_package) return {};
    const app::TemporaryFolder folder;
    const fs::path stored = folder.Path() / ("stored" + file_.extension().string());
    Store(stored, file_);
    return SentencesOfLostParts(PartsOf(context_, file_), PartsOf(context_, stored));
  }

  void Save(const fs::path& file, const Tell& tell) override {
    for (const std::string& loss : NewLosses()) tell(loss);
    stamp_ = workbook::ReplaceFile(
        file, [&](const fs::path& fresh) { Write(fresh, file); },
        fs::absolute(file) == file_ ? stamp_ : workbook::FileStamp());
    file_ = fs::absolute(file);
  }

  // An office has threads of its own, which a copy of its process would not have.
  std::unique_ptr<host::Saving> SaveBeside(host::MessageLoop&, const fs::path&, Tell, Done) override {
    return nullptr;
  }

 private:
  // By way of a file of its own: what the target's file system refuses is then found by us, who can say it.
  void Write(const fs::path& fresh, const fs::path& target) {
    const app::TemporaryFolder folder;
    const fs::path stored = folder.Path() / ("stored" + target.extension().string());
    Store(stored, target);
    workbook::WriteWholeFile(fresh, workbook::ReadWholeFile(stored, kAnySize));
  }

  // `target` is where the file will stand: links in it are told from there.
  void Store(const fs::path& place, const fs::path& target) {
    const auto filter = rtl::OUString::createFromAscii(KindOf(target).filter);
    try {
      Reference<css::frame::XStorable>(document_, css::uno::UNO_QUERY_THROW)
          ->storeToURL(AddressOf(place),
                       Listed({Named("FilterName", filter), Named("DocumentBaseURL", AddressOf(target))}));
    } catch (const css::uno::Exception& failure) {
      throw RuntimeError(Errors::PathFileAccess().Number(),
                         "LibreOffice cannot write " + target.string() + ": " + TextOf(failure));
    }
  }

  Context context_;
  Spreadsheet document_;
  std::shared_ptr<host::excel::Application> application_;
  fs::path file_;
  workbook::FileStamp stamp_;
  bool has_told_;  // of what its file holds and it does not
};

}  // namespace

OfficeDocuments::OfficeDocuments(const Context& context) : context_(context) {}

std::unique_ptr<host::Document> OfficeDocuments::New() {
  return std::make_unique<OfficeDocument>(context_, Load(context_, "private:factory/scalc", {}), fs::path(),
                                          workbook::FileStamp());
}

// What is saved there while it is read is not what was read, so the stamp is taken before. As a template: the
// office then takes no file for its own, which it would lock, or refuse changes where it may not write it.
std::unique_ptr<host::Document> OfficeDocuments::Open(const fs::path& file) {
  const workbook::FileStamp stamp(file);
  workbook::ReadWholeFile(file, kAnySize);  // says why one cannot be read
  const StoredKind& kind = KindOf(file);
  std::string said;
  Spreadsheet document;
  try {
    document = Load(
        context_, AddressOf(file),
        Listed({Named("FilterName", rtl::OUString::createFromAscii(kind.filter)), Named("AsTemplate", true),
                Named("MacroExecutionMode", css::document::MacroExecMode::NEVER_EXECUTE),
                Named("UpdateDocMode", css::document::UpdateDocMode::NO_UPDATE)}));
  } catch (const css::uno::Exception& failure) {
    said = TextOf(failure);
  }
  if (!document.is()) {
    throw spreadsheet::Refused("LibreOffice cannot open " + file.string() +
                               ": it is damaged, has a password, or is no " + std::string(kind.ending) +
                               " file" + (said.empty() ? "" : " (" + said + ")"));
  }
  return std::make_unique<OfficeDocument>(context_, std::move(document), fs::absolute(file), stamp);
}

std::unique_ptr<host::DocumentHold> OfficeDocuments::Hold(const fs::path& file) {
  return workbook::Files().Hold(file);
}

void OfficeDocuments::RequireSavable(const fs::path& file) { workbook::Files().RequireSavable(file); }

}  // namespace mirelo::libreoffice
