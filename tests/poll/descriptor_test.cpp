// The descriptors of connections, as the system counts and keeps them.

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

using DescriptorOfAConnection = Connections;

TEST_F(DescriptorOfAConnection, IsError67WhenNoneIsLeft) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  Client client(library_);
  rlimit former = {};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
  const int lowest_free = ::dup(0);
  ::close(lowest_free);
  const rlimit none = {static_cast<rlim_t>(lowest_free), former.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const int dotted = NumberOf([&] { client.Connect(server.Address()); });
  const int named = NumberOf([&] { client.Connect("localhost:80"); });
  ::setrlimit(RLIMIT_NOFILE, &former);
  EXPECT_EQ(dotted, 67);
  EXPECT_EQ(named, 67);
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed);
  Connect(client, server.Address());
  EXPECT_TRUE(client.IsConnected()) << "nothing is in the way afterwards";
}

TEST_F(DescriptorOfAConnection, IsNotInheritedByProgramsThatAreStarted) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  Client client(library_);
  const int socket = ::dup(0);  // the number that the connection's descriptor will have
  ::close(socket);
  client.Connect(server.Address());
  EXPECT_EQ(::fcntl(socket, F_GETFD), FD_CLOEXEC);
  EXPECT_NE(::fcntl(socket, F_GETFL) & O_NONBLOCK, 0);
  int no_delay = 0;
  socklen_t size = sizeof no_delay;
  ::getsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &no_delay, &size);
  EXPECT_NE(no_delay, 0);
}

}  // namespace
}  // namespace mirelo::poll
