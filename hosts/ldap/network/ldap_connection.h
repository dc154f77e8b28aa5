// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <utility>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/ldap/network/ldap_api.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/sasl_sign_in.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// One connection to a directory server, signed and sealed with the user's Kerberos ticket.
///
/// Requests are sent without waiting, as many as one likes, and their answers awaited one by one.
/// An answer that does not come in time (-5) and a connection that is lost (-1) make the connection
/// unusable for good; nothing here opens another, and nothing is sent on one that is unusable. No
/// request and no wait blocks longer than the options say, and none for long after the stop token
/// says so (-8); unless the server had been silent for some time, the connection is as good as
/// before then. Referrals to other servers are not followed.
class LdapConnection {
 public:
  using RequestId = int;

  /// Connects and signs in. On failure `connection` is left empty: the server is not reached (-1,
  /// -5), there is no usable ticket (49), there is none for a server of this name (-2), the server
  /// would sign or seal less than is asked for (13), it is not of the realm that is asked for (-2),
  /// the port is that of a global catalog, which nobody has asked for, or of TLS (53), or `stop`
  /// put an end to it (-8); `text` is one line that names the server.
  static StoreStatus Open(const ServerName& server, const NetworkOptions& options,
                          const std::stop_token& stop, std::shared_ptr<LdapConnection>& connection);
  ~LdapConnection();
  LdapConnection(const LdapConnection&) = delete;
  LdapConnection& operator=(const LdapConnection&) = delete;

  [[nodiscard]] const ServerName& server() const { return server_; }
  /// By how many bits the key is long that seals everything.
  [[nodiscard]] unsigned sealed_bits() const { return signed_in_.sealed_bits; }
  [[nodiscard]] const AnswerLimits& limits() const { return options_.limits; }
  /// Whether the server has said that it gives no more of a search than a page at a time.
  [[nodiscard]] bool gives_pages() const { return gives_pages_; }
  void NoteThatItGivesPages() { gives_pages_ = true; }
  /// Valid as long as the connection.
  [[nodiscard]] LDAP* handle() const { return handle_.get(); }

  /// What ends a wait from now on.
  void StopOn(std::stop_token stop) { stop_ = std::move(stop); }

  /// Whether a request could be sent, as far as this side knows: nothing has failed, and the server
  /// has not hung up. Nothing is sent to find out.
  [[nodiscard]] bool IsUsable() const;

  /// Sends a search; `page`, when there is one, makes it a page of a longer one.
  StoreStatus SendSearch(const SearchRequest& request, LDAPControl* page, RequestId& id);
  StoreStatus SendModify(const std::string& dn, std::span<const Modification> modifications,
                         ModifyWay way, RequestId& id);
  StoreStatus SendAdd(const Entry& entry, RequestId& id);
  StoreStatus SendDelete(const std::string& dn, RequestId& id,
                         IDirectoryStore::Extent extent = IDirectoryStore::Extent::kAlone);
  StoreStatus SendRename(const std::string& dn, const std::string& to, RequestId& id);
  /// Sends what brings back the deleted object of a `objectGUID` under a name.
  StoreStatus SendRestore(const std::string& guid, const std::string& dn, RequestId& id);

  enum class Amount : std::uint8_t {
    /// The next message: an entry, a reference or the result.
    kNext,
    /// Everything up to and with the result.
    kAll,
  };
  StoreStatus Await(RequestId id, Amount amount, LdapMessagePtr& answer);
  /// Lets go of a request whose answer is no longer wanted.
  void Abandon(RequestId id) const;

 private:
  struct Unbind {
    void operator()(LDAP* handle) const;
  };

  LdapConnection(ServerName server, const NetworkOptions& options, std::stop_token stop);
  StoreStatus Connect();
  StoreStatus SignIn();
  [[nodiscard]] bool SetOptions() const;
  /// What a failed call of the library means; a connection that is of no more use is marked.
  [[nodiscard]] StoreStatus Failure(int code, const std::string& doing);

  ServerName server_;
  NetworkOptions options_;
  std::stop_token stop_;
  SignedIn signed_in_;
  std::unique_ptr<LDAP, Unbind> handle_;
  bool is_broken_ = false;
  bool gives_pages_ = false;
};

}  // namespace pelora::ldap
