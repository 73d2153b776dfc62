#include "calc/borrowed_machine.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/sodium/sodium_vault.h"
#include "calc/office.h"

namespace mirelo {

namespace {

libreoffice::Machine& Borrow() {
  const std::filesystem::path folder = std::getenv("MIRELO_FOLDER");
  sodium::SodiumVault(folder).Set({.name = "MireloDemo", .secret = "demo-secret"});
  libreoffice::Machine::Borrow({.folder = folder});
  return libreoffice::Machine::Of(OfficeContext());
}

}  // namespace

BorrowedMachine& BorrowedMachine::Get() {
  static BorrowedMachine& borrowed = *new BorrowedMachine;  // as long as the office
  return borrowed;
}

BorrowedMachine::BorrowedMachine() : machine(Borrow()) {
  auto attended = std::make_unique<AttendedDesktop>(printed);
  desktop = attended.get();
  machine.host().ShowOn(std::move(attended));
  machine.accept_costs = [](const std::vector<std::string>&) { return true; };
}

}  // namespace mirelo
