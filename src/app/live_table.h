#pragma once

#include <functional>
#include <string>
#include <vector>

#include "day/quote_rows.h"
#include "host/message_loop.h"

namespace mirelo::app {

// A table of quotes that stands in place on a terminal, a status line below it. Prices are coloured by the
// way they last went.
class LiveTable {
 public:
  // All must outlive the table; `status` makes the line anew each time.
  LiveTable(host::MessageLoop& loop, const std::vector<std::string>& columns, const day::QuoteRows& rows,
            std::function<std::string()> status);
  ~LiveTable();
  LiveTable(const LiveTable&) = delete;
  LiveTable& operator=(const LiveTable&) = delete;

  // Without a call, four times a second.
  void Redraw();

 private:
  int DirectionOf(std::size_t row);

  host::MessageLoop& loop_;
  const std::vector<std::string>& columns_;
  const day::QuoteRows& rows_;
  std::function<std::string()> status_;
  std::size_t price_;  // the column whose moves give the colours
  struct Move {
    double price = 0;
    int direction = 0;
  };
  std::vector<Move> moves_;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::app
