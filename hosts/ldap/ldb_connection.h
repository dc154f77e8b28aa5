// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_record.h"

struct ldb_context;
struct ldb_dn;

namespace pelora::ldap {

/// One database opened through libldb, in this code's own types: it knows entries, but no rules of
/// a directory. What the library has to say becomes the text of the failure; it never writes to the
/// terminal. Its result codes are LDAP's.
class LdbConnection {
 public:
  enum class Mode : std::uint8_t {
    /// The file has to be there.
    kExisting,
    /// The same, and the file is mapped into memory. When somebody cuts it short, the process gets
    /// SIGBUS.
    kMapped,
    /// The file is empty or not there. Nothing is waited for: the maker syncs the finished file.
    kNew,
  };

  static StoreStatus Open(const std::string& path, Mode mode,
                          std::unique_ptr<LdbConnection>& connection);
  /// Not connected to any file: for names and LDIF text.
  static StoreStatus OpenUnconnected(std::unique_ptr<LdbConnection>& connection);
  ~LdbConnection();
  LdbConnection(const LdbConnection&) = delete;
  LdbConnection& operator=(const LdbConnection&) = delete;

  [[nodiscard]] ldb_context* handle() const;
  /// Whether a text is a well-formed distinguished name of a directory object.
  [[nodiscard]] bool IsName(const std::string& text) const;
  /// The same for all spellings of a name. `name` is well-formed.
  [[nodiscard]] std::string CanonicalName(const std::string& name) const;
  /// The name of the object above; empty for a top one. `name` is well-formed.
  [[nodiscard]] std::string ParentName(const std::string& name) const;
  /// The first attribute and value of a name. `name` is well-formed.
  struct NamingAttribute {
    std::string attribute;
    std::string value;
  };
  [[nodiscard]] NamingAttribute NamingAttributeOf(const std::string& name) const;
  /// The name that `name`, which is `old_top` or below it, has once that is called `new_top`. All
  /// are well-formed.
  [[nodiscard]] std::string Rebased(const std::string& name, const std::string& old_top,
                                    const std::string& new_top) const;
  /// A value as it is written in a search filter.
  [[nodiscard]] std::string FilterValue(const std::string& value) const;

  [[nodiscard]] StoreStatus Search(const SearchRequest& request, std::vector<Entry>& entries) const;
  /// Takes an entry that is found; false ends the search, which is done then.
  using Take = std::function<bool(Entry entry)>;
  /// The same entry by entry, as they are found. `take` asks nothing of the database.
  [[nodiscard]] StoreStatus SearchEach(const SearchRequest& request, const Take& take) const;
  /// The entry itself, with some attributes, or all when none is named; 32 when there is none.
  [[nodiscard]] StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                                 Entry& entry) const;
  /// The same of an object of the directory only: 34 for what is no name of one, as `IsName` says.
  [[nodiscard]] StoreStatus ReadObject(const std::string& dn,
                                       std::span<const std::string> attributes,
                                       LdbRecord& record) const;
  /// What is recorded under a name, as `Read` would find it.
  [[nodiscard]] StoreStatus ReadRecord(const std::string& dn,
                                       std::span<const std::string> attributes,
                                       LdbRecord& record) const;
  [[nodiscard]] StoreStatus Add(const Entry& entry) const;
  [[nodiscard]] StoreStatus Delete(const std::string& dn) const;
  /// One entry gets another name; those below it keep theirs, and its attributes theirs.
  [[nodiscard]] StoreStatus Rename(const std::string& dn, const std::string& to) const;
  /// Gives each attribute exactly these values; none removes it.
  [[nodiscard]] StoreStatus Replace(const std::string& dn, const AttributeMap& values) const;
  /// The same of the entry that a record is of.
  [[nodiscard]] StoreStatus Replace(const ldb_message& record, const AttributeMap& values) const;

  /// A number that every change of the database makes larger; within a transaction the one that it
  /// will have.
  [[nodiscard]] StoreStatus ReadSequenceNumber(std::uint64_t& number) const;

  [[nodiscard]] StoreStatus BeginTransaction() const;
  /// `kLdapTimeout`: it may have been done, or whoever looks at the file next takes it back.
  [[nodiscard]] StoreStatus CommitTransaction() const;
  /// Whether the library is left in the middle of a transaction that it could not end: it goes on
  /// as within it as long as anybody in this process has the file open.
  [[nodiscard]] bool IsStuck() const;
  void CancelTransaction() const;

 private:
  class Handle;

  explicit LdbConnection(std::unique_ptr<Handle> handle);
  [[nodiscard]] StoreStatus Outcome(int code) const;
  [[nodiscard]] StoreStatus OutcomeOfSearch(int code) const;
  /// `base` and the filter are well-formed.
  [[nodiscard]] StoreStatus SearchAt(ldb_dn* base, SearchScope scope, const std::string& filter,
                                     std::span<const std::string> attributes,
                                     const Take& take) const;
  /// `name` is `dn`.
  [[nodiscard]] StoreStatus ReadAt(ldb_dn* name, const std::string& dn,
                                   std::span<const std::string> attributes,
                                   LdbRecord& record) const;
  [[nodiscard]] StoreStatus SendReplacement(ldb_message& message, const AttributeMap& values) const;

  std::unique_ptr<Handle> handle_;
};

/// A transaction that is undone unless it was committed.
class LdbTransaction {
 public:
  explicit LdbTransaction(const LdbConnection& connection) : connection_(connection) {}
  LdbTransaction(const LdbTransaction&) = delete;
  LdbTransaction& operator=(const LdbTransaction&) = delete;
  ~LdbTransaction() {
    if (is_open_) connection_.CancelTransaction();
  }

  [[nodiscard]] StoreStatus Begin();
  /// Either way the transaction is over.
  [[nodiscard]] StoreStatus Commit();

 private:
  const LdbConnection& connection_;
  bool is_open_ = false;
};

}  // namespace pelora::ldap
