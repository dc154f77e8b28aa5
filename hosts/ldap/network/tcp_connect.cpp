// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/tcp_connect.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/in_seconds.h"

namespace pelora::ldap {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// How long one that is to stop may go on waiting.
constexpr Milliseconds kSlice{50};

struct AddressesFree {
  void operator()(addrinfo* addresses) const { freeaddrinfo(addresses); }
};
using AddressesPtr = std::unique_ptr<addrinfo, AddressesFree>;

StoreStatus LookUp(const ServerName& server, AddressesPtr& addresses) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  wanted.ai_flags = AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const int code =
      getaddrinfo(server.BareHost().c_str(), std::to_string(server.port).c_str(), &wanted, &found);
  addresses.reset(found);
  if (code == 0) return {};
  return {kLdapServerDown,
          code == EAI_SYSTEM ? std::generic_category().message(errno) : gai_strerror(code)};
}

/// In place of the machine's error: the time is over. The machine gives up by itself, too, later.
constexpr int kNoneInTime = -1;

/// What became of a connection under way: 0, or the machine's error, or `kNoneInTime`.
int AwaitConnected(int socket, Milliseconds timeout, const std::stop_token& stop) {
  const Clock::time_point end = Clock::now() + timeout;
  while (!stop.stop_requested()) {
    const auto left =
        std::max(Milliseconds(0), std::chrono::ceil<Milliseconds>(end - Clock::now()));
    const Milliseconds slice = std::min(left, kSlice);
    pollfd watched{.fd = socket, .events = POLLOUT, .revents = 0};
    const int ready = poll(&watched, 1, static_cast<int>(slice.count()));
    if (ready < 0 && errno != EINTR) return errno;
    if (ready > 0) {
      int error = 0;
      socklen_t size = sizeof error;
      return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
    }
    if (slice == left) return kNoneInTime;
  }
  return ECANCELED;
}

std::string TextOf(int error, Milliseconds timeout) {
  if (error != kNoneInTime) return std::generic_category().message(error);
  return "it took no connection within " + InSeconds(timeout);
}

int Connect(const addrinfo& address, Milliseconds timeout, const std::stop_token& stop,
            FileDescriptor& socket) {
  constexpr int kOn = 1;
  FileDescriptor made(
      ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol));
  if (!made) return errno;
  // A request is one short message that is waited for.
  setsockopt(made.get(), IPPROTO_TCP, TCP_NODELAY, &kOn, sizeof kOn);
  setsockopt(made.get(), SOL_SOCKET, SO_KEEPALIVE, &kOn, sizeof kOn);
  if (connect(made.get(), address.ai_addr, address.ai_addrlen) != 0) {
    if (errno != EINPROGRESS) return errno;
    if (const int error = AwaitConnected(made.get(), timeout, stop); error != 0) return error;
  }
  socket = std::move(made);
  return 0;
}

}  // namespace

StoreStatus ConnectByTcp(const ServerName& server, Milliseconds timeout,
                         const std::stop_token& stop, FileDescriptor& socket) {
  socket = {};
  AddressesPtr addresses;
  if (StoreStatus status = LookUp(server, addresses); !status.Ok()) return status;
  int error = ECANCELED;
  for (const addrinfo* at = addresses.get(); at != nullptr && !stop.stop_requested();
       at = at->ai_next) {
    error = Connect(*at, timeout, stop, socket);
    if (error == 0) return {};
  }
  if (stop.stop_requested()) return {kLdapUserCancelled, "stopped"};
  return {kLdapServerDown, TextOf(error, timeout)};
}

}  // namespace pelora::ldap
