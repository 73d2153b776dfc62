#pragma once

// What tests use of the sockets of other systems, where Windows is the system: calls of the same names and
// meanings over Windows' own. Headers of this folder have the names of those that tests include elsewhere.

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

using socklen_t = int;
using eventfd_t = std::uint64_t;

inline constexpr int AF_UNIX = 1;
inline constexpr int AF_INET = 2;
inline constexpr int SOCK_STREAM = 1;
inline constexpr int SOCK_DGRAM = 2;
inline constexpr int SOCK_NONBLOCK = 0x1000;
inline constexpr int SOCK_CLOEXEC = 0x2000;
inline constexpr int SOMAXCONN = 0x7FFFFFFF;
inline constexpr int MSG_NOSIGNAL = 0;
inline constexpr int MSG_OOB = 1;
inline constexpr int SHUT_RD = 0;
inline constexpr int SHUT_WR = 1;
inline constexpr int SHUT_RDWR = 2;
inline constexpr int IPPROTO_TCP = 6;
inline constexpr int TCP_NODELAY = 1;
inline constexpr int SOL_SOCKET = 0xFFFF;
inline constexpr int SO_REUSEADDR = 0x0004;
inline constexpr int SO_LINGER = 0x0080;
inline constexpr int SO_SNDBUF = 0x1001;
inline constexpr int SO_RCVBUF = 0x1002;
inline constexpr int SO_ERROR = 0x1007;
inline constexpr std::uint32_t INADDR_ANY = 0;
inline constexpr std::uint32_t INADDR_LOOPBACK = 0x7F000001;
inline constexpr int EFD_CLOEXEC = 1;
inline constexpr int EFD_NONBLOCK = 2;

struct in_addr {
  std::uint32_t s_addr;
};
struct sockaddr {
  std::uint16_t sa_family;
  char sa_data[14];
};
struct sockaddr_in {
  std::uint16_t sin_family;
  std::uint16_t sin_port;
  in_addr sin_addr;
  char sin_zero[8];
};
struct linger {
  int l_onoff;
  int l_linger;
};
struct PosixPolled {
  int fd;
  short events;
  short revents;
};
using pollfd = PosixPolled;
inline constexpr short POLLIN = 0x01;
inline constexpr short POLLOUT = 0x04;
inline constexpr short POLLERR = 0x08;
inline constexpr short POLLHUP = 0x10;

inline std::uint16_t htons(std::uint16_t number) {
  return static_cast<std::uint16_t>((number << 8) | (number >> 8));
}
inline std::uint32_t htonl(std::uint32_t number) { return __builtin_bswap32(number); }
inline std::uint16_t ntohs(std::uint16_t number) { return htons(number); }
inline std::uint32_t ntohl(std::uint32_t number) { return htonl(number); }

// Under other names, since Windows' own calls have these ones where they are made.
namespace mirelo::testing::posix {

int Socket(int family, int type);
int SocketPair(int* ends);
int Bind(int socket, const void* address, int size);
int Listen(int socket, int backlog);
int Accept(int socket, void* address, int* size, bool blocks);
int Connect(int socket, const void* address, int size);
int GetName(int socket, void* address, int* size);
int SetOption(int socket, int level, int option, const void* value, int size);
int GetOption(int socket, int level, int option, void* value, int* size);
ssize_t Send(int socket, const void* bytes, std::size_t size, int flags);
ssize_t Receive(int socket, void* bytes, std::size_t size, int flags);
int Shutdown(int socket, int how);
int Poll(PosixPolled* polled, unsigned long count, int milliseconds);
int Event();
int Raise(int event, std::uint64_t count);
int SetLinger(int socket, int on, int seconds);
int NeverBlock(int socket);

}  // namespace mirelo::testing::posix

// Failures are -1 and errno. What is made here close() closes as it does files.
inline int socket(int family, int type, int /*protocol*/) {
  const int made = mirelo::testing::posix::Socket(family, type & 0xFFF);
  if (made >= 0 && (type & SOCK_NONBLOCK) != 0) mirelo::testing::posix::NeverBlock(made);
  return made;
}
inline int socketpair(int /*family*/, int /*type*/, int /*protocol*/, int* ends) {
  return mirelo::testing::posix::SocketPair(ends);
}
inline int bind(int socket, const sockaddr* address, socklen_t size) {
  return mirelo::testing::posix::Bind(socket, address, size);
}
inline int listen(int socket, int backlog) { return mirelo::testing::posix::Listen(socket, backlog); }
inline int accept4(int socket, sockaddr* address, socklen_t* size, int flags) {
  return mirelo::testing::posix::Accept(socket, address, size, (flags & SOCK_NONBLOCK) == 0);
}
inline int accept(int socket, sockaddr* address, socklen_t* size) {
  return accept4(socket, address, size, 0);
}
inline int connect(int socket, const sockaddr* address, socklen_t size) {
  return mirelo::testing::posix::Connect(socket, address, size);
}
inline int getsockname(int socket, sockaddr* address, socklen_t* size) {
  return mirelo::testing::posix::GetName(socket, address, size);
}
inline int setsockopt(int socket, int level, int option, const void* value, socklen_t size) {
  if (level == SOL_SOCKET && option == SO_LINGER) {
    const auto* const wanted = static_cast<const linger*>(value);
    return mirelo::testing::posix::SetLinger(socket, wanted->l_onoff, wanted->l_linger);
  }
  return mirelo::testing::posix::SetOption(socket, level, option, value, size);
}
inline int getsockopt(int socket, int level, int option, void* value, socklen_t* size) {
  return mirelo::testing::posix::GetOption(socket, level, option, value, size);
}
inline ssize_t send(int socket, const void* bytes, std::size_t size, int flags) {
  return mirelo::testing::posix::Send(socket, bytes, size, flags);
}
inline ssize_t recv(int socket, void* bytes, std::size_t size, int flags) {
  return mirelo::testing::posix::Receive(socket, bytes, size, flags);
}
inline int shutdown(int socket, int how) { return mirelo::testing::posix::Shutdown(socket, how); }
inline int poll(pollfd* polled, unsigned long count, int milliseconds) {
  return mirelo::testing::posix::Poll(polled, count, milliseconds);
}
inline int eventfd(unsigned /*count*/, int /*flags*/) { return mirelo::testing::posix::Event(); }
inline int eventfd_write(int descriptor, eventfd_t count) {
  return mirelo::testing::posix::Raise(descriptor, count);
}
