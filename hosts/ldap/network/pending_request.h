// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "hosts/ldap/network/ldap_connection.h"

namespace pelora::ldap {

/// A request that was sent and whose answer is still to come: unless it is awaited to its end it is
/// let go of. `connection` outlives it.
class PendingRequest {
 public:
  PendingRequest() = default;
  PendingRequest(LdapConnection& connection, LdapConnection::RequestId id)
      : connection_(&connection), id_(id) {}
  PendingRequest(PendingRequest&& other) noexcept
      : connection_(std::exchange(other.connection_, nullptr)), id_(other.id_) {}
  PendingRequest& operator=(PendingRequest&& other) noexcept {
    std::swap(connection_, other.connection_);
    std::swap(id_, other.id_);
    return *this;
  }
  ~PendingRequest() {
    if (connection_ != nullptr) connection_->Abandon(id_);
  }

  /// Takes the next message; the caller says when it was the last (`Finish`).
  StoreStatus AwaitNext(LdapMessagePtr& message) {
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): who awaits has sent
    return connection_->Await(id_, LdapConnection::Amount::kNext, message);
  }
  void Finish() { connection_ = nullptr; }

 private:
  LdapConnection* connection_ = nullptr;
  LdapConnection::RequestId id_ = 0;
};

}  // namespace pelora::ldap
