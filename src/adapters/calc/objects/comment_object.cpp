#include "adapters/calc/objects/comment_object.h"

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetAnnotation.hpp>
#include <com/sun/star/sheet/XSheetAnnotationAnchor.hpp>
#include <com/sun/star/sheet/XSheetAnnotationShapeSupplier.hpp>
#include <com/sun/star/sheet/XSheetAnnotations.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/text/XSimpleText.hpp>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/floating_objects.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/text_units.h"

namespace mirelo::calc {

using namespace spreadsheet;

namespace {

// 96 by 55.5 points.
const css::awt::Size kBoxSize(3387, 1958);

// Null where there is no comment. Its text is not asked for: the office makes an editor whenever it is.
Reference<css::sheet::XSheetAnnotation> NoteOn(const CellBlock& cell) {
  const auto note = As<css::sheet::XSheetAnnotationAnchor>(cell.FirstCell())->getAnnotation();
  // Every cell has such an object. Without a box it stands for none.
  const bool has_box =
      note.is() && As<css::sheet::XSheetAnnotationShapeSupplier>(note)->getAnnotationShape().is();
  return has_box ? note : Reference<css::sheet::XSheetAnnotation>();
}

}  // namespace

std::string CommentObject::Text() {
  return cell_.document().Ask([&] {
    const auto note = NoteOn(cell_);
    if (!note.is()) throw Refusals::CommentGone();
    return TextOf(As<css::text::XSimpleText>(note)->getString());
  });
}

std::shared_ptr<host::excel::Shape> CommentObject::Shape() {
  return cell_.document().Ask([&] { return CommentBoxOf(cell_); });
}

std::shared_ptr<host::excel::Comment> CommentOf(const CellBlock& cell) {
  return NoteOn(cell).is() ? std::make_shared<CommentObject>(cell) : nullptr;
}

namespace {

// Into the box that it is to have. Not inserted with its text: the office would look for a box that fits,
// which takes four times as long as to lay a long text into the one that is wanted, and would drop an empty
// last line.
void LayText(const css::uno::Reference<css::sheet::XSheetAnnotation>& note, std::string_view text) {
  As<css::sheet::XSheetAnnotationShapeSupplier>(note)->getAnnotationShape()->setSize(kBoxSize);
  const auto shown = OfficeText(CleanText(text));
  if (!shown.isEmpty()) As<css::text::XSimpleText>(note)->setString(shown);
}

}  // namespace

std::shared_ptr<host::excel::Comment> LayComment(const CellBlock& cell, std::string_view text) {
  if (CommentOf(cell) != nullptr) throw Refusals::HasAComment();
  CheckCommentText(text);
  const auto address = As<css::sheet::XCellAddressable>(cell.FirstCell())->getCellAddress();
  As<css::sheet::XSheetAnnotationsSupplier>(cell.sheet->Get())
      ->getAnnotations()
      ->insertNew(address, OfficeText(" "));
  try {
    LayText(As<css::sheet::XSheetAnnotationAnchor>(cell.FirstCell())->getAnnotation(), text);
  } catch (...) {
    // Nothing half done: a client that tries again would find the cell taken.
    As<css::sheet::XSheetOperation>(cell.Cells())->clearContents(css::sheet::CellFlags::ANNOTATION);
    throw;
  }
  return std::make_shared<CommentObject>(cell);
}

AreaSet CommentedCells(const CellBlock& block) {
  const auto found =
      As<css::sheet::XCellRangesQuery>(block.Cells())->queryContentCells(css::sheet::CellFlags::ANNOTATION);
  AreaSet cells;
  for (const auto& range : found->getRangeAddresses())
    cells.push_back({range.StartRow + 1, range.StartColumn + 1, range.EndRow + 1, range.EndColumn + 1});
  return cells;
}

void ClearComments(const CellBlock& block) {
  if (CommentedCells(block).empty()) return;
  block.document().ClearUndoList();
  As<css::sheet::XSheetOperation>(block.Cells())->clearContents(css::sheet::CellFlags::ANNOTATION);
}

void ClearUndoListIfCommented(const CellBlock& block) {
  if (!CommentedCells(block).empty()) block.document().ClearUndoList();
}

}  // namespace mirelo::calc
