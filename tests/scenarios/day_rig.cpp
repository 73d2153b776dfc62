#include "scenarios/day_rig.h"

#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/dialog_person.h"

namespace mirelo::testing {

using Credential = MemoryVault::Credential;

Day::Day()
    : installed(host.Use(loop).Use(clock).Use(registry).Use(replies).Use(sockets).Use(vault).Use(system).Use(
          desktop)) {
  vault.credentials = {{Credential::ApplicationName, "MireloDemo"},
                       {Credential::ApplicationSecret, "demo-secret"}};
  internet.answer = [this](const AnsweringInternet::Request& request) { return portfolios(request); };
}

std::int32_t Day::Begin() {
  day.emplace(loop, sockets, replies, spreadsheet.Application());
  day->Status.Subscribe([this](const std::string& text) { told.push_back(text); });
  if (trail != nullptr) day->Follow(*trail);
  if (journal != nullptr) day->KeepIn(*journal);
  DialogPerson person(wishes, desktop);
  const std::int32_t result = day->ShowDialog();
  EXPECT_FALSE(person.Complained()) << person.Complained()->text;
  behind_go();
  day->Start();
  return result;
}

void Day::Pass(std::chrono::milliseconds time) {
  clock.Advance(std::chrono::duration<double>(time).count());
  loop.Advance(time);
}

Variant Day::Cell(const std::string& sheet, std::int32_t row, std::int32_t column) {
  return spreadsheet.Application()->Worksheets()->Item(sheet)->Cells(row, column)->Value();
}

std::string Day::Text(const std::string& sheet, std::int32_t row, std::int32_t column) {
  return Cell(sheet, row, column).ToText();
}

std::vector<std::string> Day::Column(const std::string& sheet, std::int32_t column) {
  std::vector<std::string> texts;
  for (std::int32_t row = 3; !Cell(sheet, row, column).IsEmpty(); ++row) {
    texts.push_back(Text(sheet, row, column));
  }
  return texts;
}

}  // namespace mirelo::testing
