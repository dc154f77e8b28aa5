// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/server_ping.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/network/netlogon_message.h"

namespace pelora::ldap {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// How long one that is to stop may go on waiting.
constexpr Milliseconds kSlice{50};
/// After so long a datagram is taken for lost.
constexpr Milliseconds kUntilRepeated{200};
/// A server's answer has no room for more.
constexpr std::size_t kLongestDatagram = 4096;

struct AddressesFree {
  void operator()(addrinfo* addresses) const { freeaddrinfo(addresses); }
};

/// A socket for datagrams to and from one server alone; none when there is no way to it.
FileDescriptor SocketTo(const ServerName& server) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_DGRAM;
  wanted.ai_flags = AI_NUMERICSERV;
  addrinfo* found = nullptr;
  if (getaddrinfo(server.BareHost().c_str(), std::to_string(server.port).c_str(), &wanted,
                  &found) != 0) {
    return {};
  }
  const std::unique_ptr<addrinfo, AddressesFree> addresses(found);
  for (const addrinfo* at = found; at != nullptr; at = at->ai_next) {
    FileDescriptor made(
        ::socket(at->ai_family, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, at->ai_protocol));
    if (made && connect(made.get(), at->ai_addr, at->ai_addrlen) == 0) return made;
  }
  return {};
}

class Ping {
 public:
  Ping(std::span<const ServerName> servers, std::string domain, const IsGoodAnswer& is_good)
      : domain_(std::move(domain)), is_good_(is_good), answers_(servers.size()) {
    for (const ServerName& server : servers) sockets_.push_back(SocketTo(server));
  }

  /// Asks those that have not answered.
  void Send() {
    for (std::size_t at = 0; at < sockets_.size(); ++at) {
      if (!IsAwaited(at)) continue;
      const std::string request = NetlogonRequest(NumberOf(at), domain_);
      // One that cannot be sent is as good as lost.
      static_cast<void>(send(sockets_[at].get(), request.data(), request.size(), MSG_NOSIGNAL));
    }
  }

  /// Takes what comes within the time; true when no more is to be waited for.
  bool Receive(Milliseconds timeout) {
    std::vector<pollfd> watched;
    std::vector<std::size_t> places;
    for (std::size_t at = 0; at < sockets_.size(); ++at) {
      if (!IsAwaited(at)) continue;
      watched.push_back({.fd = sockets_[at].get(), .events = POLLIN, .revents = 0});
      places.push_back(at);
    }
    if (watched.empty()) return true;
    if (poll(watched.data(), watched.size(), static_cast<int>(timeout.count())) <= 0) return false;
    for (std::size_t at = 0; at < watched.size(); ++at) {
      if (watched[at].revents != 0 && Take(places[at])) return true;
    }
    return std::ranges::none_of(places, [this](std::size_t at) { return IsAwaited(at); });
  }

  [[nodiscard]] ServerAnswers TakeAnswers() { return std::move(answers_); }

 private:
  static int NumberOf(std::size_t at) { return static_cast<int>(at) + 1; }

  [[nodiscard]] bool IsAwaited(std::size_t at) const { return sockets_[at] && !answers_[at]; }

  /// Takes one datagram of a server's; true when it is a good answer.
  bool Take(std::size_t at) {
    std::array<char, kLongestDatagram> bytes{};
    const ssize_t size = recv(sockets_[at].get(), bytes.data(), bytes.size(), 0);
    if (size < 0) {
      // Nobody listens there.
      if (errno != EAGAIN && errno != EINTR) sockets_[at] = {};
      return false;
    }
    std::optional<NetlogonAnswer> answer =
        ReadNetlogonMessage(NumberOf(at), {bytes.data(), static_cast<std::size_t>(size)});
    if (!answer || !EqualsWithoutCase(answer->domain, domain_)) return false;
    answers_[at] = std::move(answer);
    return is_good_(*answers_[at]);
  }

  std::string domain_;
  const IsGoodAnswer& is_good_;
  std::vector<FileDescriptor> sockets_;
  ServerAnswers answers_;
};

}  // namespace

ServerAnswers PingServers(std::span<const ServerName> servers, const std::string& domain,
                          Milliseconds timeout, const std::stop_token& stop,
                          const IsGoodAnswer& is_good) {
  Ping ping(servers, domain, is_good);
  const Clock::time_point begin = Clock::now();
  Clock::time_point next_sending = begin;
  while (!stop.stop_requested()) {
    const Clock::time_point now = Clock::now();
    if (now >= next_sending) {
      ping.Send();
      next_sending = now + kUntilRepeated;
    }
    const auto left = std::chrono::ceil<Milliseconds>(begin + timeout - now);
    if (ping.Receive(std::clamp(left, Milliseconds(0), kSlice)) || left <= Milliseconds(0)) break;
  }
  return ping.TakeAnswers();
}

}  // namespace pelora::ldap
