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
#include "hosts/ldap/network/paged_search.h"
#include "hosts/ldap/network/subschema.h"
#include "hosts/ldap/remove_bottom_up.h"
#include "hosts/ldap/tree_controls.h"

namespace pelora::ldap {
namespace {

constexpr const char* kRootName = "";
/// Enough to keep a server busy that is some milliseconds away.
constexpr std::size_t kWritesUnderWay = 64;

/// Names are the server's to judge.
bool IsName(const std::string& /*text*/) { return true; }

}  // namespace

NetworkStore::NetworkStore(std::shared_ptr<ServerChoice> servers,
                           std::shared_ptr<SchemaCache> schemas)
    : servers_(std::move(servers)), schemas_(std::move(schemas)) {}

StoreStatus NetworkStore::Open() {
  connection_.reset();
  std::shared_ptr<LdapConnection> opened;
  StoreStatus status = servers_->Connect(stop_, opened);
  Entry root;
  if (status.Ok()) status = EntryReader(*opened).Read(kRootName, {}, root);
  if (status.Ok()) status = LearnSchema(*opened, root);
  if (!status.Ok()) return status;
  contexts_ = NamingContexts(ValuesOf(root, "namingContexts"));
  const AttributeValues& controls = ValuesOf(root, "supportedControl");
  deletes_trees_ = std::ranges::find(controls, kTreeDeleteControl) != controls.end();
  connection_ = std::move(opened);
  return {};
}

void NetworkStore::StopOn(const std::stop_token& stop) {
  stop_ = stop;
  if (connection_ != nullptr) connection_->StopOn(stop_);
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

NetworkStore::SentWrite NetworkStore::SendWriting(const std::string& what, int answer_type,
                                                  const Sending& send) {
  SentWrite sent{.what = what, .answer_type = answer_type};
  // As long as nothing is sent, another connection is as good: one that is found lost, and one that
  // is lost before all of the request is on its way.
  for (const bool is_last : {false, true}) {
    if (connection_ == nullptr || !connection_->IsUsable()) {
      sent.status = Open();
      // A timeout here leaves nothing in doubt.
      if (sent.status.code == kLdapTimeout) sent.status.code = kLdapServerDown;
      if (!sent.status.Ok()) break;
    }
    sent.connection = connection_;
    sent.status = send(*sent.connection, sent.id);
    if (sent.status.code != kLdapServerDown || is_last) break;
  }
  return sent;
}

StoreStatus NetworkStore::AwaitWriting(const SentWrite& sent) {
  if (!sent.status.Ok()) return sent.status;
  LdapMessagePtr answer;
  StoreStatus status = sent.connection->Await(sent.id, LdapConnection::Amount::kNext, answer);
  if (status.Ok()) {
    status = OutcomeOf(sent.connection->handle(), answer.get(), sent.answer_type);
  }
  // A server's own codes are not negative: it has said that it was done, or that it was not.
  if (status.code >= 0) return status;
  return {kLdapTimeout, "whether " + sent.what + " was done is not known: " + status.text};
}

StoreStatus NetworkStore::DoWriting(const std::string& what, int answer_type, const Sending& send) {
  return AwaitWriting(SendWriting(what, answer_type, send));
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
    return SearchInPages(connection, request, sink, count);
  });
}

NetworkStore::SentWrite NetworkStore::SendModify(const std::string& dn,
                                                 std::span<const Modification> modifications,
                                                 ModifyWay way) {
  StoreStatus status = ModifyRules(*schema_, IsName).CheckValues(modifications);
  if (!status.Ok()) return {.what = dn, .status = std::move(status)};
  const auto with_names = WithNamesForRemoval(*schema_, modifications);
  const std::span<const Modification> sent =
      with_names ? std::span<const Modification>(*with_names) : modifications;
  return SendWriting("the change of '" + dn + "'", LDAP_RES_MODIFY,
                     [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                       return connection.SendModify(dn, sent, way, id);
                     });
}

StoreStatus NetworkStore::Modify(const std::string& dn,
                                 std::span<const Modification> modifications) {
  if (modifications.empty()) return {};
  return AwaitWriting(SendModify(dn, modifications, ModifyWay::kPermissive));
}

StoreStatus NetworkStore::ModifyStrictly(const std::string& dn,
                                         std::span<const Modification> modifications) {
  if (modifications.empty()) return {};
  return AwaitWriting(SendModify(dn, modifications, ModifyWay::kStrict));
}

void NetworkStore::ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
  std::deque<SentWrite> under_way;
  bool is_more = true;
  while (is_more || !under_way.empty()) {
    // What could not be sent is told before more is fetched that could not be either.
    const bool has_room = under_way.size() < kWritesUnderWay &&
                          (under_way.empty() || under_way.back().connection != nullptr);
    if (is_more && has_room) {
      const std::optional<ModifyRequest> request = next();
      is_more = request.has_value();
      if (!request) continue;
      under_way.push_back(
          request->modifications.empty()
              ? SentWrite{.what = {}, .status = {}, .connection = nullptr}
              : SendModify(request->dn, request->modifications, ModifyWay::kStrict));
    } else {
      const SentWrite sent = std::move(under_way.front());
      under_way.pop_front();
      sink(sent.connection == nullptr ? sent.status : AwaitWriting(sent));
    }
  }
}

StoreStatus NetworkStore::Add(const Entry& entry) {
  StoreStatus status = ModifyRules(*schema_, IsName).CheckNew(entry);
  if (!status.Ok()) return status;
  return DoWriting("the making of '" + entry.dn + "'", LDAP_RES_ADD,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendAdd(entry, id);
                   });
}

StoreStatus NetworkStore::Delete(const Entry& made) {
  Entry now;
  StoreStatus status = Read(made.dn, {}, now);
  if (status.Ok()) status = CheckKept(*schema_, made, now);
  // The server numbers its changes: an object that has only been made has one.
  if (status.Ok() && ValuesOf(now, "uSNChanged") != ValuesOf(now, "uSNCreated")) {
    status = {kLdapAssertionFailed, "the object was changed since it was made"};
  }
  if (!status.Ok()) return status;
  return DoWriting("the deletion of '" + made.dn + "'", LDAP_RES_DELETE,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendDelete(made.dn, id);
                   });
}

StoreStatus NetworkStore::Meet(const Entry& seen) {
  Entry now;
  // Without a single name everything would be read.
  std::vector<std::string> names = AttributeNames(seen);
  names.emplace_back("objectClass");
  StoreStatus status = Read(seen.dn, names, now);
  return status.Ok() ? CheckSame(*schema_, seen, now) : status;
}

StoreStatus NetworkStore::Rename(const Entry& seen, const std::string& dn) {
  if (StoreStatus met = Meet(seen); !met.Ok()) return met;
  return DoWriting("the new name of '" + seen.dn + "'", LDAP_RES_MODDN,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendRename(seen.dn, dn, id);
                   });
}

StoreStatus NetworkStore::SendRemoval(const std::string& dn, Extent extent) {
  return DoWriting("the deletion of '" + dn + "'", LDAP_RES_DELETE,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendDelete(dn, id, extent);
                   });
}

StoreStatus NetworkStore::Remove(const Entry& seen, Extent extent) {
  if (StoreStatus met = Meet(seen); !met.Ok()) return met;
  if (extent == Extent::kAlone || deletes_trees_) return SendRemoval(seen.dn, extent);
  return RemoveBottomUp(*this, seen.dn,
                        [this](const std::string& dn) { return SendRemoval(dn, Extent::kAlone); });
}

StoreStatus NetworkStore::Restore(const Entry& removed) {
  return DoWriting("the restoring of '" + removed.dn + "'", LDAP_RES_MODIFY,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendRestore(FirstValue(removed, "objectGUID"), removed.dn,
                                                   id);
                   });
}

}  // namespace pelora::ldap
