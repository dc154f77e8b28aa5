// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/ldap/known_root.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/beside_store.h"
#include "hosts/session/change_history.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/errands.h"
#include "hosts/session/fields/field_catalogue.h"
#include "platform/message_box.h"

namespace pelora::console {

/// A directory that a window shows, with everything that works on it. It outlives the pages, the
/// wizards and the readers that are made with it.
struct ShownDirectory {
  /// Nothing is read yet but what the directory is called. All but the session outlive the object.
  ShownDirectory(std::unique_ptr<session::DirectorySession> opened, session::IErrands& errands,
                 IMessageBox& message_box, const resources::ResourceFile& module);
  ShownDirectory(const ShownDirectory&) = delete;
  ShownDirectory& operator=(const ShownDirectory&) = delete;

  const std::unique_ptr<session::DirectorySession> session;
  /// The session's directory for the window's thread, which is not to wait.
  session::BesideStore beside;
  /// The same, without a second question of what each tab asks first. For whatever does not ask how
  /// things stand at the moment.
  ldap::KnownRoot store;
  /// By which the directory is known again, from wherever the console is started and whichever of a
  /// domain's servers it works with: a file's path, or the domain's distinguished name.
  const std::string name;
  session::ChangeHistory history;
  ldap::StoreDirectoryService service;
  QtChoosers choosers;
  ConsolePlatform platform;
  /// What the list can show of the directory's objects.
  session::FieldCatalogue fields;
};

}  // namespace pelora::console
