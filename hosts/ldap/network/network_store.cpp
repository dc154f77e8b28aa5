// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_store.h"

#include <algorithm>
#include <array>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/ldap/as_made.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/deleted_names.h"
#include "hosts/ldap/network/entry_reader.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/referral.h"
#include "hosts/ldap/network/subschema.h"
#include "hosts/ldap/network/whole_search.h"
#include "hosts/ldap/remove_bottom_up.h"
#include "hosts/ldap/tree_controls.h"

namespace pelora::ldap {
namespace {

constexpr const char* kRootName = "";
/// Enough to keep a server busy that is some milliseconds away.
constexpr std::size_t kWritesUnderWay = 64;

/// The realm of `forest:host$@REALM`, as a server names itself.
std::string RealmOfService(const std::string& name) {
  const std::size_t at = name.rfind('@');
  return at == std::string::npos ? std::string() : name.substr(at + 1);
}

/// Names are the server's to judge.
bool IsName(const std::string& /*text*/) { return true; }

}  // namespace

NetworkStore::NetworkStore(std::shared_ptr<ServerChoice> servers,
                           std::shared_ptr<SchemaCache> schemas)
    : servers_(std::move(servers)), schemas_(std::move(schemas)) {}

StoreStatus NetworkStore::Open(std::shared_ptr<ServerChoice> servers,
                               std::shared_ptr<SchemaCache> schemas, const std::stop_token& stop,
                               std::unique_ptr<NetworkStore>& store) {
  store.reset();
  auto opened = std::make_unique<NetworkStore>(std::move(servers), std::move(schemas));
  opened->StopOn(stop);
  StoreStatus status = opened->Open();
  if (status.Ok()) store = std::move(opened);
  return status;
}

StoreStatus NetworkStore::Open() {
  if (std::exchange(connection_, nullptr) != nullptr && tell_lost_) tell_lost_();
  // It may be another server this time, which takes changes itself or names others for them.
  writer_.reset();
  std::shared_ptr<LdapConnection> opened;
  StoreStatus status = servers_->Connect(stop_, opened);
  if (!status.Ok()) return status;
  status = Begin(opened);
  if (status.code != kLdapServerDown && status.code != kLdapTimeout) return status;
  std::shared_ptr<LdapConnection> other;
  const bool has_other = servers_->ConnectElsewhere(opened->server(), stop_, other).Ok();
  return has_other ? Begin(other) : status;
}

StoreStatus NetworkStore::Begin(const std::shared_ptr<LdapConnection>& opened) {
  Entry root;
  StoreStatus status = EntryReader(*opened).Read(kRootName, {}, root);
  if (status.Ok()) status = LearnSchema(*opened, root);
  if (!status.Ok()) return status;
  realm_ = RealmOfService(FirstValue(root, "ldapServiceName"));
  own_base_ = FirstValue(root, "defaultNamingContext");
  contexts_ = NamingContexts(ValuesOf(root, "namingContexts"));
  const AttributeValues& controls = ValuesOf(root, "supportedControl");
  deletes_trees_ = std::ranges::find(controls, kTreeDeleteControl) != controls.end();
  connection_ = opened;
  return {};
}

void NetworkStore::StopOn(const std::stop_token& stop) {
  stop_ = stop;
  for (const auto& connection : {connection_, writer_}) {
    if (connection != nullptr) connection->StopOn(stop_);
  }
}

StoreStatus NetworkStore::LearnSchema(LdapConnection& connection, const Entry& root) {
  EntryReader reader(connection);
  // Samba's time stamp of the published schema never moves; this moves with every extension.
  Entry base;
  const std::array<std::string, 1> state_attribute = {"schemaInfo"};
  StoreStatus status = reader.Read(FirstValue(root, "schemaNamingContext"), state_attribute, base);
  if (!status.Ok()) return status;
  const std::string state = FirstValue(base, "schemaInfo");
  if (std::shared_ptr<const Schema> kept = schemas_->Find(connection.server(), state)) {
    schema_ = std::move(kept);
    return {};
  }
  Entry published;
  const std::array<std::string, 2> descriptions = {"attributeTypes", "extendedAttributeInfo"};
  status = reader.Read(FirstValue(root, "subschemaSubentry"), descriptions, published);
  if (!status.Ok()) return status;
  auto schema = std::make_shared<const Schema>(ReadSubschema(
      ValuesOf(published, "attributeTypes"), ValuesOf(published, "extendedAttributeInfo")));
  if (schema->types().empty()) {
    return {kLdapOther, "the server '" + connection.server().Text() + "' publishes no schema"};
  }
  schemas_->Keep(connection.server(), state, schema);
  schema_ = std::move(schema);
  return {};
}

StoreStatus NetworkStore::DoReading(const Reading& read) {
  const bool was_open = connection_ != nullptr && connection_->IsUsable();
  StoreStatus status = was_open ? StoreStatus{} : Open();
  if (!status.Ok()) return status;
  const std::shared_ptr<LdapConnection> first = connection_;
  status = read(*first);
  if (status.code != kLdapServerDown || !was_open) return status;
  status = Open();
  if (!status.Ok()) return status;
  const std::shared_ptr<LdapConnection> second = connection_;
  return read(*second);
}

std::shared_ptr<LdapConnection> NetworkStore::ConnectionForWriting() const {
  // A lost one leads back to the server that has named it: it may name another by now.
  return writer_ != nullptr && writer_->IsUsable() ? writer_ : connection_;
}

void NetworkStore::SendOver(std::shared_ptr<LdapConnection> connection, SentWrite& sent) {
  sent.is_referred = connection == writer_;
  sent.connection = std::move(connection);
  sent.status = sent.write.check ? sent.write.check(*sent.connection) : StoreStatus{};
  // A timeout here leaves nothing in doubt.
  if (sent.status.code == kLdapTimeout) sent.status.code = kLdapServerDown;
  if (sent.status.Ok()) sent.status = sent.write.send(*sent.connection, sent.id);
}

NetworkStore::SentWrite NetworkStore::SendWriting(Write write) {
  SentWrite sent{.write = std::move(write), .number = ++sent_};
  if (servers_->is_of_catalog()) {
    sent.status = {kLdapUnwillingToPerform,
                   "the global catalog takes no changes: " + sent.write.what +
                       " is for a controller of its domain"};
    return sent;
  }
  // As long as nothing is sent, another connection is as good: one that is found lost, and one that
  // is lost before all of the request is on its way.
  for (const bool is_last : {false, true}) {
    if (const auto present = ConnectionForWriting(); present == nullptr || !present->IsUsable()) {
      sent.status = Open();
      // Nor here; nor does it matter whether it was the server that could not be had or the ticket
      // for it.
      if (sent.status.code == kLdapTimeout || sent.status.code == kLdapLocalError) {
        sent.status.code = kLdapServerDown;
      }
      if (!sent.status.Ok()) break;
    }
    SendOver(ConnectionForWriting(), sent);
    if (sent.status.code != kLdapServerDown || is_last) break;
  }
  return sent;
}

StoreStatus NetworkStore::AwaitWriting(const SentWrite& sent, std::vector<std::string>& referral) {
  if (!sent.status.Ok()) return sent.status;
  LdapMessagePtr answer;
  StoreStatus status = sent.connection->Await(sent.id, LdapConnection::Amount::kNext, answer);
  if (status.Ok()) {
    status = OutcomeOf(sent.connection->handle(), answer.get(), sent.write.answer_type, nullptr,
                       &referral);
  }
  // A server's own codes are not negative: it has said that it was done, or that it was not.
  if (status.code >= 0) return status;
  return {kLdapTimeout, "whether " + sent.write.what + " was done is not known: " + status.text};
}

StoreStatus NetworkStore::Settle(SentWrite sent) {
  std::vector<std::string> referral;
  StoreStatus status = AwaitWriting(sent, referral);
  const std::optional<ServerName> named = ServerOfReferral(referral);
  // Only the server that one works with is asked where to write.
  if (!named || sent.is_referred || sent.connection->server() == *named) return status;
  const bool is_open = writer_ != nullptr && writer_->server() == *named && writer_->IsUsable();
  if (!is_open) {
    // One that says nothing is waited for once, however many changes are under way.
    if (lost_writer_ && lost_writer_->name == *named && sent.number <= lost_writer_->sent) {
      return lost_writer_->status;
    }
    status = servers_->ConnectForWriting(*named, sent.connection->server(), realm_, stop_, writer_);
    if (!status.Ok()) {
      lost_writer_ = LostWriter{.name = *named, .status = status, .sent = sent_};
      return status;
    }
  }
  SendOver(writer_, sent);
  return AwaitWriting(sent, referral);
}

StoreStatus NetworkStore::ReadRoot(Entry& root) {
  return DoReading([&](LdapConnection& connection) {
    return EntryReader(connection).Read(kRootName, {}, root);
  });
}

StoreStatus NetworkStore::Read(const std::string& dn, std::span<const std::string> attributes,
                               Entry& entry) {
  return DoReading([&](LdapConnection& connection) {
    return EntryReader(connection).Read(dn, attributes, entry);
  });
}

StoreStatus NetworkStore::ReadMany(std::span<const std::string> dns,
                                   std::span<const std::string> attributes, const ReadSink& sink) {
  if (dns.empty()) return {};
  const auto count_and_hand_over = [&](StoreStatus status, Entry entry) {
    dns = dns.subspan(1);
    return sink(std::move(status), std::move(entry));
  };
  return DoReading([&](LdapConnection& connection) {
    // A second reading goes on where the first was cut off.
    return EntryReader(connection).ReadMany(dns, attributes, contexts_, count_and_hand_over);
  });
}

StoreStatus NetworkStore::Search(const SearchRequest& request, const EntrySink& sink) {
  std::size_t count = 0;
  return DoReading([&](LdapConnection& connection) -> StoreStatus {
    if (count > 0) {
      return {kLdapServerDown, "the connection to the server '" + connection.server().Text() +
                                   "' was lost during the search"};
    }
    return SearchWhole(connection, request, sink, count);
  });
}

NetworkStore::SentWrite NetworkStore::SendModify(const std::string& dn,
                                                 std::span<const Modification> modifications,
                                                 ModifyWay way) {
  StoreStatus status = ModifyRules(*schema_, IsName).CheckValues(modifications);
  if (!status.Ok()) return {.write = {}, .status = std::move(status)};
  // The caller's values stay where they are until the write is settled: one may be a password.
  return SendWriting(
      {.what = "the change of '" + dn + "'",
       .answer_type = LDAP_RES_MODIFY,
       .send = [dn, way, modifications, with_names = WithNamesForRemoval(*schema_, modifications)](
                   LdapConnection& connection, LdapConnection::RequestId& id) {
         const std::span<const Modification> sent =
             with_names ? std::span<const Modification>(*with_names) : modifications;
         return connection.SendModify(dn, sent, way, id);
       }});
}

StoreStatus NetworkStore::Modify(const std::string& dn,
                                 std::span<const Modification> modifications) {
  if (modifications.empty()) return {};
  return Settle(SendModify(dn, modifications, ModifyWay::kPermissive));
}

StoreStatus NetworkStore::ModifyStrictly(const std::string& dn,
                                         std::span<const Modification> modifications) {
  if (modifications.empty()) return {};
  return Settle(SendModify(dn, modifications, ModifyWay::kStrict));
}

void NetworkStore::ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
  std::deque<SentWrite> under_way;
  bool is_more = true;
  while (is_more || !under_way.empty()) {
    // What could not be sent is told before more is fetched that could not be either; what goes to
    // another server than what is under way waits, so that everything is done in its order.
    const bool has_room =
        under_way.empty() ||
        (under_way.size() < kWritesUnderWay && under_way.back().connection != nullptr &&
         under_way.back().connection == ConnectionForWriting());
    if (is_more && has_room) {
      std::optional<ModifyRequest> wanted = next();
      is_more = wanted.has_value();
      if (!wanted) continue;
      const auto request = std::make_shared<const ModifyRequest>(*std::move(wanted));
      under_way.push_back(
          request->modifications.empty()
              ? SentWrite{.write = {}, .status = {}, .connection = nullptr}
              : SendModify(request->dn, request->modifications, ModifyWay::kStrict));
      under_way.back().write.request = request;
    } else {
      SentWrite sent = std::move(under_way.front());
      under_way.pop_front();
      sink(sent.connection == nullptr ? sent.status : Settle(std::move(sent)));
    }
  }
}

StoreStatus NetworkStore::Add(const Entry& entry) {
  StoreStatus status = ModifyRules(*schema_, IsName).CheckNew(entry);
  if (!status.Ok()) return status;
  return DoWriting({.what = "the making of '" + entry.dn + "'",
                    .answer_type = LDAP_RES_ADD,
                    .send = [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                      return connection.SendAdd(entry, id);
                    }});
}

StoreStatus NetworkStore::Delete(const Entry& made) {
  const auto is_as_made = [&](LdapConnection& connection) {
    Entry now;
    StoreStatus status = EntryReader(connection).Read(made.dn, {}, now);
    if (status.Ok()) status = CheckKept(*schema_, made, now);
    // The server numbers its changes: an object that has only been made has one.
    if (status.Ok() && ValuesOf(now, "uSNChanged") != ValuesOf(now, "uSNCreated")) {
      status = {kLdapAssertionFailed, "the object was changed since it was made"};
    }
    return status;
  };
  return DoWriting(
      {.what = "the deletion of '" + made.dn + "'",
       .answer_type = LDAP_RES_DELETE,
       .send = [&](LdapConnection& connection,
                   LdapConnection::RequestId& id) { return connection.SendDelete(made.dn, id); },
       .check = is_as_made});
}

NetworkStore::Reading NetworkStore::Meeting(const Entry& seen) const {
  return [this, &seen](LdapConnection& connection) {
    Entry now;
    // Without a single name everything would be read.
    std::vector<std::string> names = AttributeNames(seen);
    names.emplace_back("objectClass");
    StoreStatus status = EntryReader(connection).Read(seen.dn, names, now);
    return status.Ok() ? CheckSame(*schema_, seen, now) : status;
  };
}

StoreStatus NetworkStore::Rename(const Entry& seen, const std::string& dn) {
  return DoWriting({.what = "the new name of '" + seen.dn + "'",
                    .answer_type = LDAP_RES_MODDN,
                    .send =
                        [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                          return connection.SendRename(seen.dn, dn, id);
                        },
                    .check = Meeting(seen)});
}

StoreStatus NetworkStore::SendRemoval(const std::string& dn, Extent extent, Reading check) {
  return DoWriting(
      {.what = "the deletion of '" + dn + "'",
       .answer_type = LDAP_RES_DELETE,
       .send = [&](LdapConnection& connection,
                   LdapConnection::RequestId& id) { return connection.SendDelete(dn, id, extent); },
       .check = std::move(check)});
}

StoreStatus NetworkStore::Remove(const Entry& seen, Extent extent) {
  if (extent == Extent::kAlone || deletes_trees_) {
    return SendRemoval(seen.dn, extent, Meeting(seen));
  }
  // What others lie below stays for now; from then on it is known where deletions are done, which
  // may be ahead of where one reads.
  StoreStatus status = SendRemoval(seen.dn, Extent::kAlone, Meeting(seen));
  if (status.code != kLdapNotAllowedOnNonLeaf) return status;
  const auto search = [this](const SearchRequest& request, const EntrySink& sink) -> StoreStatus {
    const std::shared_ptr<LdapConnection> there = ConnectionForWriting();
    if (there == nullptr) return {kLdapServerDown, "the connection to the server was lost"};
    std::size_t count = 0;
    return SearchWhole(*there, request, sink, count);
  };
  return RemoveBottomUp(seen.dn, search, [this](const std::string& dn) {
    return SendRemoval(dn, Extent::kAlone, {});
  });
}

StoreStatus NetworkStore::Restore(const Entry& removed) {
  return DoWriting({.what = "the restoring of '" + removed.dn + "'",
                    .answer_type = LDAP_RES_MODIFY,
                    .send = [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                      return connection.SendRestore(FirstValue(removed, "objectGUID"), removed.dn,
                                                    id);
                    }});
}

}  // namespace pelora::ldap
