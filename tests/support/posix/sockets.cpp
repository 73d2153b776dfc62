#include <winsock2.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <vector>

// What support/posix/sockets.h declares. That header cannot be included here: its types have the names of
// Windows' own.

extern "C" int __real_close(int descriptor);

struct PosixPolled {
  int fd;
  short events;
  short revents;
};

namespace mirelo::testing::posix {

namespace {

SOCKET Of(int descriptor) { return static_cast<SOCKET>(descriptor); }

int ErrnoOf(int error) {
  switch (error) {
    case WSAEWOULDBLOCK:
      return EAGAIN;
    case WSAECONNRESET:
    case WSAECONNABORTED:
      return ECONNRESET;
    case WSAECONNREFUSED:
      return ECONNREFUSED;
    case WSAEADDRINUSE:
      return EADDRINUSE;
    case WSAENOTSOCK:
      return EBADF;
    case WSAETIMEDOUT:
      return ETIMEDOUT;
    default:
      return EIO;
  }
}

template <class Result>
Result WithErrno(Result result) {
  if (result < 0) errno = ErrnoOf(::WSAGetLastError());
  return result;
}

int SizeOf(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

constexpr short kOurIn = 0x01;
constexpr short kOurOut = 0x04;
constexpr short kOurError = 0x08;
constexpr short kOurHangUp = 0x10;

short Theirs(short ours) {
  return static_cast<short>(((ours & kOurIn) != 0 ? POLLIN : 0) | ((ours & kOurOut) != 0 ? POLLOUT : 0));
}
short Ours(short theirs) {
  return static_cast<short>(((theirs & POLLIN) != 0 ? kOurIn : 0) | ((theirs & POLLOUT) != 0 ? kOurOut : 0) |
                            ((theirs & POLLERR) != 0 ? kOurError : 0) |
                            ((theirs & POLLHUP) != 0 ? kOurHangUp : 0));
}

}  // namespace

int NeverBlock(int socket) {
  u_long on = 1;
  return WithErrno(::ioctlsocket(Of(socket), static_cast<long>(FIONBIO), &on));
}

int Socket(int family, int type) {
  static WSADATA data{};
  static const int started = ::WSAStartup(MAKEWORD(2, 2), &data);
  (void)started;
  return WithErrno(static_cast<int>(::WSASocketW(family, type, 0, nullptr, 0, WSA_FLAG_OVERLAPPED)));
}

int Bind(int socket, const void* address, int size) {
  return WithErrno(::bind(Of(socket), static_cast<const sockaddr*>(address), size));
}

int Listen(int socket, int backlog) { return WithErrno(::listen(Of(socket), backlog)); }

int Accept(int socket, void* address, int* size, bool blocks) {
  const SOCKET accepted = ::accept(Of(socket), static_cast<sockaddr*>(address), size);
  if (accepted == INVALID_SOCKET) return WithErrno(-1);
  u_long never_block = blocks ? 0 : 1;
  ::ioctlsocket(accepted, static_cast<long>(FIONBIO), &never_block);
  return static_cast<int>(accepted);
}

int Connect(int socket, const void* address, int size) {
  return WithErrno(::connect(Of(socket), static_cast<const sockaddr*>(address), size));
}

int GetName(int socket, void* address, int* size) {
  return WithErrno(::getsockname(Of(socket), static_cast<sockaddr*>(address), size));
}

int SetOption(int socket, int level, int option, const void* value, int size) {
  return WithErrno(::setsockopt(Of(socket), level, option, static_cast<const char*>(value), size));
}

int SetLinger(int socket, int on, int seconds) {
  const linger wanted = {static_cast<u_short>(on), static_cast<u_short>(seconds)};
  return SetOption(socket, SOL_SOCKET, SO_LINGER, &wanted, sizeof wanted);
}

int GetOption(int socket, int level, int option, void* value, int* size) {
  return WithErrno(::getsockopt(Of(socket), level, option, static_cast<char*>(value), size));
}

ssize_t Send(int socket, const void* bytes, std::size_t size, int flags) {
  return WithErrno(::send(Of(socket), static_cast<const char*>(bytes), SizeOf(size), flags));
}

ssize_t Receive(int socket, void* bytes, std::size_t size, int flags) {
  return WithErrno(::recv(Of(socket), static_cast<char*>(bytes), SizeOf(size), flags));
}

int Shutdown(int socket, int how) { return WithErrno(::shutdown(Of(socket), how)); }

int Poll(PosixPolled* polled, unsigned long count, int milliseconds) {
  std::vector<WSAPOLLFD> asked(count);
  for (unsigned long i = 0; i < count; ++i) asked[i] = {Of(polled[i].fd), Theirs(polled[i].events), 0};
  const int ready = ::WSAPoll(asked.data(), count, milliseconds);
  for (unsigned long i = 0; i < count; ++i) polled[i].revents = Ours(asked[i].revents);
  return WithErrno(ready);
}

// Two ends of a connection over the loopback. Their numbers are the lowest that are free, as elsewhere: one
// is kept for the end that comes last.
int SocketPair(int* ends) {
  ends[1] = Socket(AF_INET, SOCK_STREAM);
  const int kept = Socket(AF_INET, SOCK_STREAM);
  const int listener = Socket(AF_INET, SOCK_STREAM);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  int size = sizeof address;
  const bool is_made = Bind(listener, &address, size) == 0 && Listen(listener, 1) == 0 &&
                       GetName(listener, &address, &size) == 0 && Connect(ends[1], &address, size) == 0;
  ::closesocket(Of(kept));
  ends[0] = is_made ? Accept(listener, nullptr, nullptr, false) : -1;
  ::closesocket(Of(listener));
  if (ends[0] < 0) return -1;
  const int at_once = 1;
  SetOption(ends[1], IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof at_once);
  return NeverBlock(ends[1]);
}

// A socket that sends to itself.
int Event() {
  const int event = Socket(AF_INET, SOCK_DGRAM);
  sockaddr_in own = {};
  own.sin_family = AF_INET;
  own.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  int size = sizeof own;
  if (Bind(event, &own, size) != 0 || GetName(event, &own, &size) != 0 || Connect(event, &own, size) != 0) {
    return -1;
  }
  return event;
}

int Raise(int event, std::uint64_t) { return Send(event, "!", 1, 0) == 1 ? 0 : -1; }

}  // namespace mirelo::testing::posix

// The linker has calls of close() come here.
extern "C" int __wrap_close(int descriptor) {
  if (::closesocket(static_cast<SOCKET>(descriptor)) == 0) return 0;
  return __real_close(descriptor);
}
