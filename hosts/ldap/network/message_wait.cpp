// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/message_wait.h"

#include <algorithm>

namespace pelora::ldap {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// How long one that is to stop may go on waiting. The library waits by itself, and cannot be
/// called out of it.
constexpr Milliseconds kSlice{50};

timeval ToTimeval(Milliseconds duration) {
  return {.tv_sec = duration.count() / 1000, .tv_usec = duration.count() % 1000 * 1000};
}

int FailureOf(LDAP* handle) {
  int code = LDAP_SERVER_DOWN;
  ldap_get_option(handle, LDAP_OPT_RESULT_CODE, &code);
  // A server's own code is no answer to what was asked: it has said by itself why it ends the
  // connection, as when the ticket has ended.
  return code >= LDAP_SUCCESS ? LDAP_SERVER_DOWN : code;
}

}  // namespace

int AwaitMessage(LDAP* handle, int id, int amount, Milliseconds timeout,
                 const std::stop_token& stop, LdapMessagePtr& message) {
  message.reset();
  const Clock::time_point end = Clock::now() + timeout;
  while (!stop.stop_requested()) {
    const auto left =
        std::max(Milliseconds(0), std::chrono::ceil<Milliseconds>(end - Clock::now()));
    const Milliseconds slice = stop.stop_possible() ? std::min(left, kSlice) : left;
    timeval wait = ToTimeval(slice);
    LDAPMessage* received = nullptr;
    const int type = ldap_result(handle, id, amount, &wait, &received);
    message.reset(received);
    if (type > 0) return LDAP_SUCCESS;
    if (type < 0) return FailureOf(handle);
    // One whose type reads like "nothing came".
    if (received != nullptr) {
      message.reset();
      return LDAP_DECODING_ERROR;
    }
    if (slice == left) return LDAP_TIMEOUT;
  }
  return LDAP_USER_CANCELLED;
}

}  // namespace pelora::ldap
