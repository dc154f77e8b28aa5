// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/ldap/file_descriptor.h"
#include "tests/lab/lab.h"

namespace pelora::lab {

/// A port on which nobody takes a connection and whose queue is full: whoever connects waits, as
/// for a machine that is switched off.
class FullListener {
 public:
  FullListener() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const target = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_.get(), target, size) != 0 || listen(listener_.get(), 0) != 0 ||
        getsockname(listener_.get(), target, &size) != 0) {
      throw std::runtime_error("no port to listen on");
    }
    port_ = ntohs(address.sin_port);
    for (int number = 0; number < 4; ++number) {
      waiting_.emplace_back(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
      static_cast<void>(connect(waiting_.back().get(), target, size));
    }
  }

  [[nodiscard]] std::string Address() const { return Server() + ":" + std::to_string(port_); }

 private:
  ldap::FileDescriptor listener_{::socket(AF_INET, SOCK_STREAM, 0)};
  std::vector<ldap::FileDescriptor> waiting_;
  int port_ = 0;
};

}  // namespace pelora::lab
