// Files that can be loaded, but whose sheets do not stand being saved as they are: all is written anew then,
// and what is lost by that is told first.

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "workbook/script.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using workbook::Spreadsheet;

constexpr const char* kUnfitTable = "Dovanta2_Quotes";
constexpr const char* kUnfit = "Workbook: its sheets cannot stay as they stand in the file (";
constexpr const char* kAnew = "), so all must be written anew.";

void AddTable(const Spreadsheet& spreadsheet) {
  const auto sheet = BookOf(spreadsheet)->Worksheets()->Add();
  sheet->Name(kUnfitTable);
  sheet->Range("A1")->Value("MSFT");
  sheet->Range("B1")->Value(28.35);
  sheet->Range("B1")->NumberFormat("+ 0.0000;- 0.0000");
}

class UnfitFile : public WorkbookFiles {
 protected:
  // A person's workbook that has no room for more formats, with a table beside the person's sheets.
  Spreadsheet OpenUnfit(Parts parts) const {
    FillFormats(parts);
    auto spreadsheet = Open(parts);
    AddTable(spreadsheet);
    return spreadsheet;
  }
  Spreadsheet OpenUnfit() const { return OpenUnfit(Unzip(PersonsWorkbook())); }

  // What is told while it is saved.
  std::vector<std::string> ToldBySaving(Spreadsheet& spreadsheet) const {
    std::vector<std::string> told;
    spreadsheet.Save(File(), [&](const std::string& sentence) { told.push_back(sentence); });
    return told;
  }
};

// What comes of saving it with somebody to tell. All its formats are read at each step, so it is opened and
// saved once for the tests that look on.
class SavedUnfitFile : public UnfitFile {
 protected:
  struct Saving {
    std::vector<std::string> losses_before, told, losses_behind;
    std::size_t told_of_the_old_file = 0;  // sentences that were told while it was as before
    std::string old_bytes, bytes;
    std::vector<std::string> listing;
  };
  const Saving& Saved() const {
    static const Saving saved = [this] {
      Saving saving;
      auto spreadsheet = OpenUnfit();
      saving.losses_before = spreadsheet.NewLosses();
      saving.old_bytes = BytesOf(File());
      spreadsheet.Save(File(), [&](const std::string& sentence) {
        saving.told.push_back(sentence);
        if (BytesOf(File()) == saving.old_bytes) ++saving.told_of_the_old_file;
      });
      saving.losses_behind = spreadsheet.Losses();
      saving.bytes = BytesOf(File());
      saving.listing = FolderListing();
      return saving;
    }();
    return saved;
  }
};

TEST_F(SavedUnfitFile, IsSavedAnewAtOnceAndWhatIsLostIsToldOnce) {
  EXPECT_THAT(Saved().losses_before, IsEmpty()) << "it cannot be foreseen";
  const auto& told = Saved().told;
  ASSERT_GT(told.size(), 10u);
  EXPECT_EQ(told.front(), std::string(kUnfit) + "xl/styles.xml: too many formats" + kAnew);
  for (const char* loss :
       {"Sheet \"Portfolio\": not kept: merged cells.", "Sheet \"Portfolio\": not kept: data validation.",
        "Sheet \"Notes\": not kept: tables.", "Workbook: not kept: defined names.",
        "The names of cell styles are not kept; the cells look the same."}) {
    EXPECT_EQ(std::count(told.begin(), told.end(), loss), 1) << loss;
  }
  EXPECT_THAT(Saved().losses_behind, IsEmpty()) << "they are suffered";
  EXPECT_THAT(Saved().listing, ElementsAre("quotes.xlsx"));
  WriteBytes(File(), Saved().bytes);
  EXPECT_THAT(Spreadsheet::Open(File()).Losses(), IsEmpty());
}

TEST_F(UnfitFile, IsSavedAgainAndAgainWithNothingMoreToTell) {
  auto spreadsheet = OpenUnfit();
  ToldBySaving(spreadsheet);
  for (const double price : {29.0, 30.0}) {
    BookOf(spreadsheet)->Worksheets()->Item(kUnfitTable)->Range("B1")->Value(price);
    EXPECT_THAT(ToldBySaving(spreadsheet), IsEmpty());
    const auto again = Spreadsheet::Open(File());
    EXPECT_EQ(BookOf(again)->Worksheets()->Item(kUnfitTable)->Range("B1")->Value(), Variant(price));
  }
  auto next = Spreadsheet::Open(File());
  BookOf(next)->Worksheets()->Item("Portfolio")->Range("B3")->Value(200.0);
  EXPECT_THAT(ToldBySaving(next), IsEmpty()) << "on another day";
}

TEST_F(SavedUnfitFile, HoldsForOthersAllThatIsNotTold) {
  WriteBytes(File(), Saved().bytes);
  const auto lines = RunScript("check_sheets_of_a_person.py", File());
  for (const char* line :
       {"Dovanta2_Quotes 'A1' 'MSFT' 'General' 'Normal'",
        "Dovanta2_Quotes 'B1' 28.35 '+ 0.0000;- 0.0000' 'Normal'",
        "Portfolio 'A1' 'What I hold' 'General' 'Normal'", "Portfolio 'A3' 'MSFT' 'General' 'Normal'",
        "Portfolio 'A3' 'bought 1999'", "Portfolio 'B3' 100 'General' 'Normal'",
        "Portfolio 'C3' 28.35 '#,##0.00 \"$\"' 'Normal'", "Portfolio 'charts' 1",
        "Notes 'A3' 'a' 'General' 'Normal'", "Hidden 'B2' 'secret' 'General' 'Normal'",
        "Portfolio 'merged' []", "names []"}) {
    EXPECT_THAT(lines, Contains(line));
  }
}

TEST_F(SavedUnfitFile, IsToldOfBeforeItChanges) {
  EXPECT_GT(Saved().told.size(), 10u);
  EXPECT_EQ(Saved().told_of_the_old_file, Saved().told.size());
  EXPECT_NE(Saved().bytes, Saved().old_bytes);
}

TEST_F(UnfitFile, StaysAsItIsWhereThereIsNobodyToTell) {
  auto spreadsheet = OpenUnfit();
  const std::string old = BytesOf(File());
  const RuntimeError error = ErrorOf([&] { spreadsheet.Save(File()); });
  EXPECT_EQ(error.Number(), 1004);
  EXPECT_THAT(error.Description(), AllOf(StartsWith("Cannot save " + File().string()),
                                         HasSubstr("too many formats"), EndsWith(kAnew)));
  EXPECT_EQ(BytesOf(File()), old);
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));

  EXPECT_THAT(spreadsheet.NewLosses(), Contains("Sheet \"Portfolio\": not kept: merged cells."));
  spreadsheet.Save(File());
  EXPECT_EQ(SheetOf(Spreadsheet::Open(File()))->Name(), kUnfitTable);
}

// A disk that is full. A limit of the size of files stands for it: it strikes wherever that size is reached
// first, in the helper files of the writer or in the file itself.
class FullDisk : public UnfitFile {
 protected:
  struct Saving {
    std::int32_t error;
    std::int32_t told;  // sentences
    friend bool operator==(const Saving&, const Saving&) = default;
  };
  // What comes of saving in a process whose files may not be larger than this: twice, and again when there is
  // room. Before that time the file must be as it was.
  std::vector<Saving> SavedWithin(rlim_t room, Spreadsheet& spreadsheet) const {
    const std::string old = BytesOf(File());
    ChildProcess child([&](const ChildProcess::Test& test) {
      std::signal(SIGXFSZ, SIG_IGN);
      rlimit limit{};
      if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return;
      for (const rlim_t size : {room, room, limit.rlim_max}) {
        limit.rlim_cur = size;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return;
        std::int32_t told = 0;
        test.Report(NumberOf([&] { spreadsheet.Save(File(), [&](const std::string&) { ++told; }); }));
        test.Report(told);
        test.Report(BytesOf(File()) == old && FolderListing().size() == 1 ? 1 : 0);
      }
    });
    std::vector<Saving> savings;
    std::int32_t is_old = 0;
    for (Saving saving{}; child.Read(saving.error) && child.Read(saving.told) && child.Read(is_old);) {
      EXPECT_TRUE(saving.error == 0 || is_old != 0) << "the file must stay as it was";
      savings.push_back(saving);
    }
    EXPECT_TRUE(child.Finish());
    EXPECT_EQ(savings.size(), 3u);
    return savings;
  }

  static void AddLongTable(const Spreadsheet& spreadsheet) {
    const auto sheet = BookOf(spreadsheet)->Worksheets()->Add();
    VariantArray table(1, 2000, 1, 8);
    for (std::int32_t row = 1; row <= 2000; ++row) {
      for (std::int32_t column = 1; column <= 8; ++column) table(row, column) = Variant(row * 1.37 / column);
    }
    sheet->Range("A1")->Resize(2000, 8)->Value(table);
  }
};

// The person's sheet is large, but packs to little: a file that keeps it finds room, and the helper files of
// one that is written anew do not.
TEST_F(FullDisk, LeavesAnUnfitFileAsItIsUntilThereIsRoomToWriteAllAnew) {
  Parts parts = Unzip(PersonsWorkbook());
  std::string rows;
  for (int row = 10; row < 20'000; ++row) {
    const std::string number = std::to_string(row);
    rows += "<row r=\"" + number + "\"><c r=\"A" + number + "\"><v>7</v></c></row>";
  }
  std::string& notes = parts["xl/worksheets/sheet2.xml"];
  notes.insert(notes.find("</sheetData>"), rows);
  auto spreadsheet = OpenUnfit(parts);
  const rlim_t room = BytesOf(File()).size() * 5 / 4;
  ASSERT_LT(room, rows.size() / 2);

  const auto savings = SavedWithin(room, spreadsheet);
  EXPECT_EQ(savings[0].error, 61);
  EXPECT_GT(savings[0].told, 10);
  EXPECT_EQ(savings[1], (Saving{61, 0})) << "all was told";
  EXPECT_EQ(savings[2], (Saving{0, 0}));
  EXPECT_EQ(SheetOf(Spreadsheet::Open(File()))->Name(), kUnfitTable);
}

TEST_F(FullDisk, IsNoReasonToWriteAllAnew) {
  int refused = 0;
  for (const rlim_t room : std::initializer_list<rlim_t>{0, 10'000, 60'000, 200'000, 400'000}) {
    SCOPED_TRACE(room);
    WriteBytes(File(), PersonsWorkbook());
    auto spreadsheet = Spreadsheet::Open(File());
    AddLongTable(spreadsheet);
    for (const Saving& saving : SavedWithin(room, spreadsheet)) {
      EXPECT_EQ(saving.told, 0);
      if (saving.error != 0) {
        ++refused;
        EXPECT_EQ(saving.error, 61);
      }
    }
    EXPECT_NE(LookOf(File()).find("mergeCell"), std::string::npos) << "kept, once there is room";
  }
  EXPECT_GE(refused, 8);
}

}  // namespace
}  // namespace mirelo::testing
