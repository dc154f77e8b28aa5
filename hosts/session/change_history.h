// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "hosts/changes/change_log.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/session/errands.h"

namespace pelora::session {

/// What was written at one go, in the words in which it is listed.
struct PastChange {
  /// Names it within its history.
  std::string id;
  std::chrono::system_clock::time_point when{};
  /// What the objects are called and the fields that were changed, each once.
  std::vector<std::string> objects;
  std::vector<std::string> fields;
  bool is_undone = false;
  /// What the directory does not keep cannot be taken back: a deletion is listed all the same.
  bool is_final = false;
};

/// What was written into one directory, kept in the user's data folder for thirty days so that it
/// can be taken back: for each go an undo file (`changes::UndoFile`) and the words for it, both for
/// their owner alone. The file is complete on the disk before anything of it is sent.
///
/// Taking back is guarded as every change is: what somebody has changed since is refused and left
/// alone, the rest is taken back. What was taken back can be done again, but for the creation of an
/// object, of which its taking back leaves nothing.
class ChangeHistory {
 public:
  using Clock = std::chrono::system_clock;
  static constexpr std::chrono::days kKept{30};

  /// The history of the directory of that name (a server or a file's path) in this folder; both
  /// need not be there. `schema` outlives it.
  ChangeHistory(const std::filesystem::path& folder, const std::string& directory,
                const ldap::Schema& schema);

  /// Begins a go: everything that is noted in the log belongs to it. Null when nothing can be kept.
  /// A go of which nothing was done leaves nothing behind.
  [[nodiscard]] std::unique_ptr<changes::IChangeLog> Begin(std::vector<std::string> objects,
                                                           std::vector<std::string> fields,
                                                           Clock::time_point now = Clock::now());
  /// The same for a go that cannot be taken back.
  [[nodiscard]] std::unique_ptr<changes::IChangeLog> BeginFinal(
      std::vector<std::string> objects, std::vector<std::string> fields,
      Clock::time_point now = Clock::now());
  /// Why the last go could not be kept; empty when it could.
  [[nodiscard]] const std::string& failure() const { return failure_; }

  /// What was written, latest first. Removes what is older than it is to be kept.
  [[nodiscard]] std::vector<PastChange> List(Clock::time_point now = Clock::now()) const;

  /// Takes a go back, and does it again; what became of each object. A file that cannot be read is
  /// one failed result without a name.
  [[nodiscard]] std::vector<changes::Result> Undo(const std::string& id,
                                                  ldap::IDirectoryStore& store, IErrands& errands);
  [[nodiscard]] std::vector<changes::Result> Redo(const std::string& id,
                                                  ldap::IDirectoryStore& store, IErrands& errands);

  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

 private:
  /// What a go is listed with.
  struct Words {
    std::vector<std::string> objects;
    std::vector<std::string> fields;
    bool is_final = false;
  };
  [[nodiscard]] static bool Write(const std::filesystem::path& path, const Words& words);
  [[nodiscard]] std::unique_ptr<changes::IChangeLog> Start(const Words& words,
                                                           Clock::time_point now);
  [[nodiscard]] std::filesystem::path File(const std::string& id, const char* kind) const;
  [[nodiscard]] std::filesystem::path RedoFile(const std::string& id, std::size_t number) const;
  /// What was taken back so far, in the order in which that was done.
  [[nodiscard]] std::vector<std::filesystem::path> RedoFiles(const std::string& id) const;
  [[nodiscard]] std::vector<changes::Result> Run(const std::filesystem::path& file,
                                                 const std::string& what, changes::IChangeLog* log,
                                                 ldap::IDirectoryStore& store, IErrands& errands);

  std::filesystem::path folder_;
  const ldap::Schema& schema_;
  std::string failure_;
};

}  // namespace pelora::session
