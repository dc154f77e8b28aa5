// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/console/reading/directory_reader.h"
#include "hosts/console/window/container_listing.h"
#include "hosts/console/window/object_list_pane.h"
#include "hosts/ldap/network/network_session.h"

namespace pelora::lab {

/// The list as the console's window has it: filled by a reader on a thread of its own, over a
/// connection of its own, and on the screen while it fills. Needs an application.
class ShownList {
 public:
  explicit ShownList(ldap::NetworkSession& session);
  ShownList(const ShownList&) = delete;
  ShownList& operator=(const ShownList&) = delete;
  ~ShownList();

  /// Lists a container that is not shown yet, and is done when it shows all of it. Throws when it
  /// cannot be listed.
  void Show(const std::string& container);
  /// Shows something else, so that a container that is shown is not refreshed only.
  void LookAway();
  [[nodiscard]] int Count() const { return pane_.ShownCount(); }

 private:
  console::ObjectListPane pane_{nullptr};
  console::DirectoryReader reader_;
  console::ContainerListing listing_{pane_};
};

}  // namespace pelora::lab
