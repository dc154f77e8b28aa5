// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "hosts/session/directory_browser.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/new_object_kind.h"
#include "hosts/session/own_values.h"
#include "hosts/sheets/new_object_session.h"
#include "platform/platform.h"

namespace pelora::session {

/// What a wizard that makes one object is made with. The functions may outlive the structure, but
/// not the directory.
struct NewObject {
  /// Temporary objects of the kind in the container. How many pages the host has of its own and
  /// what they stage is the host's to add.
  sheets::NewObjectSetup setup;
  OwnContext own_context;
  /// What is to be said of the last failure beside its code, once; empty when the directory has no
  /// words for it.
  std::function<std::string()> explain_failure;
  /// Distinguished name, as the directory writes it, of the object that was made. Asks the
  /// directory.
  std::function<std::string()> created_name;
};

/// Prepares the making of an object of a kind in a container, which is bound. Empty when it may be
/// made, else a sentence that says why not. Nothing is written: the object goes to `store`, which
/// outlives it, when it is committed.
[[nodiscard]] std::string PrepareNewObject(const NewObjectKind& kind,
                                           const DirectoryObject& container,
                                           ldap::IDirectoryStore& store, const Platform& platform,
                                           NewObject& prepared);

/// Takes an extension into a wizard; any other answer than `S_OK` leaves it out.
using AddWizardExtension =
    std::function<HRESULT(Ref<IDsAdminNewObjExt> extension, sheets::WizardRole role)>;

/// Makes the components that the directory's display specifiers name for the kind. One that adds to
/// the object and refuses stays out; without a primary one, where the kind needs it, there is no
/// wizard: a sentence says so. Empty otherwise. `platform` outlives the components.
[[nodiscard]] std::string AddWizardComponents(const NewObjectKind& kind,
                                              const ldap::DisplaySpecifiers& specifiers,
                                              const Platform& platform,
                                              const AddWizardExtension& add);

}  // namespace pelora::session
