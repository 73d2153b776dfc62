#pragma once

#include "com/system.h"

#include <functional>
#include <memory>
#include <string>

#include "automation/variant.h"
#include "com/held.h"

namespace mirelo::com {

// What a library that clients load answers with, whichever it is.

// A factory of whatever `make` gives; its errors are the client's.
Held<IClassFactory> FactoryOf(std::function<std::shared_ptr<Object>()> make);

// The factory of a class that clients can make. `ready` is called before each object is made.
HRESULT GetFactory(REFCLSID class_id, REFIID id, void** place, void (*ready)());
// Whether somebody holds an object, or has locked the library.
bool IsHeld();

// Who has the classes: all users of the machine, or this one.
enum class RegisteredFor { kAllUsers, kThisUser };
// Registers the classes, with the names under which scripts make them ("Mirelo.cMirelo"), as those of that
// library, and the type library in it; takes all that away again, wherever it was.
HRESULT Register(const std::wstring& library, RegisteredFor whom);
HRESULT Unregister(RegisteredFor whom);

}  // namespace mirelo::com
