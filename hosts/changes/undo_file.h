// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/change_log.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/file_descriptor.h"

namespace pelora::changes {

/// A file that takes back what a run does: LDIF (`ToLdif`) of each change's undo, in the order in
/// which the changes were made. It is for its owner alone.
///
/// When `Note` returns, what it noted is on the disk: nothing can have been changed of which the
/// file does not tell, whatever happens to the program or the machine. Above the records of each
/// change stands a comment, `# change N`; a comment `# withdrawn N` behind them says that the
/// change was not made after all. A reader that does not know the marks meets the records' guards.
class UndoFile final : public IChangeLog {
 public:
  /// Makes the file, which must not be there (68); a file that cannot be made is 80 with the
  /// system's reason. `schema` outlives it.
  static ldap::StoreStatus Create(const std::string& path, const ldap::Schema& schema,
                                  std::unique_ptr<UndoFile>& file);
  /// Removes a file that takes nothing back: nothing was noted in it, or all of it withdrawn.
  ~UndoFile() override;
  UndoFile(const UndoFile&) = delete;
  UndoFile& operator=(const UndoFile&) = delete;

  [[nodiscard]] ldap::StoreStatus Note(std::span<const Change> changes, NoteId& first) override;
  void Withdraw(NoteId note) override;

 private:
  UndoFile(std::string path, ldap::FileDescriptor file, const ldap::Schema& schema);
  [[nodiscard]] ldap::StoreStatus Append(std::string_view text);
  /// Takes off what was written of something that could not be written whole.
  void CutAtEnd();

  std::string path_;
  ldap::FileDescriptor file_;
  const ldap::Schema& schema_;
  NoteId next_ = 0;
  std::size_t withdrawn_ = 0;
  /// Where what was written whole ends.
  std::int64_t end_ = 0;
};

/// Reads the changes of a file as `UndoFile` makes it, latest first and without those that were
/// withdrawn: running them, in this order, takes back what was done. A file that cannot be read,
/// and one that holds something else, is 80 with the line, as is a pipe or a device that has no end
/// within 128 MB; `changes` is empty then.
[[nodiscard]] ldap::StoreStatus ReadUndoFile(const std::string& path, const ldap::Schema& schema,
                                             std::vector<Change>& changes);

}  // namespace pelora::changes
