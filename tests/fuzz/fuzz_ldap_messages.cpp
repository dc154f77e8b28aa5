// SPDX-License-Identifier: Apache-2.0
// Feeds the LDAP library, over a real connection, with what a server might send, and our readers
// with what it makes of that. The first byte says which request is awaited.
#include <lber.h>
#include <openldap.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/network/broken_pipe_guard.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/message_wait.h"
#include "hosts/ldap/network/value_ranges.h"

namespace {

using namespace pelora::ldap;

constexpr ber_len_t kMostBytes = 1 << 20;

void Require(bool holds) {
  if (!holds) std::abort();
}

/// The library's end of a connection whose other end is ours.
class Connection {
 public:
  Connection() {
    Require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends_) == 0);
    Require(ldap_init_fd(ends_[0], LDAP_PROTO_TCP, "ldap://fuzz", &handle_) == LDAP_SUCCESS);
    const int version = LDAP_VERSION3;
    ldap_set_option(handle_, LDAP_OPT_PROTOCOL_VERSION, &version);
    ldap_set_option(handle_, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    Sockbuf* wire = nullptr;
    ber_len_t most = kMostBytes;
    ldap_get_option(handle_, LDAP_OPT_SOCKBUF, &wire);
    ber_sockbuf_ctrl(wire, LBER_SB_OPT_SET_MAX_INCOMING, &most);
  }
  ~Connection() {
    ldap_unbind_ext(handle_, nullptr, nullptr);
    if (ends_[1] >= 0) close(ends_[1]);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] LDAP* handle() const { return handle_; }
  void Say(const std::uint8_t* bytes, std::size_t size) {
    // What finds no room is not said.
    static_cast<void>(!write(ends_[1], bytes, size));
    close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  int ends_[2] = {-1, -1};
  LDAP* handle_ = nullptr;
};

int SendRequest(LDAP* handle, bool is_search) {
  int id = 0;
  if (is_search) {
    Require(ldap_search_ext(handle, "DC=x", LDAP_SCOPE_BASE, "(objectClass=*)", nullptr, 0, nullptr,
                            nullptr, nullptr, 0, &id) == LDAP_SUCCESS);
  } else {
    Require(ldap_delete_ext(handle, "CN=a,DC=x", nullptr, nullptr, &id) == LDAP_SUCCESS);
  }
  return id;
}

/// Names never hold a zero, and what is put together has no mark of a part left.
void ReadEntry(LDAP* handle, LDAPMessage* message) {
  Entry entry;
  if (!EntryOf(handle, message, entry).Ok()) return;
  Require(entry.dn.find('\0') == std::string::npos);
  for (const auto& [name, values] : entry.attributes) {
    Require(name.find('\0') == std::string::npos && !values.empty());
  }
  std::vector<UnfinishedAttribute> unfinished;
  static_cast<void>(SizeOf(entry));
  static_cast<void>(FileRanges(entry.attributes, 0, unfinished));
}

/// Whether there may be a notice among the messages that names itself with no letter at all: the
/// library ends the program for it (an assertion of its own, as of 2.5), before we are asked.
bool MayEndTheLibrary(std::basic_string_view<std::uint8_t> bytes) {
  constexpr std::uint8_t kName = 0x8a;
  constexpr std::uint8_t kLongLength = 0x80;
  for (auto at = bytes.find(kName); at != bytes.npos; at = bytes.find(kName, at + 1)) {
    std::basic_string_view<std::uint8_t> length = bytes.substr(at + 1);
    if (length.empty()) return false;
    if (length.front() < kLongLength) {
      length = length.substr(0, 1);
    } else {
      length = length.substr(1, length.front() - kLongLength);
    }
    if (length.find_first_not_of(std::uint8_t{0}) == length.npos) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > kMostBytes || MayEndTheLibrary({data, size})) return 0;
  const bool is_search = data[0] % 2 == 0;
  // The library says goodbye to an end that is closed.
  const BrokenPipeGuard guard;
  Connection connection;
  const int id = SendRequest(connection.handle(), is_search);
  connection.Say(data + 1, size - 1);
  while (true) {
    LdapMessagePtr message;
    const int code = AwaitMessage(connection.handle(), id, LDAP_MSG_ONE,
                                  std::chrono::milliseconds(1000), {}, message);
    Require(code != LDAP_TIMEOUT);
    if (code != LDAP_SUCCESS) return 0;
    if (ldap_msgtype(message.get()) == LDAP_RES_SEARCH_ENTRY) {
      ReadEntry(connection.handle(), message.get());
      continue;
    }
    if (ldap_msgtype(message.get()) == LDAP_RES_SEARCH_REFERENCE) continue;
    std::string page;
    const StoreStatus status =
        OutcomeOf(connection.handle(), message.get(),
                  is_search ? LDAP_RES_SEARCH_RESULT : LDAP_RES_DELETE, &page);
    Require(status.code >= 0 || status.code == -4);
    Require(status.Ok() || !status.text.empty());
    return 0;
  }
}
