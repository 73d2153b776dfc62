#include "app/commands/list_command.h"

#include <algorithm>

#include "app/commands/checks.h"
#include "app/exit_code.h"
#include "app/failure_reason.h"
#include "app/options.h"
#include "app/output/text_table.h"
#include "app/session.h"
#include "app/watch_lists.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "person/ticker_list.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

bool Holds(const std::vector<std::string>& tickers, const std::string& ticker) {
  return std::ranges::any_of(tickers, [&](const auto& each) { return EqualText(each, ticker); });
}

}  // namespace

ListCommand::ListCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand("list", "Keep lists of tickers, for --list in place of the tickers")),
      add_(command_.AddCommand("add", "Add tickers to a list, which is made when it is absent")),
      remove_(command_.AddCommand("remove", "Take tickers off a list; without any left it is gone")),
      show_(command_.AddCommand("show", "Print the tickers of a list, one a line, or all lists")),
      delete_(command_.AddCommand("delete", "Remove a list")) {
  command_.RequireCommand();
  const auto name = [this](command_line::Command& command) {
    return command.AddArgument("NAME", name_, "The list").Check(WhyNoListName);
  };
  const auto tickers = [this](command_line::Command& command, const char* meaning) {
    command.AddArgument("TICKER", tickers_, meaning).Require().Check(WhyNoTickers);
  };
  name(add_).Require();
  tickers(add_, "The tickers, which go behind those that are there");
  name(remove_).Require();
  tickers(remove_, "The tickers");
  name(show_);
  name(delete_).Require();
}

bool ListCommand::IsChosen() const { return command_.IsChosen(); }

int ListCommand::Run() {
  const Session session(global_);
  WatchLists lists;
  try {
    return Run(lists);
  } catch (const RuntimeError& error) {
    throw WithReason(error);
  }
}

int ListCommand::Run(WatchLists& lists) const {
  if (add_.IsChosen()) return Add(lists);
  if (remove_.IsChosen()) return Remove(lists);
  if (show_.IsChosen()) return Show(lists);
  return Delete(lists);
}

int ListCommand::Add(WatchLists& lists) const {
  auto tickers = lists.Tickers(name_);
  for (const std::string& ticker : SplitTickers(tickers_)) {
    if (!Holds(tickers, ticker)) tickers.push_back(UCase(ticker));
  }
  lists.Store(name_, tickers);
  return kGood;
}

int ListCommand::Remove(WatchLists& lists) const {
  auto tickers = lists.Existing(name_);
  for (const std::string& ticker : SplitTickers(tickers_)) {
    if (!Holds(tickers, ticker)) throw RuntimeError(5, ticker + " is not on the list " + name_);
    std::erase_if(tickers, [&](const auto& each) { return EqualText(each, ticker); });
  }
  lists.Store(name_, tickers);
  return kGood;
}

int ListCommand::Show(WatchLists& lists) const {
  if (!name_.empty()) {
    for (const std::string& ticker : lists.Existing(name_)) Out() << ticker << "\n";
    return kGood;
  }
  TextTable table({"List", "Tickers"});
  const auto names = lists.Names();
  for (const std::string& name : names) table.AddRow({name, Join(lists.Tickers(name), ",")});
  if (names.empty()) {
    Err() << "There are no watch lists yet. Make one with: mirelo list add NAME TICKER...\n";
    return kGood;
  }
  Out() << table.ToText(Out().IsTerminal());
  return kGood;
}

int ListCommand::Delete(WatchLists& lists) const {
  lists.Existing(name_);
  lists.Store(name_, {});
  return kGood;
}

}  // namespace mirelo::app
