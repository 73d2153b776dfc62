#include "app/commands/list_command.h"

#include <CLI/CLI.hpp>
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

ListCommand::ListCommand(CLI::App& program, const GlobalOptions& global) : global_(global) {
  command_ = program.add_subcommand("list", "Keep lists of tickers, for --list in place of the tickers");
  command_->require_subcommand(1);
  const auto name = [this](CLI::App& command) {
    command.add_option("NAME", name_, "The list")->check(IsListNamed());
  };
  const auto tickers = [this](CLI::App& command, const char* meaning) {
    command.add_option("TICKER", tickers_, meaning)->required()->check(IsTickers());
  };
  add_ = command_->add_subcommand("add", "Add tickers to a list, which is made when it is absent");
  name(*add_);
  tickers(*add_, "The tickers, which go behind those that are there");
  remove_ = command_->add_subcommand("remove", "Take tickers off a list; without any left it is gone");
  name(*remove_);
  tickers(*remove_, "The tickers");
  show_ = command_->add_subcommand("show", "Print the tickers of a list, one a line, or all lists");
  name(*show_);
  delete_ = command_->add_subcommand("delete", "Remove a list");
  name(*delete_);
  for (CLI::App* const command : {add_, remove_, delete_}) command->get_option("NAME")->required();
}

bool ListCommand::IsChosen() const { return command_->parsed(); }

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
  if (add_->parsed()) return Add(lists);
  if (remove_->parsed()) return Remove(lists);
  if (show_->parsed()) return Show(lists);
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
