#pragma once

struct HWND__;  // Windows' own

namespace mirelo::windows {

// Has the system send a window a message of that number, with the socket as its first parameter, when the
// socket is or becomes ready for one of these events, of poll::POLLIN and poll::POLLOUT. It is no more than a
// hint: one may be missing that would only repeat what was told before, until this is called again. 0 for no
// events ends it.
void AskForMessages(int socket, HWND__* window, unsigned message, short events);

}  // namespace mirelo::windows
