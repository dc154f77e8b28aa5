// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/naming_contexts.h"
#include "hosts/ldap/network/schema_cache.h"
#include "hosts/ldap/network/server_choice.h"

namespace pelora::ldap {

/// A directory server as a store: Active Directory or Samba.
///
/// A lost connection is opened again, once, for the request that finds it lost, and a reading is
/// then done anew; a search of which something has been handed over already fails instead (-1). A
/// write is sent once. When no answer to it is had, or one that cannot be read, it may have been
/// done or not: that is -5, with a text that says so, and -1 means that it was not sent.
///
/// A server that takes no changes refers to one that does: what is written goes there from then on,
/// over a connection of its own, and what is read still comes from where it came from. A referral
/// by that one, and one to an answer to a reading, is followed nowhere (10).
///
/// A global catalog takes no changes at all (53): nothing is sent there.
///
/// What the schema does not allow (an integer of more than 32 bits, a value that is too long, an
/// empty one) is refused before anything is sent, with the codes of `ModifyRules`.
class NetworkStore final : public IDirectoryStore {
 public:
  /// `servers` and `schemas` may be shared by several stores, on several threads.
  NetworkStore(std::shared_ptr<ServerChoice> servers, std::shared_ptr<SchemaCache> schemas);
  NetworkStore(const NetworkStore&) = delete;
  NetworkStore& operator=(const NetworkStore&) = delete;

  /// Makes a store and opens it; as `StoreOpener` otherwise.
  static StoreStatus Open(std::shared_ptr<ServerChoice> servers,
                          std::shared_ptr<SchemaCache> schemas, const std::stop_token& stop,
                          std::unique_ptr<NetworkStore>& store);
  /// Connects and reads what the store has to know before it is of use. A server that was found and
  /// goes away in the middle of that is given up for another one.
  StoreStatus Open();

  /// Whenever a connection to the server that is read turns out to be lost, `tell` is called, on
  /// the thread that found it so, before another one is opened: what that server said of itself may
  /// not hold for the next.
  void WhenLost(std::function<void()> tell) { tell_lost_ = std::move(tell); }

  /// The parts of the directory that the server has, as it said when it was opened.
  [[nodiscard]] const NamingContexts& contexts() const { return contexts_; }
  /// The distinguished name of the server's own domain.
  [[nodiscard]] const std::string& own_base() const { return own_base_; }
  [[nodiscard]] const Schema& schema() const override { return *schema_; }
  StoreStatus ReadRoot(Entry& root) override;
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override;
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ReadSink& sink) override;
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override;
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override;
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override;
  /// Some dozen requests are under way at a time. When the connection is lost, each of them may
  /// have been done or not (-5); those after them go over a new one.
  void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) override;
  StoreStatus Add(const Entry& entry) override;
  StoreStatus Delete(const Entry& made) override;
  StoreStatus Rename(const Entry& seen, const std::string& dn) override;
  StoreStatus Remove(const Entry& seen, Extent extent) override;
  StoreStatus Restore(const Entry& removed) override;
  void StopOn(const std::stop_token& stop) override;
  [[nodiscard]] bool IsSealed() const override { return true; }

 private:
  using Reading = std::function<StoreStatus(LdapConnection& connection)>;
  using Sending =
      std::function<StoreStatus(LdapConnection& connection, LdapConnection::RequestId& id)>;

  /// A write that is to be sent.
  struct Write {
    std::string what;
    int answer_type = 0;
    Sending send;
    /// What has to be so before it is sent, where it is sent to; may be none.
    Reading check{};
    /// What `send` speaks of, when nobody else keeps it until the write is settled.
    std::shared_ptr<const ModifyRequest> request{};
  };

  /// A write that is under way, or that could not be sent.
  struct SentWrite {
    Write write;
    StoreStatus status{};
    std::shared_ptr<LdapConnection> connection{};
    LdapConnection::RequestId id = 0;
    /// It went to the server that another one has named.
    bool is_referred = false;
    /// The how many-th it is of all that have been sent.
    std::size_t number = 0;
  };

  /// A server that was named for changes and could not be had.
  struct LostWriter {
    ServerName name;
    StoreStatus status;
    /// How many changes had been sent when that was seen.
    std::size_t sent = 0;
  };

  /// Reads over a new connection what the store has to know, and keeps the connection.
  StoreStatus Begin(const std::shared_ptr<LdapConnection>& opened);
  StoreStatus DoReading(const Reading& read);
  StoreStatus DoWriting(Write write) { return Settle(SendWriting(std::move(write))); }
  SentWrite SendWriting(Write write);
  /// The connection over which the next write goes; null when one has to be opened.
  [[nodiscard]] std::shared_ptr<LdapConnection> ConnectionForWriting() const;
  /// What became of a write, on whichever server it is done in the end.
  StoreStatus Settle(SentWrite sent);
  /// What the server that it was sent to says of it; `referral` is as with `OutcomeOf`.
  static StoreStatus AwaitWriting(const SentWrite& sent, std::vector<std::string>& referral);
  /// Sends a write once, if what has to be so is so.
  void SendOver(std::shared_ptr<LdapConnection> connection, SentWrite& sent);
  SentWrite SendModify(const std::string& dn, std::span<const Modification> modifications,
                       ModifyWay way);
  /// Whether the object that was seen is there.
  [[nodiscard]] Reading Meeting(const Entry& seen) const;
  StoreStatus SendRemoval(const std::string& dn, Extent extent, Reading check);
  /// The schema that the server at the other end has now.
  StoreStatus LearnSchema(LdapConnection& connection, const Entry& root);

  std::shared_ptr<ServerChoice> servers_;
  std::shared_ptr<SchemaCache> schemas_;
  std::stop_token stop_;
  std::function<void()> tell_lost_;
  /// Shared with the request under way: one that a sink makes may replace it.
  std::shared_ptr<LdapConnection> connection_;
  /// To the server that the other one has named for changes, if it has.
  std::shared_ptr<LdapConnection> writer_;
  std::optional<LostWriter> lost_writer_;
  /// How many changes have been sent.
  std::size_t sent_ = 0;
  /// The realm of the server that is read, as it says itself.
  std::string realm_;
  NamingContexts contexts_;
  std::string own_base_;
  bool deletes_trees_ = false;
  std::shared_ptr<const Schema> schema_ = std::make_shared<Schema>();
};

}  // namespace pelora::ldap
