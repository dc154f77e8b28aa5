// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/recording_directory.h"
#include "hosts/ctl/fields/wish_maker.h"
#include "hosts/ctl/pages/one_root.h"
#include "hosts/ctl/pages/page_platform.h"
#include "hosts/session/directory_session.h"

namespace pelora::ctl {

/// Works out the change of one object from what is asked of its fields: opens the tabs that have
/// them in memory, operates them, applies them, and keeps of what they would have written what
/// belongs to those fields. Nothing is sent.
class SettingsChanger {
 public:
  /// All outlive the changer.
  SettingsChanger(session::DirectorySession& session, const resources::ResourceFile& module,
                  FieldCatalogue& catalogue, ObjectFinder& finder);
  SettingsChanger(const SettingsChanger&) = delete;
  SettingsChanger& operator=(const SettingsChanger&) = delete;

  /// The change of an object that has been read; no attributes where everything is as asked. Or why
  /// there is none: the object is not there, has no settings, or a page refuses.
  [[nodiscard]] changes::Prepared Prepare(changes::ReadObject object,
                                          std::span<const Assignment> assignments);

 private:
  [[nodiscard]] changes::Change WorkOut(const std::shared_ptr<const ldap::Entry>& entry,
                                        const session::DirectoryObject& described,
                                        std::span<const Assignment> assignments);
  void OperatePages(const session::DirectoryObject& described, const std::vector<Wish>& wishes);
  [[nodiscard]] changes::Change TakeChange(const ldap::Entry& entry,
                                           const std::vector<Wish>& wishes);
  /// Throws `Refusal` for a choice that a change does not lead to.
  void CheckChoices(const ldap::Entry& entry, const changes::Change& change,
                    const std::vector<Wish>& wishes) const;

  session::DirectorySession& session_;
  const resources::ResourceFile& module_;
  FieldCatalogue& catalogue_;
  ObjectFinder& finder_;
  changes::RecordingDirectory recording_;
  OneRoot directory_;
  PagePlatform platform_;
  WishMaker wishes_;
};

}  // namespace pelora::ctl
