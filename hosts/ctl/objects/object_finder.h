// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/directory_browser.h"
#include "hosts/session/directory_session.h"

namespace pelora::ctl {

/// An object that was named, and what is known of it.
struct Target {
  /// As it was given.
  std::string given;
  /// Its distinguished name; empty when there is not exactly one such object.
  std::string dn;
  /// Why there is none.
  std::string problem;
  /// The object, where it was read when it was selected; may be null.
  std::shared_ptr<const ldap::Entry> entry{};
};

/// Which objects are meant beside those that are named; together they select.
struct Selection {
  std::optional<std::string> filter;
  std::optional<std::string> class_word;
  std::optional<std::string> base;

  [[nodiscard]] bool IsGiven() const { return filter || class_word || base; }
};

/// What is said of a name that nothing is called by.
inline constexpr std::string_view kNobodyOfThisName = "no such object";

/// Finds the objects that arguments mean: those with Pelora tabs. Throws `DirectoryFailure` when
/// the directory cannot be asked.
class ObjectFinder {
 public:
  /// More selected objects than these are not kept as they were read: whoever works on them reads
  /// them again, a part at a time.
  static constexpr std::size_t kMostKept = 4096;

  /// The session outlives the finder.
  explicit ObjectFinder(session::DirectorySession& session) : session_(session) {}

  /// What each of the names means, in their order. Distinguished names are taken as they are; many
  /// names are looked for in one search.
  [[nodiscard]] std::vector<Target> Resolve(std::span<const std::string> given);
  [[nodiscard]] Target ResolveOne(const std::string& given);

  /// The selected objects, in the order of their distinguished names, with these attributes of
  /// each unless there are more than `kMostKept`. `objectClass` is among the attributes. Throws
  /// `WrongUsage` for a filter that is none, an unknown class and a base that is not there.
  [[nodiscard]] std::vector<Target> Select(const Selection& selection,
                                           const std::vector<std::string>& attributes);
  /// Reads some attributes of the selected objects, `objectClass` among them, in the directory's
  /// order. `narrow` makes the filter narrower. Throws as `Select` does.
  void Search(const Selection& selection, std::vector<std::string> attributes,
              const std::function<std::string(const std::string& filter)>& narrow,
              const std::function<void(ldap::Entry entry)>& take) {
    SearchWhile(selection, std::move(attributes), narrow, [&take](ldap::Entry entry) {
      take(std::move(entry));
      return true;
    });
  }

  /// Reads the one object of a distinguished name or of what it is called; what it is is
  /// remembered. A sentence when there is none.
  [[nodiscard]] std::string Read(const std::string& given, session::DirectoryObject& object);
  /// The computer of a name (`cn`); a sentence when there is not exactly one.
  [[nodiscard]] std::string ReadComputer(const std::string& name, session::DirectoryObject& object);

  /// Whether objects of a kind have Pelora tabs.
  [[nodiscard]] bool HasTabs(const session::ObjectKind& kind);

 private:
  /// Distinguished names by the folded text that an object is called.
  using Matches = std::map<std::string, std::vector<std::string>>;

  /// The search of `Search`, for as long as `take` wants more.
  void SearchWhile(const Selection& selection, std::vector<std::string> attributes,
                   const std::function<std::string(const std::string& filter)>& narrow,
                   const std::function<bool(ldap::Entry entry)>& take);
  void LookFor(Matches& matches);
  void LookAmong(Matches& matches, const std::string& filter);
  [[nodiscard]] std::string Base();

  session::DirectorySession& session_;
  std::map<std::string, session::DirectoryObject> read_;
  std::map<std::string, session::DirectoryObject> computers_;
  std::map<std::string, bool> has_tabs_;
  std::string base_;
};

/// The targets with each object once, the first time it is named.
[[nodiscard]] std::vector<Target> EachOnce(std::vector<Target> targets);

/// The objects that a file names, one a line, without blank lines and those that begin with `#`;
/// `-` is standard input. Throws `WrongUsage`.
[[nodiscard]] std::vector<std::string> ReadNames(const std::string& path);

}  // namespace pelora::ctl
