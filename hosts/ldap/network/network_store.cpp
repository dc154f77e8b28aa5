// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_store.h"

#include <array>
#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/entry_reader.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/paged_search.h"
#include "hosts/ldap/network/subschema.h"

namespace pelora::ldap {
namespace {

constexpr const char* kRootName = "";

AttributeValues ValuesOf(const Entry& entry, std::string_view name) {
  const auto found = entry.attributes.find(name);
  return found == entry.attributes.end() ? AttributeValues() : found->second;
}

std::string FirstValue(const Entry& entry, std::string_view name) {
  const AttributeValues values = ValuesOf(entry, name);
  return values.empty() ? std::string() : values.front();
}

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

StoreStatus NetworkStore::DoWriting(const std::string& what, int answer_type, const Sending& send) {
  // As long as nothing is sent, another connection is as good.
  if (connection_ == nullptr || !connection_->IsUsable()) {
    StoreStatus status = Open();
    // A timeout here leaves nothing in doubt.
    if (status.code == kLdapTimeout) status.code = kLdapServerDown;
    if (!status.Ok()) return status;
  }
  const std::shared_ptr<LdapConnection> connection = connection_;
  LdapConnection::RequestId id = 0;
  StoreStatus status = send(*connection, id);
  if (!status.Ok()) return status;
  LdapMessagePtr answer;
  status = connection->Await(id, LdapConnection::Amount::kNext, answer);
  if (status.Ok()) status = OutcomeOf(connection->handle(), answer.get(), answer_type);
  // A server's own codes are not negative: it has said that it was done, or that it was not.
  if (status.code >= 0) return status;
  return {kLdapTimeout, "whether " + what + " was done is not known: " + status.text};
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

StoreStatus NetworkStore::Modify(const std::string& dn,
                                 std::span<const Modification> modifications) {
  if (modifications.empty()) return {};
  StoreStatus status = ModifyRules(*schema_, IsName).CheckValues(modifications);
  if (!status.Ok()) return status;
  return DoWriting("the change of '" + dn + "'", LDAP_RES_MODIFY,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendModify(dn, modifications, id);
                   });
}

StoreStatus NetworkStore::Add(const Entry& entry) {
  StoreStatus status = ModifyRules(*schema_, IsName).CheckNew(entry);
  if (!status.Ok()) return status;
  return DoWriting("the making of '" + entry.dn + "'", LDAP_RES_ADD,
                   [&](LdapConnection& connection, LdapConnection::RequestId& id) {
                     return connection.SendAdd(entry, id);
                   });
}

}  // namespace pelora::ldap
