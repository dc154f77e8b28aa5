// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/ldap_connection.h"

#include <lber.h>
#include <openldap.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/broken_pipe_guard.h"
#include "hosts/ldap/network/in_seconds.h"
#include "hosts/ldap/network/message_wait.h"
#include "hosts/ldap/network/modify_request.h"
#include "hosts/ldap/network/request_name.h"
#include "hosts/ldap/network/tcp_connect.h"

namespace pelora::ldap {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// Values that are there are not added again, and those that are not are deleted without complaint.
constexpr const char* kPermissiveModify = "1.2.840.113556.1.4.1413";

/// A server that was silent for so long when it was told to stop is not trusted again.
constexpr Milliseconds kLongSilence{1000};

int ScopeOf(SearchScope scope) {
  switch (scope) {
    case SearchScope::kBase:
      return LDAP_SCOPE_BASE;
    case SearchScope::kOneLevel:
      return LDAP_SCOPE_ONELEVEL;
    case SearchScope::kSubtree:
      return LDAP_SCOPE_SUBTREE;
  }
  return LDAP_SCOPE_BASE;
}

/// Ports of servers of the same host that would not do.
struct UnfitPort {
  std::uint16_t port;
  const char* reason;
  bool is_catalogs = false;
};
constexpr auto kUnfitPorts = std::to_array<UnfitPort>({
    // What is missing there would look unset, and be written so.
    {kCatalogPort, "the global catalog holds a part of each object only", true},
    {3269, "the global catalog holds a part of each object only"},
    {636, "what is sealed by Kerberos goes to port 389, without TLS"},
});

StoreStatus CheckPort(const ServerName& server, bool is_catalog) {
  for (const UnfitPort& unfit : kUnfitPorts) {
    if (server.port != unfit.port || (unfit.is_catalogs && is_catalog)) continue;
    return {kLdapUnwillingToPerform,
            "the server '" + server.Text() + "' is of no use: " + unfit.reason};
  }
  return {};
}

bool NeedsPermission(std::span<const Modification> modifications) {
  return std::ranges::any_of(modifications, [](const Modification& change) {
    return change.operation != Modification::Operation::kReplace;
  });
}

}  // namespace

void LdapConnection::Unbind::operator()(LDAP* handle) const {
  const BrokenPipeGuard guard;
  ldap_unbind_ext(handle, nullptr, nullptr);
}

LdapConnection::LdapConnection(ServerName server, const NetworkOptions& options,
                               std::stop_token stop)
    : server_(std::move(server)), options_(options), stop_(std::move(stop)) {}

LdapConnection::~LdapConnection() = default;

StoreStatus LdapConnection::Open(const ServerName& server, const NetworkOptions& options,
                                 const std::stop_token& stop,
                                 std::shared_ptr<LdapConnection>& connection) {
  connection.reset();
  const std::shared_ptr<LdapConnection> opened(new LdapConnection(server, options, stop));
  StoreStatus status = CheckPort(server, options.is_catalog);
  if (status.Ok()) status = opened->Connect();
  if (status.Ok()) status = opened->SignIn();
  if (status.Ok()) connection = opened;
  return status;
}

bool LdapConnection::SetOptions() const {
  const int version = LDAP_VERSION3;
  const int no_limit = LDAP_NO_LIMIT;
  const int never = LDAP_DEREF_NEVER;
  struct Option {
    int number;
    const void* value;
  };
  // Everything that the machine's or the user's own settings could have changed.
  const auto options = std::to_array<Option>({
      {LDAP_OPT_PROTOCOL_VERSION, &version},
      {LDAP_OPT_REFERRALS, LDAP_OPT_OFF},
      {LDAP_OPT_RESTART, LDAP_OPT_ON},
      {LDAP_OPT_DEREF, &never},
      {LDAP_OPT_SIZELIMIT, &no_limit},
      {LDAP_OPT_TIMELIMIT, &no_limit},
  });
  const bool are_set = std::ranges::all_of(options, [&](const Option& option) {
    return ldap_set_option(handle_.get(), option.number, option.value) == LDAP_OPT_SUCCESS;
  });
  // A message begins with its length, for which room is made.
  ber_len_t most = limits().most_message_bytes;
  Sockbuf* wire = nullptr;
  return are_set && ldap_get_option(handle_.get(), LDAP_OPT_SOCKBUF, &wire) == LDAP_OPT_SUCCESS &&
         ber_sockbuf_ctrl(wire, LBER_SB_OPT_SET_MAX_INCOMING, &most) == 1;
}

StoreStatus LdapConnection::Connect() {
  // The library connects in its own time and says little of what is in the way.
  FileDescriptor socket;
  StoreStatus status = ConnectByTcp(server_, options_.connect_timeout, stop_, socket);
  if (!status.Ok()) {
    status.text = "cannot reach the server '" + server_.Text() + "': " + status.text;
    return status;
  }
  const BrokenPipeGuard guard;
  LDAP* handle = nullptr;
  // The socket does not block, so that nothing but a wait with an end waits: neither a server that
  // takes nothing nor one that stops in the middle of an answer can hold the program.
  if (ldap_init_fd(socket.get(), LDAP_PROTO_TCP, server_.Uri().c_str(), &handle) == LDAP_SUCCESS) {
    static_cast<void>(socket.Release());
    handle_.reset(handle);
    if (SetOptions()) return {};
  }
  return {kLdapLocalError, "the LDAP library cannot be set up for '" + server_.Text() + "'"};
}

StoreStatus LdapConnection::SignIn() {
  const BrokenPipeGuard guard;
  const WantedServer wanted{.host = server_.BareHost(), .realm = options_.realm};
  StoreStatus status = SignInWithTicket(handle_.get(), wanted,
                                        options_.sign_in_timeout.value_or(options_.request_timeout),
                                        stop_, signed_in_);
  if (!status.Ok()) status.text = "cannot sign in to '" + server_.Text() + "': " + status.text;
  return status;
}

bool LdapConnection::IsUsable() const {
  if (is_broken_) return false;
  pollfd connection{.fd = -1, .events = POLLRDHUP, .revents = 0};
  ldap_get_option(handle_.get(), LDAP_OPT_DESC, &connection.fd);
  if (connection.fd < 0 || poll(&connection, 1, 0) < 0) return false;
  return (connection.revents & (POLLRDHUP | POLLHUP | POLLERR | POLLNVAL)) == 0;
}

StoreStatus LdapConnection::SendSearch(const SearchRequest& request, LDAPControl* page,
                                       RequestId& id) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(request.base); !named.Ok()) return named;
  if (request.filter.find('\0') != std::string::npos) {
    return {kLdapFilterError, "not a search filter"};
  }
  const BrokenPipeGuard guard;
  std::vector<char*> attributes;
  for (const std::string& name : request.attributes) {
    attributes.push_back(const_cast<char*>(name.c_str()));
  }
  attributes.push_back(nullptr);
  std::array<LDAPControl*, 2> controls = {page, nullptr};
  const int code = ldap_search_ext(
      handle(), request.base.c_str(), ScopeOf(request.scope), request.filter.c_str(),
      request.attributes.empty() ? nullptr : attributes.data(), 0,
      page == nullptr ? nullptr : controls.data(), nullptr, nullptr, LDAP_NO_LIMIT, &id);
  if (code == LDAP_FILTER_ERROR) return {code, "not a search filter: " + request.filter};
  return Failure(code, "the request cannot be sent");
}

StoreStatus LdapConnection::SendModify(const std::string& dn,
                                       std::span<const Modification> modifications, ModifyWay way,
                                       RequestId& id) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(dn); !named.Ok()) return named;
  const BrokenPipeGuard guard;
  LDAPControl permissive{.ldctl_oid = const_cast<char*>(kPermissiveModify),
                         .ldctl_value = {.bv_len = 0, .bv_val = nullptr},
                         .ldctl_iscritical = 1};
  std::array<LDAPControl*, 2> controls = {&permissive, nullptr};
  LdapModifications changes(modifications);
  const bool is_permissive = way == ModifyWay::kPermissive && NeedsPermission(modifications);
  const int code = ldap_modify_ext(handle(), dn.c_str(), changes.get(),
                                   is_permissive ? controls.data() : nullptr, nullptr, &id);
  return Failure(code, "the change cannot be sent");
}

StoreStatus LdapConnection::SendAdd(const Entry& entry, RequestId& id) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(entry.dn); !named.Ok()) return named;
  const BrokenPipeGuard guard;
  LdapModifications attributes(entry.attributes);
  const int code =
      ldap_add_ext(handle(), entry.dn.c_str(), attributes.get(), nullptr, nullptr, &id);
  return Failure(code, "the new object cannot be sent");
}

StoreStatus LdapConnection::Await(RequestId id, Amount amount, LdapMessagePtr& answer) {
  answer.reset();
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  const BrokenPipeGuard guard;
  const Clock::time_point begin = Clock::now();
  const int code = AwaitMessage(handle(), id, amount == Amount::kAll ? LDAP_MSG_ALL : LDAP_MSG_ONE,
                                options_.request_timeout, stop_, answer);
  if (code == LDAP_SUCCESS) return {};
  is_broken_ = code != LDAP_USER_CANCELLED || Clock::now() - begin >= kLongSilence;
  if (code == LDAP_USER_CANCELLED) {
    return {code, "the request to the server '" + server_.Text() + "' was stopped"};
  }
  if (code == LDAP_TIMEOUT) {
    return {code, "the server '" + server_.Text() + "' did not answer within " +
                      InSeconds(options_.request_timeout)};
  }
  return Failure(code, "the answer cannot be read");
}

void LdapConnection::Abandon(RequestId id) const {
  if (is_broken_) return;
  const BrokenPipeGuard guard;
  ldap_abandon_ext(handle(), id, nullptr, nullptr);
}

StoreStatus LdapConnection::Failure(int code, const std::string& doing) {
  if (code == LDAP_SUCCESS) return {};
  // What the library itself objects to leaves the connection as it was.
  if (code == LDAP_SERVER_DOWN || code == LDAP_CONNECT_ERROR) {
    is_broken_ = true;
    return {kLdapServerDown, "the connection to the server '" + server_.Text() + "' was lost"};
  }
  if (code == LDAP_DECODING_ERROR || code == LDAP_LOCAL_ERROR) is_broken_ = true;
  return {code, doing + ": " + ldap_err2string(code)};
}

}  // namespace pelora::ldap
