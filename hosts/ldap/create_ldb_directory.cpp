// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/create_ldb_directory.h"

#include <fcntl.h>
#include <stdio.h>   // renameat2
#include <stdlib.h>  // mkostemp
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_schema.h"
#include "hosts/ldap/ldif_reader.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/ldap/new_entry.h"
#include "hosts/ldap/tdb_file.h"

namespace pelora::ldap {
namespace {

bool HasClass(const Entry& entry, std::string_view object_class) {
  return std::ranges::any_of(ValuesOf(entry, "objectClass"), [&](const std::string& name) {
    return EqualsWithoutCase(name, object_class);
  });
}

StoreStatus AtEntry(StoreStatus status, const LdifEntry& entry) {
  if (!status.Ok()) {
    status.text =
        "line " + std::to_string(entry.line) + ", entry '" + entry.entry.dn + "': " + status.text;
  }
  return status;
}

/// A directory before it is written: entries that are complete and allowed, and what they rest on.
struct Content {
  std::string base;
  Schema schema;
  std::vector<LdifEntry> entries;
};

StoreStatus CheckPlace(const LdbConnection& connection, const Content& content, const Entry& entry,
                       std::set<std::string>& known) {
  const std::string name = connection.CanonicalName(entry.dn);
  const std::string parent = connection.ParentName(entry.dn);
  const bool is_base = name == connection.CanonicalName(content.base);
  if (!is_base && (parent.empty() || !known.contains(connection.CanonicalName(parent)))) {
    return {kLdapNoSuchObject, "the entry above is missing"};
  }
  if (!known.insert(name).second) return {kLdapAlreadyExists, "the entry is there twice"};
  return {};
}

StoreStatus ReadContent(const LdbConnection& connection, std::string_view ldif, Content& content) {
  StoreStatus status = ReadLdif(connection, ldif, content.entries);
  if (!status.Ok()) return status;
  for (const LdifEntry& entry : content.entries) {
    if (content.base.empty() && HasClass(entry.entry, "domainDNS")) content.base = entry.entry.dn;
    if (!HasClass(entry.entry, "attributeSchema")) continue;
    status = AtEntry(AddToSchema(entry.entry, content.schema), entry);
    if (!status.Ok()) return status;
  }
  if (content.base.empty()) return {kLdapOther, "there is no entry of class domainDNS"};

  const ModifyRules rules(content.schema,
                          [&](const std::string& name) { return connection.IsName(name); });
  std::set<std::string> known;
  for (LdifEntry& entry : content.entries) {
    status = CheckPlace(connection, content, entry.entry, known);
    if (status.Ok()) status = CompleteNewEntry(connection, content.schema, entry.entry);
    if (status.Ok()) status = rules.CheckNew(entry.entry);
    if (!status.Ok()) return AtEntry(std::move(status), entry);
  }
  return {};
}

StoreStatus SystemFailure(int error) {
  return {error == EEXIST ? kLdapAlreadyExists : kLdapServerDown,
          std::generic_category().message(error)};
}

StoreStatus WriteContent(const std::string& path, const Content& content) {
  if (MakeTdbFile(path, content.entries.size()) == nullptr) return SystemFailure(errno);
  std::unique_ptr<LdbConnection> connection;
  StoreStatus status = LdbConnection::Open(path, LdbConnection::Mode::kNew, connection);
  if (!status.Ok()) return status;
  LdbTransaction transaction(*connection);
  status = transaction.Begin();
  for (const Entry& record :
       {MakeOptionsRecord(), MakeAttributesRecord(content.schema), MakeRootRecord(content.base)}) {
    if (status.Ok()) status = connection->Add(record);
  }
  for (const LdifEntry& entry : content.entries) {
    if (!status.Ok()) return status;
    status = AtEntry(connection->Add(entry.entry), entry);
  }
  // In the end, for all of them at once: an entry that is added to an index copies the whole list
  // of those that lie in its container.
  if (status.Ok()) status = connection->Add(MakeIndexRecord());
  return status.Ok() ? transaction.Commit() : status;
}

/// Removes its file unless that got its final name.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& final_path)
      : path_(final_path + ".XXXXXX"), file_(mkostemp(path_.data(), O_CLOEXEC)) {
    if (!file_) error_ = errno;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (file_ && !is_published_) unlink(path_.c_str());
  }

  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] const std::string& path() const { return path_; }

  /// Brings the file to disk and gives it its name, unless that is taken.
  StoreStatus Publish(const std::string& final_path) {
    if (fsync(file_.get()) != 0) return SystemFailure(errno);
    const int renamed =
        renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, final_path.c_str(), RENAME_NOREPLACE);
    is_published_ = renamed == 0;
    // A file system that cannot refuse to replace can still refuse to link.
    const bool is_linked =
        renamed != 0 && errno == EINVAL && link(path_.c_str(), final_path.c_str()) == 0;
    if (!is_published_ && !is_linked) return SystemFailure(errno);
    const std::size_t slash = final_path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : final_path.substr(0, slash + 1);
    const FileDescriptor directory(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that cannot be synced holds the name all the same.
    if (directory) static_cast<void>(fsync(directory.get()));
    return {};
  }

 private:
  std::string path_;
  FileDescriptor file_;
  int error_ = 0;
  bool is_published_ = false;
};

}  // namespace

StoreStatus CreateLdbDirectory(const std::string& path, std::string_view ldif) {
  const auto refuse = [&](StoreStatus status) {
    status.text = "cannot make the directory '" + path + "': " + status.text;
    return status;
  };
  std::unique_ptr<LdbConnection> connection;
  StoreStatus status = LdbConnection::OpenUnconnected(connection);
  if (!status.Ok()) return refuse(std::move(status));
  if (access(path.c_str(), F_OK) == 0) return refuse(SystemFailure(EEXIST));

  Content content;
  status = ReadContent(*connection, ldif, content);
  if (!status.Ok()) return refuse(std::move(status));
  TemporaryFile file(path);
  if (file.error() != 0) return refuse(SystemFailure(file.error()));
  status = WriteContent(file.path(), content);
  if (status.Ok()) status = file.Publish(path);
  return status.Ok() ? status : refuse(std::move(status));
}

}  // namespace pelora::ldap
