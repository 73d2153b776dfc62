#include "adapters/workbook/spreadsheet.h"

#include <utility>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/application_object.h"

namespace mirelo::workbook {

Spreadsheet Spreadsheet::New(const RegionalFormat& regional) {
  auto book = Book::New();
  book->regional = regional;
  return Spreadsheet(std::move(book));
}

Spreadsheet::Spreadsheet(std::shared_ptr<Book> book)
    : book_(std::move(book)), application_(std::make_shared<ApplicationObject>(book_)) {}

}  // namespace mirelo::workbook
