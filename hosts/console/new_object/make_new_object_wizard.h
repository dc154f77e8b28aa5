// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/session/directory_browser.h"
#include "platform/platform.h"

namespace pelora::console {

/// A wizard, started but not shown, or a sentence that says why there is none.
struct WizardResult {
  std::unique_ptr<QtNewObjectWizard> wizard;
  QString error;
};

/// Where a new object goes.
struct WizardDirectory {
  ldap::IDirectoryStore& store;
  const ldap::DisplaySpecifiers& specifiers;
  /// Opens it for use on another thread. May be none: then nothing is looked up beside the window.
  ldap::StoreOpener open_another{};
  /// Finds the domains around its own, in which members are looked for, too. May be none.
  ldap::PlaceFinder find_places{};
};

/// Makes the wizard that makes an object of a kind in a container: with the components that the
/// directory's display specifiers name. An extension that refuses stays out; a refusing primary one
/// leaves no wizard. Everything that it is made with outlives the wizard.
[[nodiscard]] WizardResult MakeNewObjectWizard(const session::NewObjectKind& kind,
                                               const session::DirectoryObject& container,
                                               WizardDirectory directory, const Platform& platform,
                                               const resources::ResourceFile& module,
                                               QWidget* parent, NewObjectStart start = {});

}  // namespace pelora::console
