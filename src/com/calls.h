#pragma once

#include "com/system.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "automation_server/member.h"

namespace mirelo::com {

// The language of all calls that go out: names of members, formulas and formats are then the same on every
// machine.
constexpr LCID kEnglish = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

// The number of a client's member; nothing where it has none of that name.
std::optional<DISPID> MemberNamed(IDispatch& object, std::string_view name);

// What the object's type information calls its class; nothing where it has none. An interface is often named
// as its class is, with a line in front, which is left out.
std::optional<std::string> ClassNameOf(IDispatch& object);

// Calls a client's method for an event that has these parameters. What it raises is its error, with number,
// text and source. A client that knows no such method (DISP_E_MEMBERNOTFOUND) does not listen to the event.
void CallForEvent(IDispatch& object, DISPID method, std::span<const automation_server::Parameter> parameters,
                  std::span<const Variant> arguments);

// The same of another program's object: a method or a property, and a property that is assigned.
//
// A spreadsheet program refuses calls while a cell is edited in it or a dialog is open. One that runs in
// another process is asked again for two seconds, in which short work of its own is done; meanwhile this
// thread takes no messages, so that nothing of the classes runs nested in a call that is half made. A refusal
// that lasts, or that comes from this process, whose thread the person needs to end what is going on, is an
// error that says so, with the number that the program gave. Nothing of the call has been done then: who
// keeps what was to be written may write it later.
Variant GetMember(IDispatch& object, DISPID member, std::span<const Variant> arguments);
void PutMember(IDispatch& object, DISPID member, const Variant& value, std::span<const Variant> arguments);

}  // namespace mirelo::com
