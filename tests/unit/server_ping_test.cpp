// SPDX-License-Identifier: Apache-2.0
// Servers that are asked by datagrams, some of which get lost.
#include "hosts/ldap/network/server_ping.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <atomic>
#include <stdexcept>
#include <thread>

#include "hosts/ldap/file_descriptor.h"
#include "tests/support/netlogon_bytes.h"

namespace pelora::ldap {
namespace {

using std::chrono::milliseconds;
using test::NetlogonBytes;

/// Nobody waits for so long where an answer comes.
constexpr milliseconds kLong{300'000};

/// A server that answers what a test has it answer to each datagram.
class PingedServer {
 public:
  /// The answer to the datagram of a number, counted from 1, and to the request in it.
  using Script = std::function<std::string(int count, char id)>;

  explicit PingedServer(Script script) : script_(std::move(script)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(socket_.get(), reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::runtime_error("the server cannot listen");
    }
    name_ = {.host = "127.0.0.1", .port = ntohs(address.sin_port)};
    thread_ = std::jthread([this](const std::stop_token& stop) { Run(stop); });
  }

  [[nodiscard]] const ServerName& name() const { return name_; }
  [[nodiscard]] int count() const { return count_; }

 private:
  void Run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      pollfd watched{.fd = socket_.get(), .events = POLLIN, .revents = 0};
      if (poll(&watched, 1, 10) <= 0) continue;
      std::array<char, 1024> bytes{};
      sockaddr_in from{};
      socklen_t size = sizeof from;
      const ssize_t length = recvfrom(socket_.get(), bytes.data(), bytes.size(), 0,
                                      reinterpret_cast<sockaddr*>(&from), &size);
      // The number stands behind the message's length and its own.
      if (length < 5) continue;
      const std::string answer = script_(++count_, bytes[4]);
      if (answer.empty()) continue;
      sendto(socket_.get(), answer.data(), answer.size(), 0, reinterpret_cast<sockaddr*>(&from),
             size);
    }
  }

  Script script_;
  ServerName name_;
  FileDescriptor socket_{::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
  std::atomic<int> count_{0};
  std::jthread thread_;
};

PingedServer::Script Says(const NetlogonBytes& what) {
  return [what](int /*count*/, char id) { return what.Datagram(id); };
}
std::string Silent(int /*count*/, char /*id*/) { return {}; }

bool None(const NetlogonAnswer& /*answer*/) { return false; }
bool Any(const NetlogonAnswer& /*answer*/) { return true; }

/// The hosts that have answered, in the order of the servers.
std::string Ping(const std::vector<ServerName>& servers, milliseconds timeout,
                 const IsGoodAnswer& is_good = &None, const std::stop_token& stop = {}) {
  std::string hosts;
  for (const auto& answer : PingServers(servers, "x.test", timeout, stop, is_good)) {
    hosts += (answer ? answer->host : "-") + " ";
  }
  return hosts;
}

TEST(ServerPing, WaitsUntilAllHaveAnswered) {
  const PingedServer first(Says({.host = "dc1.x.test"}));
  const PingedServer second(Says({.host = "dc2.x.test"}));
  EXPECT_EQ(Ping({first.name(), second.name()}, kLong), "dc1.x.test dc2.x.test ");
}

TEST(ServerPing, AGoodAnswerIsEnough) {
  const PingedServer silent(&Silent);
  const PingedServer server(Says({.host = "dc2.x.test"}));
  EXPECT_EQ(Ping({silent.name(), server.name()}, kLong, &Any), "- dc2.x.test ");
}

TEST(ServerPing, SilentOnesAreWaitedForSoLong) {
  const PingedServer silent(&Silent);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(Ping({silent.name()}, milliseconds(100)), "- ");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(100));
}

TEST(ServerPing, WhatIsLostIsAskedAgain) {
  const PingedServer server(
      [](int count, char id) { return count < 3 ? std::string() : NetlogonBytes().Datagram(id); });
  EXPECT_EQ(Ping({server.name()}, kLong), "dc1.x.test ");
  EXPECT_GE(server.count(), 3);
}

TEST(ServerPing, WhatIsNoAnswerIsPassedOver) {
  const PingedServer server([](int count, char id) {
    if (count == 1) return std::string("nonsense");
    if (count == 2) return NetlogonBytes{.domain = "other.test"}.Datagram(id);
    if (count == 3) return NetlogonBytes().Datagram(static_cast<char>(id + 1));
    return NetlogonBytes{.host = "dc4.x.test"}.Datagram(id);
  });
  EXPECT_EQ(Ping({server.name()}, kLong), "dc4.x.test ");
}

TEST(ServerPing, OneThatCannotBeAskedHoldsUpNobody) {
  const PingedServer server(Says({}));
  EXPECT_EQ(Ping({{.host = "255.255.255.255"}, server.name()}, kLong), "- dc1.x.test ");
  EXPECT_EQ(Ping({}, kLong), "");
}

TEST(ServerPing, ItEndsWhenItIsStopped) {
  const PingedServer silent(&Silent);
  std::stop_source stop;
  std::jthread stopper([&] {
    while (silent.count() == 0) std::this_thread::yield();
    stop.request_stop();
  });
  EXPECT_EQ(Ping({silent.name()}, kLong, &None, stop.get_token()), "- ");
}

}  // namespace
}  // namespace pelora::ldap
