#include "adapters/calc/objects/document.h"

#include <algorithm>
#include <chrono>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/UndoContextNotClosedException.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/XCloseBroadcaster.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstddef>
#include <rtl/uri.hxx>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/gathered_formats.h"
#include "adapters/calc/objects/number_formats.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/undo_aside.h"
#include "automation/text.h"

namespace mirelo::calc {

// Hears that the document is being closed, while the office may still hold this: it outlives its document.
class Document::Closing final : public cppu::WeakImplHelper1<css::util::XCloseListener> {
 public:
  explicit Closing(std::weak_ptr<Document> document) : document_(std::move(document)) {}

  void SAL_CALL queryClosing(const css::lang::EventObject&, sal_Bool) override {}
  void SAL_CALL notifyClosing(const css::lang::EventObject&) override { Tell(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override { Tell(); }

 private:
  void Tell() const {
    if (const auto document = document_.lock()) document->BecomeGone();
  }

  const std::weak_ptr<Document> document_;
};

namespace {

// A part of a URL as a person reads it: "%20" is a blank.
std::string DecodedName(const std::string& part) {
  return TextOf(rtl::Uri::decode(OfficeText(part), rtl_UriDecodeWithCharset, RTL_TEXTENCODING_UTF8));
}

}  // namespace

std::shared_ptr<Document> Document::Of(const Context& context, const Uno& uno, std::function<void()> gone) {
  std::shared_ptr<Document> document(new Document(context, uno));
  document->gone_ = std::move(gone);
  document->closing_ = new Closing(document);
  As<css::util::XCloseBroadcaster>(uno)->addCloseListener(document->closing_);
  return document;
}

Document::Document(const Context& context, const Uno& uno)
    : context_(context),
      uno_(uno),
      model_(As<css::frame::XModel>(uno_)),
      undo_list_(As<css::document::XUndoManagerSupplier>(uno_)->getUndoManager()),
      formats_(std::make_unique<NumberFormats>(context_, uno_)),
      front_(std::make_unique<calc::Front>(*this)),
      gathered_(std::make_unique<GatheredFormats>(*this)) {}

Document::~Document() {
  TurnUndoOnAgain();
  if (is_gone_ || !closing_.is()) return;
  try {
    As<css::util::XCloseBroadcaster>(uno_)->removeCloseListener(closing_);
  } catch (const css::uno::Exception&) {  // the office is going
  }
}

void Document::BecomeGone() {
  if (is_gone_.exchange(true) || !gone_) return;
  try {
    gone_();
  } catch (...) {  // the office is closing the document, and has nobody to tell
  }
}

std::string Document::FileName() const {
  const std::string location = TextOf(As<css::frame::XStorable>(model_)->getLocation());
  return DecodedName(location.substr(location.rfind('/') + 1));
}

std::vector<std::shared_ptr<DocumentSheet>> Document::Sheets() {
  const auto tabs = As<css::container::XIndexAccess>(uno_->getSheets());
  std::vector<std::shared_ptr<DocumentSheet>> sheets;
  sheets.reserve(static_cast<std::size_t>(tabs->getCount()));
  for (sal_Int32 i = 0; i < tabs->getCount(); ++i)
    sheets.push_back(SheetOf(As<css::sheet::XSpreadsheet>(tabs->getByIndex(i))));
  return sheets;
}

std::shared_ptr<DocumentSheet> Document::Find(std::string_view name) {
  const auto tabs = uno_->getSheets();
  for (const rtl::OUString& tab : tabs->getElementNames()) {
    if (EqualText(TextOf(tab), name)) return SheetOf(As<css::sheet::XSpreadsheet>(tabs->getByName(tab)));
  }
  return nullptr;
}

std::shared_ptr<DocumentSheet> Document::SheetOf(const Reference<css::sheet::XSpreadsheet>& uno) {
  const auto page = PageOf(uno);
  auto found = std::ranges::find_if(known_, [&](const auto& sheet) { return sheet->Page() == page; });
  if (found == known_.end()) found = known_.insert(found, std::make_unique<DocumentSheet>(*this, uno, page));
  return {shared_from_this(), found->get()};
}

std::shared_ptr<DocumentSheet> Document::AddSheet(std::string_view name) {
  CheckNotOnlyForReading();
  CheckStructure();
  const auto place = static_cast<sal_Int16>(front_->Sheet()->Index() - 1);
  {
    const UndoAside aside(*this);
    uno_->getSheets()->insertNewByName(OfficeText(name), place);
  }
  ClearUndoList();  // its steps know sheets by their numbers
  auto sheet = SheetOf(As<css::sheet::XSpreadsheet>(uno_->getSheets()->getByName(OfficeText(name))));
  front_->Show(*sheet);
  return sheet;
}

void Document::HoldScreen() {
  open_ = nullptr;
  pause_ = std::make_unique<PaintPause>(context_, model_, [held = weak_from_this()] {
    if (const auto document = held.lock()) document->EndHolding();
  });
}

std::unique_ptr<PaintPause> Document::LetGoOfScreen() {
  TurnUndoOnAgain();
  return std::move(pause_);
}

// The office handles its events, and has nobody to tell what fails.
void Document::EndHolding() {
  try {
    LayFormats();
  } catch (...) {
  }
  TurnUndoOnAgain();
}

void Document::LayFormats() const { gathered_->Lay(); }

void Document::TurnUndoOnAgain() {
  if (!std::exchange(keeps_undo_off_, false)) return;
  try {
    UndoAside::TurnUndoOn(*this);
  } catch (const css::uno::Exception&) {  // the document is gone, and its undo list
  }
}

double Document::FirstDay() const {
  using namespace std::chrono;
  constexpr sys_days kOfClients = 1899y / December / 30;
  const auto first = Properties(uno_).Get("NullDate", css::util::Date(30, 12, 1899));
  const sys_days day = year(first.Year) / month(first.Month) / std::chrono::day(first.Day);
  return static_cast<double>((day - kOfClients).count());
}

void Document::ClearUndoList() const {
  try {
    undo_list_->clear();
  } catch (const css::document::UndoContextNotClosedException&) {  // amid a step of somebody else's macro
  }
}

void Document::StayAside() const {
  if (aside_ != nullptr) aside_->Stay();
}

void Document::CheckNotOnlyForReading() const {
  if (As<css::frame::XStorable>(model_)->isReadonly()) throw OnlyForReading();
}

void Document::CheckStructure() const {
  if (As<css::util::XProtectable>(uno_)->isProtected()) throw StructureProtected();
}

}  // namespace mirelo::calc
