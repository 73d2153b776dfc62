#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mirelo {
class frmMirelo;
}
namespace mirelo::host::excel {
class Workbook;
}

namespace mirelo {

// What Go is about to build, as the controls of the settings dialog say it: as much of it as decides what is
// taken away from the workbook.
struct GoPlan {
  struct Ticker {
    std::string name;
    std::vector<std::string> fields;  // of its vertical table, in their order; none for no table
  };
  std::vector<Ticker> tickers;
  std::vector<std::string> columns;  // of the quote table
  std::string vertical_sheet;        // in front of the ticker in brackets
};

GoPlan PlanOf(const frmMirelo& form);

// What of a person's work saving a workbook would lose if a sheet were changed: sentences
// (host::Document::WorkLostByChange).
using LossesOfSheet = std::function<std::vector<std::string>(const std::string& sheet)>;

// What Go will take away from the workbook, or leave undone, without a word of its own: a sentence for each
// such thing. It follows Go's own rules (src/worksheet) by reading; the workbook is not changed.
//
// - tickers too long for the dialog, which will not find them when it opens again;
// - histories that are cleared, since their fields change;
// - what stands under or beside the quote table where Go clears it;
// - a person's work on the sheet of the quote table that a changed sheet loses, such as formulas;
// - tickers that get no history, since no sheet can bear their name.
std::vector<std::string> GoCosts(host::excel::Workbook& workbook, const GoPlan& plan,
                                 const LossesOfSheet& losses);

}  // namespace mirelo
