// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/tcp_relay.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "hosts/ldap/file_descriptor.h"
#include "tests/lab/message_count.h"

namespace pelora::lab {
namespace {

using Clock = std::chrono::steady_clock;
using ldap::FileDescriptor;

sockaddr_in AddressOf(const std::string& host, std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  if (inet_pton(AF_INET, host.c_str(), &address.sin_addr) != 1) {
    throw std::runtime_error("no address: " + host);
  }
  address.sin_port = htons(port);
  return address;
}

FileDescriptor MakeSocket() {
  FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!socket) throw std::runtime_error("no socket");
  return socket;
}

void SendAtOnce(const FileDescriptor& socket) {
  const int yes = 1;
  setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

/// Bytes on their way, and when they arrive.
struct Parcel {
  Clock::time_point due;
  std::string bytes;
};

struct Connection {
  FileDescriptor program;
  FileDescriptor server;
  std::deque<Parcel> to_server;
  std::deque<Parcel> to_program;
  MessageCount requests;
  bool has_asked = false;
  bool is_over = false;
};

/// What the test wants; every change is seen at the next step.
struct Orders {
  std::chrono::microseconds delay{0};
  bool cut = false;
  bool cut_at_request = false;
  bool cut_at_answer = false;
  bool go_at_answer = false;
  bool hold_requests = false;
  std::optional<std::size_t> bytes_left;
};

}  // namespace

class TcpRelay::Worker {
 public:
  Worker(const std::string& host, std::uint16_t port) : target_(AddressOf(host, port)) {
    const sockaddr_in address = AddressOf(host, 0);
    sockaddr_in bound{};
    socklen_t size = sizeof bound;
    std::array<int, 2> wake{};
    if (bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_.get(), 16) != 0 ||
        getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&bound), &size) != 0 ||
        pipe(wake.data()) != 0) {
      throw std::runtime_error("the relay cannot listen");
    }
    port_ = ntohs(bound.sin_port);
    wake_out_ = FileDescriptor(wake[0]);
    wake_in_ = FileDescriptor(wake[1]);
    thread_ = std::thread([this] { Run(); });
  }
  ~Worker() {
    {
      const std::lock_guard lock(mutex_);
      is_over_ = true;
    }
    Wake();
    thread_.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  [[nodiscard]] std::uint16_t port() const { return port_; }
  [[nodiscard]] int connections() const {
    const std::lock_guard lock(mutex_);
    return accepted_;
  }
  [[nodiscard]] bool has_held() const {
    const std::lock_guard lock(mutex_);
    return has_held_;
  }
  [[nodiscard]] Traffic traffic() const {
    const std::lock_guard lock(mutex_);
    return traffic_;
  }
  template <class Change>
  void Order(Change change) {
    {
      const std::lock_guard lock(mutex_);
      change(orders_);
    }
    Wake();
  }
  /// Returns when what was ordered before has been done.
  void Settle() {
    for (bool is_done = false; !is_done; std::this_thread::yield()) {
      const std::lock_guard lock(mutex_);
      is_done = !orders_.cut;
    }
  }

 private:
  void Wake() const { static_cast<void>(!write(wake_in_.get(), "w", 1)); }

  void Run() {
    while (true) {
      std::vector<pollfd> watched = Watched();
      const auto wait = static_cast<timespec>(NextWait());
      ppoll(watched.data(), watched.size(), &wait, nullptr);
      const std::lock_guard lock(mutex_);
      if (is_over_) return;
      if (watched[0].revents != 0) DrainWakes();
      if (watched[1].revents != 0) Accept();
      Step(watched);
      if (orders_.cut) connections_.clear();
      orders_.cut = false;
      connections_.remove_if([](const Connection& connection) { return connection.is_over; });
    }
  }

  [[nodiscard]] std::vector<pollfd> Watched() const {
    const std::lock_guard lock(mutex_);
    std::vector<pollfd> watched = {{.fd = wake_out_.get(), .events = POLLIN, .revents = 0},
                                   {.fd = listener_.get(), .events = POLLIN, .revents = 0}};
    for (const Connection& connection : connections_) {
      const short requests = orders_.hold_requests ? 0 : POLLIN;
      watched.push_back({.fd = connection.program.get(), .events = requests, .revents = 0});
      watched.push_back({.fd = connection.server.get(), .events = POLLIN, .revents = 0});
    }
    return watched;
  }

  [[nodiscard]] timespec NextWait() const {
    const std::lock_guard lock(mutex_);
    auto wait = std::chrono::nanoseconds(std::chrono::seconds(1));
    for (const Connection& connection : connections_) {
      for (const auto* const way : {&connection.to_server, &connection.to_program}) {
        if (way->empty()) continue;
        wait = std::min<std::chrono::nanoseconds>(wait, way->front().due - Clock::now());
      }
    }
    wait = std::max(wait, std::chrono::nanoseconds(0));
    return {.tv_sec = wait.count() / 1'000'000'000, .tv_nsec = wait.count() % 1'000'000'000};
  }

  void DrainWakes() const {
    std::array<char, 64> bytes{};
    static_cast<void>(!read(wake_out_.get(), bytes.data(), bytes.size()));
  }

  void Accept() {
    Connection connection;
    connection.program = FileDescriptor(accept(listener_.get(), nullptr, nullptr));
    connection.server = MakeSocket();
    ++accepted_;
    if (connect(connection.server.get(), reinterpret_cast<const sockaddr*>(&target_),
                sizeof target_) != 0) {
      return;
    }
    SendAtOnce(connection.program);
    SendAtOnce(connection.server);
    connections_.push_back(std::move(connection));
  }

  void Step(const std::vector<pollfd>& watched) {
    for (Connection& connection : connections_) {
      for (const pollfd& ready : watched) {
        if (ready.revents == 0) continue;
        if (ready.fd == connection.program.get()) TakeRequest(connection);
        if (ready.fd == connection.server.get()) TakeAnswer(connection);
      }
      PassOn(connection.to_server, connection.server, connection);
      PassOn(connection.to_program, connection.program, connection);
    }
  }

  static std::string Receive(const FileDescriptor& socket, bool& is_over) {
    std::string bytes(65'536, '\0');
    const ssize_t size = recv(socket.get(), bytes.data(), bytes.size(), 0);
    is_over = is_over || size <= 0;
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
  }

  void TakeRequest(Connection& connection) {
    std::string bytes = Receive(connection.program, connection.is_over);
    connection.has_asked = true;
    const std::size_t before = connection.requests.messages();
    connection.requests.Take(bytes);
    traffic_.requests += connection.requests.messages() - before;
    traffic_.bytes_to_server += bytes.size();
    if (std::exchange(orders_.cut_at_request, false)) connection.is_over = true;
    connection.to_server.push_back({Clock::now() + orders_.delay / 2, std::move(bytes)});
  }

  void TakeAnswer(Connection& connection) {
    std::string bytes = Receive(connection.server, connection.is_over);
    if (connection.has_asked && std::exchange(orders_.cut_at_answer, false)) {
      connection.is_over = true;
      if (std::exchange(orders_.go_at_answer, false)) listener_ = FileDescriptor();
      return;
    }
    if (orders_.bytes_left) {
      has_held_ = has_held_ || bytes.size() > *orders_.bytes_left;
      bytes.resize(std::min(bytes.size(), *orders_.bytes_left));
      *orders_.bytes_left -= bytes.size();
    }
    traffic_.bytes_to_program += bytes.size();
    connection.to_program.push_back({Clock::now() + orders_.delay / 2, std::move(bytes)});
  }

  static void PassOn(std::deque<Parcel>& parcels, const FileDescriptor& socket,
                     Connection& connection) {
    while (!connection.is_over && !parcels.empty() && parcels.front().due <= Clock::now()) {
      const std::string& bytes = parcels.front().bytes;
      for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t size =
            send(socket.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (size <= 0) {
          connection.is_over = true;
          return;
        }
        sent += static_cast<std::size_t>(size);
      }
      parcels.pop_front();
    }
  }

  const sockaddr_in target_;
  FileDescriptor listener_ = MakeSocket();
  std::uint16_t port_ = 0;
  FileDescriptor wake_out_;
  FileDescriptor wake_in_;
  mutable std::mutex mutex_;
  Orders orders_;
  int accepted_ = 0;
  bool has_held_ = false;
  Traffic traffic_;
  bool is_over_ = false;
  std::list<Connection> connections_;
  std::thread thread_;
};

TcpRelay::TcpRelay(std::uint16_t port, const std::string& address)
    : worker_(std::make_unique<Worker>(address, port)) {}

TcpRelay::~TcpRelay() = default;

std::uint16_t TcpRelay::port() const { return worker_->port(); }

TcpRelay::Traffic TcpRelay::traffic() const { return worker_->traffic(); }

int TcpRelay::connections() const { return worker_->connections(); }

void TcpRelay::SetDelay(std::chrono::microseconds delay) {
  worker_->Order([&](Orders& orders) { orders.delay = delay; });
}

void TcpRelay::Cut() {
  worker_->Order([](Orders& orders) { orders.cut = true; });
  worker_->Settle();
}

void TcpRelay::CutAtNextRequest() {
  worker_->Order([](Orders& orders) { orders.cut_at_request = true; });
}

void TcpRelay::CutAtNextAnswer() {
  worker_->Order([](Orders& orders) { orders.cut_at_answer = true; });
}

void TcpRelay::GoAtNextAnswer() {
  worker_->Order([](Orders& orders) { orders.cut_at_answer = orders.go_at_answer = true; });
}

void TcpRelay::HoldAnswersAfter(std::size_t bytes) {
  worker_->Order([&](Orders& orders) { orders.bytes_left = bytes; });
}

bool TcpRelay::HasHeld() const { return worker_->has_held(); }

void TcpRelay::HoldRequests() {
  worker_->Order([](Orders& orders) { orders.hold_requests = true; });
}

}  // namespace pelora::lab
