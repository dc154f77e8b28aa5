// SPDX-License-Identifier: Apache-2.0
// Opens a session on a server and says what came of it: for tests of what a process has to be
// started with.
//
//   open_session [SERVER]
#include <iostream>

#include "hosts/ldap/network/network_session.h"

int main(int argc, char** argv) {
  std::unique_ptr<pelora::ldap::NetworkSession> session;
  const pelora::ldap::StoreStatus status =
      pelora::ldap::NetworkSession::Open({.server = argc > 1 ? argv[1] : ""}, session);
  if (status.Ok()) {
    std::cout << "open on " << session->server() << std::endl;
  } else {
    std::cout << status.code << " " << status.text << std::endl;
  }
  return 0;
}
