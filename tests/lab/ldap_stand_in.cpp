// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/ldap_stand_in.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "hosts/ldap/file_descriptor.h"
#include "tests/lab/lab.h"
#include "tests/lab/sasl_layer.h"

namespace pelora::lab {
namespace {

using Kind = StandInRequest::Kind;
using ldap::FileDescriptor;

/// A program that sends nothing for so long is waiting.
constexpr int kStillMilliseconds = 30;

std::string Describe(const char* name, const char* syntax) {
  return std::string("( 1.1 NAME '") + name + "' SYNTAX '1.3.6.1.4.1.1466.115.121.1." + syntax +
         "' )";
}

/// What a store asks of a server when it opens.
bool AnswerOpening(const StandInRequest& request, const std::string& realm, StandInAnswer& answer) {
  if (request.kind != Kind::kSearch) return false;
  if (request.dn.empty()) {
    answer.entries = {{"",
                       {{"namingContexts", {"DC=x"}},
                        {"defaultNamingContext", {"DC=x"}},
                        {"configurationNamingContext", {"CN=Configuration,DC=x"}},
                        {"rootDomainNamingContext", {"DC=x"}},
                        {"ldapServiceName", {"x:home$@" + realm}},
                        {"schemaNamingContext", {"CN=Schema,DC=x"}},
                        {"subschemaSubentry", {"CN=Aggregate,DC=x"}}}}};
    return true;
  }
  if (request.dn == "CN=Schema,DC=x") {
    answer.entries = {{request.dn, {{"schemaInfo", {"state 1"}}}}};
    return true;
  }
  if (request.dn != "CN=Aggregate,DC=x") return false;
  answer.entries = {{request.dn,
                     {{"attributeTypes",
                       {Describe("objectClass", "38"), Describe("mail", "15"),
                        Describe("member", "12"), Describe("peloraAccount", "27")}}}}};
  return true;
}

}  // namespace

class LdapStandIn::Worker {
 public:
  Worker(Options options, StandInScript script)
      : options_(std::move(options)), script_(std::move(script)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener_.get(), reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        listen(listener_.get(), 16) != 0 ||
        getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::runtime_error("the stand-in cannot listen");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Run(); });
  }
  ~Worker() {
    is_over_ = true;
    thread_.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  [[nodiscard]] std::uint16_t port() const { return port_; }

  std::atomic<int> requests{0};
  std::atomic<int> turns{0};
  std::atomic<int> connections{0};

 private:
  /// Whether something is there to be read before `milliseconds` are over.
  [[nodiscard]] bool IsReadable(const FileDescriptor& socket, int milliseconds) const {
    constexpr int kStep = 10;
    for (int waited = 0; !is_over_; waited += kStep) {
      pollfd watched{.fd = socket.get(), .events = POLLIN, .revents = 0};
      if (poll(&watched, 1, kStep) > 0) return true;
      if (waited + kStep >= milliseconds) return false;
    }
    return false;
  }

  void Run() {
    while (!is_over_) {
      if (!IsReadable(listener_, 100)) continue;
      const FileDescriptor connection(accept(listener_.get(), nullptr, nullptr));
      ++connections;
      try {
        Serve(connection);
      } catch (const std::exception& error) {
        std::cerr << "stand-in: " << error.what() << std::endl;
      }
    }
  }

  void Serve(const FileDescriptor& connection) {
    SaslLayer layer(options_.most_strength, options_.name.empty() ? lab::Server() : options_.name);
    std::string received;
    std::vector<StandInRequest> gathered;
    while (!is_over_) {
      if (!IsReadable(connection, gathered.empty() ? 1000 : kStillMilliseconds)) {
        if (gathered.empty()) continue;
        ++turns;
        if (!AnswerAll(connection, layer, gathered)) return;
        gathered.clear();
        continue;
      }
      std::array<char, 65'536> bytes{};
      const ssize_t size = recv(connection.get(), bytes.data(), bytes.size(), 0);
      if (size <= 0) return;
      received += layer.Decode({bytes.data(), static_cast<std::size_t>(size)});
      while (const std::optional<StandInRequest> request = TakeRequest(received)) {
        if (request->kind == Kind::kUnbind) return;
        gathered.push_back(*request);
      }
      if (options_.gathers) continue;
      if (!AnswerAll(connection, layer, gathered)) return;
      gathered.clear();
    }
  }

  /// False when the connection is to be closed.
  bool AnswerAll(const FileDescriptor& connection, SaslLayer& layer,
                 const std::vector<StandInRequest>& gathered) {
    for (const StandInRequest& request : gathered) {
      if (request.kind == Kind::kOther) continue;
      if (answers_++ >= options_.most_answers) return false;
      const bool goes_on = request.kind == Kind::kBind ? AnswerBind(connection, layer, request)
                                                       : Answer(connection, layer, request);
      if (!goes_on) return false;
    }
    return true;
  }

  bool AnswerBind(const FileDescriptor& connection, SaslLayer& layer,
                  const StandInRequest& request) {
    constexpr int kInProgress = 14;
    constexpr int kInvalidCredentials = 49;
    if (options_.bind_code != 0) {
      Send(connection, ResultMessage(request, options_.bind_code, "not like this"));
      return true;
    }
    std::string token;
    const SaslLayer::Step step = layer.Take(request.token, token);
    const int code = step == SaslLayer::Step::kGoesOn ? kInProgress
                     : step == SaslLayer::Step::kDone ? 0
                                                      : kInvalidCredentials;
    Send(connection, BindMessage(request.id, code, token));
    if (step == SaslLayer::Step::kDone) layer.Begin();
    return true;
  }

  bool Answer(const FileDescriptor& connection, SaslLayer& layer, const StandInRequest& request) {
    ++requests;
    StandInAnswer answer;
    if (!AnswerOpening(request, options_.realm, answer)) answer = script_(request);
    if (answer.hangs_up) return false;
    if (answer.is_silent) return true;
    std::string bytes;
    if (answer.sends_nonsense)
      bytes =
          "\x30\x05"
          "other";
    for (const StandInEntry& entry : answer.entries) bytes += EntryMessage(request.id, entry);
    for (const std::string& uri : answer.references) bytes += ReferenceMessage(request.id, uri);
    while (answer.is_endless && !is_over_) Send(connection, layer.Encode(bytes));
    bytes += answer.raw;
    if (!answer.sends_nonsense && answer.raw.empty()) {
      bytes += ResultMessage(request, answer.code, answer.text, answer.page, answer.referral);
    }
    Send(connection, layer.Encode(bytes));
    return !answer.ends_with_it;
  }

  static void Send(const FileDescriptor& connection, const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
      const ssize_t size =
          send(connection.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
      if (size <= 0) throw std::runtime_error("the program has hung up");
      sent += static_cast<std::size_t>(size);
    }
  }

  const Options options_;
  const StandInScript script_;
  FileDescriptor listener_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  std::uint16_t port_ = 0;
  int answers_ = 0;
  std::atomic<bool> is_over_{false};
  std::thread thread_;
};

LdapStandIn::LdapStandIn(Options options, StandInScript script)
    : worker_(std::make_unique<Worker>(std::move(options), std::move(script))) {}

LdapStandIn::~LdapStandIn() = default;

std::string LdapStandIn::Address() const {
  return Server() + ":" + std::to_string(worker_->port());
}

int LdapStandIn::requests() const { return worker_->requests; }

int LdapStandIn::turns() const { return worker_->turns; }

int LdapStandIn::connections() const { return worker_->connections; }

void LdapStandIn::Forget() {
  worker_->requests = 0;
  worker_->turns = 0;
}

}  // namespace pelora::lab
