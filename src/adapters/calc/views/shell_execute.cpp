#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteException.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <osl/file.hxx>
#include <string>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/views/calc_desktop.h"

#include <cerrno>

namespace mirelo::calc {

namespace {

// A scheme has two letters at least.
bool IsAddress(const std::string& file) {
  const auto colon = file.find(':');
  return colon != std::string::npos && colon > 1 && file.find('/') >= colon;
}

// What is no address is a file: the office would take its name for a program to be run.
rtl::OUString AddressOf(const std::string& file) {
  rtl::OUString address = OfficeText(file);
  if (IsAddress(file)) return address;
  if (osl::FileBase::getFileURLFromSystemPath(OfficeText(file), address) != osl::FileBase::E_None) return {};
  return address;
}

int ResultFor(sal_Int32 error) {
  switch (error) {
    case ENOMEM:
      return host::Desktop::kShellOutOfMemory;
    case ETXTBSY:
      return host::Desktop::kShellSharingViolation;
    default:
      return host::Desktop::kShellNoProgram;
  }
}

}  // namespace

int CalcDesktop::ShellExecuteA(const std::string& verb, const std::string& file) {
  const rtl::OUString address = AddressOf(file);
  if (verb != "open" || address.isEmpty()) return kShellNoProgram;
  try {
    css::system::SystemShellExecute::create(context_)->execute(
        address, {}, css::system::SystemShellExecuteFlags::URIS_ONLY);
    return kShellStarted;
  } catch (const css::system::SystemShellExecuteException& failure) {
    return ResultFor(failure.PosixError);
  } catch (const css::uno::Exception&) {
    return kShellNoProgram;
  }
}

}  // namespace mirelo::calc
