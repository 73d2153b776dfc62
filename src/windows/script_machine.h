#pragma once

namespace mirelo::windows {

// Lets clients make an object by the name "Mirelo.cMachine", beside those of the classes, for what programs
// have loops of messages and dialogs for and scripts have not:
//
//   Wait(Milliseconds)                events are raised meanwhile
//   StoreCredentials(Name, Secret)    what proves the application to QuoteTracker's stream
//   Attended                          False: nobody is at the screen, so a ScriptPerson stands in
//   Wish(Name, Value)                 what the settings dialog is to be filled in with then
//   Told                              what would have been shown since it was asked for last
//
// To be called before the library is asked for any class; further calls do nothing.
void KnowScriptMachine();

}  // namespace mirelo::windows
