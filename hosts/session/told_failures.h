// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/errands.h"
#include "platform/message_box.h"

namespace pelora::session {

/// Forwards to a tab's directory and to the host's message box, and has the boxes say more: when a
/// page shows that its objects could not be bound, the box goes on with the object, the directory's
/// own words and what can be done; when it shows another failure about which the directory had
/// words, the box goes on with these.
///
/// The page's text stays as it is, and first. A failure is told once, and forgotten when a later
/// binding succeeds.
class ToldFailures final : public IDirectoryService, public IMessageBox {
 public:
  /// All outlive it. Bindings of many objects are errands.
  ToldFailures(changes::RecordingDirectory& directory, IMessageBox& box, IErrands& errands)
      : directory_(directory), box_(box), errands_(errands) {}

  /// What was not told yet is none of what comes now.
  void Forget() {
    failure_.reset();
    known_words_ = directory_.last_failure().text;
  }

  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;
  [[nodiscard]] HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects) override;

  std::int32_t Show(IDialog* owner, const Message& message) override;

 private:
  struct Failure {
    HRESULT status = S_OK;
    /// Empty when it was one of several.
    std::string path;
    std::string words;
  };

  /// Remembers a status that is a failure.
  HRESULT Note(HRESULT status, const std::string& path);

  changes::RecordingDirectory& directory_;
  IMessageBox& box_;
  IErrands& errands_;
  std::optional<Failure> failure_;
  /// What the directory said last when nothing had failed yet.
  std::string known_words_;
};

}  // namespace pelora::session
