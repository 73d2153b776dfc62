#include "adapters/workbook/spreadsheet.h"

#include <utility>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/application_object.h"
#include "automation/regional_format.h"

// What needs no file; saved_spreadsheet.cpp is the rest.
namespace mirelo::workbook {

Spreadsheet Spreadsheet::New() { return New(RegionalFormat::Standard()); }

Spreadsheet Spreadsheet::New(const RegionalFormat& regional) {
  auto book = Book::New();
  book->regional = regional;
  return Spreadsheet(std::move(book));
}

Spreadsheet::Spreadsheet(std::shared_ptr<Book> book, std::shared_ptr<Origin> origin)
    : book_(std::move(book)),
      application_(std::make_shared<ApplicationObject>(book_)),
      origin_(std::move(origin)) {}

}  // namespace mirelo::workbook
