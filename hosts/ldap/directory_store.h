// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// What became of a request: an LDAP result code (0: done; negative: the client's own failures, as
/// libldap numbers them) and the server's text, for the details.
///
/// A write that was sent and not answered, or not so that it can be understood, is a timeout (-5):
/// it may have been done or not. Every other failure of a write means that nothing was changed.
struct [[nodiscard]] StoreStatus {
  int code = 0;
  std::string text;

  [[nodiscard]] bool Ok() const { return code == 0; }
};

/// Attribute values as the directory holds them: byte strings, in the directory's order.
using AttributeValues = std::vector<std::string>;
using AttributeMap = std::map<std::string, AttributeValues, AttributeNameLess>;

/// One entry of the directory, or the part of it that was asked for.
struct Entry {
  std::string dn;
  AttributeMap attributes;
};

/// One change of one attribute within a modify request.
struct Modification {
  enum class Operation : std::uint8_t { kAdd, kDelete, kReplace };
  Operation operation = Operation::kReplace;
  std::string attribute;
  /// None with `kReplace`: the attribute is removed, absent or not.
  AttributeValues values;
};

enum class SearchScope : std::uint8_t { kBase, kOneLevel, kSubtree };

/// A search below `base`. No attributes named: all user attributes.
struct SearchRequest {
  std::string base;
  SearchScope scope = SearchScope::kBase;
  std::string filter = "(objectClass=*)";
  std::vector<std::string> attributes{};
};

/// Takes found entries one by one; false ends the search (which is then done, not failed).
using EntrySink = std::function<bool(Entry entry)>;

/// Takes what became of one of many entries asked for: a failure, or success and the entry. False
/// ends the reading (which is then done, not failed).
using ReadSink = std::function<bool(StoreStatus status, Entry entry)>;

/// A directory that entries are read from and written to: an embedded file or a server.
///
/// One store is used on one thread; a host that searches beside its windows opens a second one.
/// Adding and deleting values follows the permissive way: a value that is there already is not
/// added again, one that is not there is deleted without complaint.
class IDirectoryStore {
 public:
  virtual ~IDirectoryStore() = default;

  /// Value types of the directory's attributes; read once.
  [[nodiscard]] virtual const Schema& schema() const = 0;
  /// The directory's root entry: `defaultNamingContext` and its like.
  virtual StoreStatus ReadRoot(Entry& root) = 0;
  /// Reads the entry `dn`; code 32 when there is none.
  virtual StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                           Entry& entry) = 0;
  /// Reads `attributes` of each of the entries `dns`, or all user attributes when none is named,
  /// and hands the entries to `sink`, one by one and in that order. A store behind a network asks
  /// for many at once. What became of one entry goes to the sink; the status is that of the reading
  /// itself.
  virtual StoreStatus ReadMany(std::span<const std::string> dns,
                               std::span<const std::string> attributes, const ReadSink& sink) {
    for (const std::string& dn : dns) {
      Entry entry;
      StoreStatus status = Read(dn, attributes, entry);
      if (!sink(std::move(status), std::move(entry))) break;
    }
    return {};
  }
  virtual StoreStatus Search(const SearchRequest& request, const EntrySink& sink) = 0;
  /// Takes effect whole or not at all and, once done, outlives a crash.
  virtual StoreStatus Modify(const std::string& dn,
                             std::span<const Modification> modifications) = 0;
  virtual StoreStatus Add(const Entry& entry) = 0;
  /// From now on a wait for a server ends as soon as `stop` says so, on whatever thread: the
  /// request is given up (-8). A store that waits for nobody does not look at it.
  virtual void StopOn(const std::stop_token& /*stop*/) {}
  /// Whether requests are sealed on their way to a server: only then may they hold secrets.
  [[nodiscard]] virtual bool IsSealed() const { return false; }
};

}  // namespace pelora::ldap
