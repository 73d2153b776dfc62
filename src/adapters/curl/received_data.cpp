#include "adapters/curl/received_data.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace mirelo::curl {

bool HasReceivedData(int socket) {
  // An older kernel fills in less of the record, and the rest stays 0.
  tcp_info info = {};
  socklen_t size = sizeof info;
  return getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0 && info.tcpi_data_segs_in > 0;
}

}  // namespace mirelo::curl
