#include "adapters/qt/busy_internet.h"

#include <QCursor>
#include <QGuiApplication>

namespace mirelo::qt {

namespace {

// Windows go on meanwhile, so it is the cursor that still points.
class BusyCursor {
 public:
  BusyCursor() { QGuiApplication::setOverrideCursor(Qt::BusyCursor); }
  ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace

bool BusyInternet::HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) {
  const BusyCursor cursor;
  return inner().HttpSendRequestA(request, headers, body);
}

bool BusyInternet::InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                    std::uint32_t& read) {
  const BusyCursor cursor;
  return inner().InternetReadFile(request, buffer, capacity, read);
}

}  // namespace mirelo::qt
