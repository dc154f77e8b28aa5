// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
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

/// What is to be changed of one object, as one request.
struct ModifyRequest {
  std::string dn;
  std::vector<Modification> modifications;
};

/// Gives the next of many requests; nothing when there are no more.
using ModifySource = std::function<std::optional<ModifyRequest>()>;

/// Takes what became of each of many requests, in their order.
using ModifySink = std::function<void(StoreStatus status)>;

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
/// `Modify` adds and deletes values the permissive way: a value that is there already is not added
/// again, one that is not there is deleted without complaint. The strict way refuses both, so that
/// a request can say what it takes to be there.
class IDirectoryStore {
  /// Unwilling to perform.
  static constexpr int kCannotDo = 53;

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
  /// As `Modify`, but every value that is deleted has to be there (16), none that is added may be
  /// (20), and an attribute of one value that is added to must have none (20; 19 with some
  /// servers). An attribute's modifications are done in their order.
  virtual StoreStatus ModifyStrictly(const std::string& dn,
                                     std::span<const Modification> modifications) = 0;
  /// Does many requests, as `ModifyStrictly` does each, in the order of `next`, and tells `sink`
  /// what became of each of them, in the same order. A store behind a network has many under way at
  /// a time, one in a file writes some together: requests may be fetched ahead of the answers to
  /// those before them. `next` may ask the store, and so may `sink`; a fetched request is always
  /// done and answered.
  virtual void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
    while (const std::optional<ModifyRequest> request = next()) {
      sink(ModifyStrictly(request->dn, request->modifications));
    }
  }
  virtual StoreStatus Add(const Entry& entry) = 0;
  /// Deletes the object `made.dn` if it is still as it was made with `made`'s attributes: each of
  /// them has the same values, and nothing else was set since. Otherwise nothing is done: 122, and
  /// the text says what differs. An object that others lie below is not deleted (66).
  ///
  /// A file compares and deletes in one step. No request of a directory server does both: there,
  /// what somebody writes in the moment between the two goes with the object.
  virtual StoreStatus Delete(const Entry& made) = 0;
  /// Gives an object, and with it all that lies below it, the name `dn`, in its container or in
  /// another one. 68 when there is an object of that name, 64 and the like for a name that is none.
  ///
  /// `seen` says which object is meant: its name, and what it has to have just so (`objectGUID`,
  /// say); 122 when it has not. Names of objects that other objects hold follow, as far as their
  /// syntax says that they are names. A file compares and renames in one step. No request of a
  /// directory server does both: an object that takes the name in the moment between is renamed.
  virtual StoreStatus Rename(const Entry& /*seen*/, const std::string& /*dn*/) {
    return {kCannotDo, "this directory renames nothing"};
  }
  /// Whether an object goes with all that lies below it.
  enum class Extent : std::uint8_t { kAlone, kWithAllBelow };
  /// Deletes an object, whatever it has become since it was seen: `seen` is as in `Rename`. With
  /// `kAlone`, one that others lie below stays (66).
  ///
  /// With all that lies below, a file and a server that offers it do it in one step, or not at all.
  /// Any other server deletes from the bottom up: when it refuses in the middle of it, what was
  /// deleted by then is gone, and the text says so.
  virtual StoreStatus Remove(const Entry& /*seen*/, Extent /*extent*/) {
    return {kCannotDo, "this directory deletes nothing"};
  }
  /// Brings back a deleted object, told by `removed`'s `objectGUID`, under the name `removed.dn`. A
  /// directory that has kept it whole gives it back whole.
  virtual StoreStatus Restore(const Entry& /*removed*/) {
    return {kCannotDo, "this directory does not keep what was deleted"};
  }
  /// Writes out in a new entry what `Add` would put into it before it is stored, so that whoever
  /// adds the result by other means makes the same object. Where the directory itself does that,
  /// and of an entry that cannot be added, nothing changes.
  virtual void CompleteNew(Entry& /*entry*/) const {}
  /// From now on a wait for a server ends as soon as `stop` says so, on whatever thread: the
  /// request is given up (-8). A store that waits for nobody does not look at it.
  virtual void StopOn(const std::stop_token& /*stop*/) {}
  /// Whether requests are sealed on their way to a server: only then may they hold secrets.
  [[nodiscard]] virtual bool IsSealed() const { return false; }
};

}  // namespace pelora::ldap
