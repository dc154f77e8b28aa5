// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_store.h"

#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_file_check.h"
#include "hosts/ldap/ldb_file_lock.h"
#include "hosts/ldap/ldb_schema.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/ldap/new_entry.h"

namespace pelora::ldap {
namespace {

using Purpose = LdbFileLock::Purpose;

class LdbStore final : public IDirectoryStore {
 public:
  LdbStore(std::string path, std::unique_ptr<LdbFileLock> lock,
           std::unique_ptr<LdbConnection> connection)
      : path_(std::move(path)),
        lock_(std::move(lock)),
        connection_(std::move(connection)),
        rules_(schema_, [this](const std::string& name) { return connection_->IsName(name); }) {}

  ~LdbStore() override {
    const auto alone = lock_->KeepThreadsOut();
    connection_.reset();
  }
  LdbStore(const LdbStore&) = delete;
  LdbStore& operator=(const LdbStore&) = delete;

  /// Reads what the store has to know before it is of use.
  StoreStatus Load();

  [[nodiscard]] const Schema& schema() const override { return schema_; }
  StoreStatus ReadRoot(Entry& root) override;
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override;
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override;
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override;
  StoreStatus Add(const Entry& entry) override;

 private:
  /// Works within a transaction that the caller began.
  StoreStatus ModifyNow(const std::string& dn, std::span<const Modification> modifications,
                        bool& has_changes);
  StoreStatus AddNow(Entry entry);
  /// Names of accounts are unique in the whole directory.
  StoreStatus CheckAccountName(const Entry& entry) const;

  /// Since the file was looked through it may have got what it may not have.
  [[nodiscard]] StoreStatus CheckModules() const;
  StoreStatus Find(const SearchRequest& request, std::vector<Entry>& entries) const;
  /// The entry itself, without taking the lock.
  StoreStatus FindOne(const std::string& dn, std::span<const std::string> attributes,
                      Entry& entry) const;
  StoreStatus Commit(LdbTransaction& transaction) const;
  /// Puts the file's name in front of what went wrong with it.
  [[nodiscard]] StoreStatus AboutFile(StoreStatus status) const;

  std::string path_;
  std::unique_ptr<LdbFileLock> lock_;
  std::unique_ptr<LdbConnection> connection_;
  Entry root_;
  Schema schema_;
  ModifyRules rules_;
};

StoreStatus LdbStore::Load() {
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  if (status.Ok()) status = CheckModules();
  if (status.Ok()) status = FindOne(kRootRecord, {}, root_);
  if (status.code == kLdapNoSuchObject ||
      (status.Ok() && !root_.attributes.contains("schemaNamingContext"))) {
    return {kLdapServerDown,
            "cannot open the directory '" + path_ + "': the file is a database of another program"};
  }
  if (!status.Ok()) return AboutFile(std::move(status));
  root_.dn.clear();
  root_.attributes.erase("distinguishedName");

  // The library itself supplies it, whether the schema tells of it or not.
  schema_.Add("distinguishedName",
              {.syntax = Syntax::kDistinguishedName, .is_single_valued = true});
  std::vector<Entry> definitions;
  status = Find({.base = root_.attributes["schemaNamingContext"].front(),
                 .scope = SearchScope::kOneLevel,
                 .filter = "(objectClass=attributeSchema)",
                 .attributes = {}},
                definitions);
  for (const Entry& definition : definitions) {
    if (status.Ok()) status = AddToSchema(definition, schema_);
  }
  return AboutFile(std::move(status));
}

StoreStatus LdbStore::CheckModules() const {
  Entry modules;
  StoreStatus status = FindOne(kModulesRecord, {}, modules);
  if (status.Ok()) return RefuseModules(path_);
  return status.code == kLdapNoSuchObject ? StoreStatus{} : status;
}

StoreStatus LdbStore::ReadRoot(Entry& root) {
  root = {};
  // What it says does not change, but whether the directory can be had does.
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  if (status.Ok()) root = root_;
  return status;
}

StoreStatus LdbStore::Read(const std::string& dn, std::span<const std::string> attributes,
                           Entry& entry) {
  entry = {};
  if (!connection_->IsName(dn)) return {kLdapInvalidDnSyntax, "not a distinguished name: " + dn};
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  if (status.Ok()) status = FindOne(dn, attributes, entry);
  return status;
}

StoreStatus LdbStore::Search(const SearchRequest& request, const EntrySink& sink) {
  if (!connection_->IsName(request.base)) {
    return {kLdapInvalidDnSyntax, "not a distinguished name: " + request.base};
  }
  std::vector<Entry> entries;
  {
    LdbFileLock::Hold hold;
    StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
    if (status.Ok()) status = Find(request, entries);
    if (!status.Ok()) return status;
  }
  // The lock is gone: the sink may ask for more.
  for (Entry& entry : entries) {
    if (!sink(std::move(entry))) break;
  }
  return {};
}

StoreStatus LdbStore::Modify(const std::string& dn, std::span<const Modification> modifications) {
  if (!connection_->IsName(dn)) return {kLdapInvalidDnSyntax, "not a distinguished name: " + dn};
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kWrite, hold);
  if (!status.Ok()) return status;
  LdbTransaction transaction(*connection_);
  status = transaction.Begin();
  if (!status.Ok()) return AboutFile(std::move(status));
  bool has_changes = false;
  status = ModifyNow(dn, modifications, has_changes);
  if (!status.Ok() || !has_changes) return status;
  return Commit(transaction);
}

StoreStatus LdbStore::Add(const Entry& entry) {
  if (!connection_->IsName(entry.dn)) {
    return {kLdapInvalidDnSyntax, "not a distinguished name: " + entry.dn};
  }
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kWrite, hold);
  if (!status.Ok()) return status;
  LdbTransaction transaction(*connection_);
  status = transaction.Begin();
  if (!status.Ok()) return AboutFile(std::move(status));
  status = AddNow(entry);
  if (!status.Ok()) return status;
  return Commit(transaction);
}

StoreStatus LdbStore::ModifyNow(const std::string& dn, std::span<const Modification> modifications,
                                bool& has_changes) {
  Entry before;
  StoreStatus status = FindOne(dn, {}, before);
  if (!status.Ok()) return status;
  AttributeMap changed;
  status = rules_.Apply(before, modifications, changed);
  has_changes = !changed.empty();
  if (!status.Ok() || !has_changes) return status;
  return AboutFile(connection_->Replace(dn, changed));
}

StoreStatus LdbStore::AddNow(Entry entry) {
  Entry parent;
  StoreStatus status = FindOne(connection_->ParentName(entry.dn), {}, parent);
  CompleteClasses(entry);
  if (status.Ok()) status = CompleteNewEntry(*connection_, schema_, entry);
  if (status.Ok()) status = rules_.CheckNew(entry);
  if (status.Ok()) status = CheckAccountName(entry);
  if (!status.Ok()) return status;
  return AboutFile(connection_->Add(entry));
}

StoreStatus LdbStore::CheckAccountName(const Entry& entry) const {
  const auto name = entry.attributes.find("sAMAccountName");
  const auto base = root_.attributes.find("defaultNamingContext");
  const bool is_account = name != entry.attributes.end() && !name->second.empty();
  if (!is_account || base == root_.attributes.end()) return {};
  std::vector<Entry> others;
  StoreStatus status =
      Find({.base = base->second.front(),
            .scope = SearchScope::kSubtree,
            .filter = "(sAMAccountName=" + connection_->FilterValue(name->second.front()) + ")",
            .attributes = {"sAMAccountName"}},
           others);
  if (status.Ok() && !others.empty()) {
    return {kLdapAlreadyExists, "the account name is in use by " + others.front().dn};
  }
  return status;
}

StoreStatus LdbStore::Find(const SearchRequest& request, std::vector<Entry>& entries) const {
  StoreStatus status = connection_->Search(request, entries);
  return status.code == kLdapOther ? AboutFile(std::move(status)) : status;
}

StoreStatus LdbStore::FindOne(const std::string& dn, std::span<const std::string> attributes,
                              Entry& entry) const {
  std::vector<Entry> entries;
  StoreStatus status = Find({.base = dn,
                             .scope = SearchScope::kBase,
                             // Records of the library's own have no class.
                             .filter = "(distinguishedName=*)",
                             .attributes = {attributes.begin(), attributes.end()}},
                            entries);
  if (!status.Ok()) return status;
  if (entries.empty()) return {kLdapNoSuchObject, "no such object: " + dn};
  entry = std::move(entries.front());
  return {};
}

StoreStatus LdbStore::Commit(LdbTransaction& transaction) const {
  StoreStatus status = lock_->KeepReadersOut();
  if (!status.Ok()) return status;
  return AboutFile(transaction.Commit());
}

StoreStatus LdbStore::AboutFile(StoreStatus status) const {
  const std::string name = "the directory '" + path_ + "'";
  if (!status.Ok() && status.text.find(name) == std::string::npos) {
    status.text = name + ": " + status.text;
  }
  return status;
}

}  // namespace

StoreStatus OpenLdbStore(const std::string& path, const LdbStoreOptions& options,
                         std::unique_ptr<IDirectoryStore>& store) {
  store.reset();
  std::unique_ptr<LdbFileLock> lock;
  StoreStatus status = LdbFileLock::Open(path, options.lock_wait, lock);
  if (status.Ok()) status = CheckLdbFile(path, *lock);
  if (!status.Ok()) return status;

  std::unique_ptr<LdbConnection> connection;
  {
    LdbFileLock::Hold hold;
    status = lock->Acquire(Purpose::kOpen, hold);
    if (!status.Ok()) return status;
    status = LdbConnection::Open(lock->LibraryPath(), LdbConnection::Mode::kExisting, connection);
  }
  if (!status.Ok()) {
    return {kLdapServerDown, "cannot open the directory '" + path + "': " + status.text};
  }
  auto opened = std::make_unique<LdbStore>(path, std::move(lock), std::move(connection));
  status = opened->Load();
  if (status.Ok()) store = std::move(opened);
  return status;
}

}  // namespace pelora::ldap
