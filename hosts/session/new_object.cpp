// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/new_object.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "directory/error_text.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/new_store_object.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/folder_name.h"
#include "server/component_server.h"

namespace pelora::session {
namespace {

std::string Refusal(const NewObjectKind& kind, HRESULT status) {
  return TextOf(kind) + ": no object can be created (error code " + CodeText(status) + ").";
}

/// The name in the domain name system of the directory's domain; empty when it cannot be read.
std::string DomainOf(ldap::IDirectoryStore& store) {
  ldap::Entry root;
  return store.ReadRoot(root).Ok() ? AsFolder(ldap::FirstValue(root, "defaultNamingContext"))
                                   : std::string();
}

/// What the administrator is told of a failure beside its code; empty when the directory has no
/// words for it.
std::string Explain(const ldap::StoreStatus& failure) {
  if (failure.text.empty()) return {};
  // What was sent and not answered may have been done.
  const std::string outcome = failure.code == ldap::kLdapTimeout
                                  ? "It is not known whether the object was created."
                                  : "The object was not created.";
  return outcome + " The directory says: " + failure.text;
}

/// An object's name as the directory writes it, which may escape other signs than we do.
std::string NameInDirectory(ldap::IDirectoryStore& store, const std::string& dn) {
  const std::array<std::string, 1> wanted = {"objectClass"};
  ldap::Entry entry;
  return store.Read(dn, wanted, entry).Ok() ? entry.dn : dn;
}

/// What becomes of the temporary objects.
struct Outcome {
  std::shared_ptr<ldap::StoreStatus> failure = std::make_shared<ldap::StoreStatus>();
  std::string dn;
};

HRESULT AddComponent(const Guid& class_id, sheets::WizardRole role, const Platform& platform,
                     const AddWizardExtension& add) {
  Ref<IDsAdminNewObjExt> extension;
  const HRESULT created = CreateComponent(class_id, platform, IID_IDsAdminNewObjExt,
                                          reinterpret_cast<void**>(extension.Put()));
  return FAILED(created) ? created : add(std::move(extension), role);
}

}  // namespace

std::string PrepareNewObject(const NewObjectKind& kind, const DirectoryObject& container,
                             ldap::IDirectoryStore& store, const Platform& platform,
                             NewObject& prepared) {
  const auto outcome = std::make_shared<Outcome>();
  sheets::NewObjectSetup setup;
  setup.class_name = std::string(kind.class_name);
  setup.display_info = {.wizard_title = TextOf(kind), .container_name = AsFolder(container.dn)};
  setup.make_object = [&store, outcome, class_name = setup.class_name,
                       container_name = container.dn](const std::string& name, Ref<IADs>& object) {
    outcome->dn = ldap::ChildName(container_name, class_name, name);
    object = Ref<IADs>::Adopt(
        new ldap::NewStoreObject(store, outcome->dn, class_name, outcome->failure));
    return S_OK;
  };
  const HRESULT bound =
      platform.directory.ADsGetObject(ldap::AdsPathOf(container.dn), IID_IADs, setup.container);
  if (FAILED(bound)) return Refusal(kind, bound);
  prepared = {
      .setup = std::move(setup),
      .own_context = {.domain = DomainOf(store), .takes_passwords = store.IsSealed()},
      .explain_failure = [outcome] { return Explain(std::exchange(*outcome->failure, {})); },
      .created_name = [&store, outcome] { return NameInDirectory(store, outcome->dn); }};
  return {};
}

std::string AddWizardComponents(const NewObjectKind& kind,
                                const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                                const AddWizardExtension& add) {
  if (!kind.HasOwnPage()) {
    const std::vector<Guid> primary =
        specifiers.ComponentsOf(kind.class_name, ConsoleRole::kCreationWizard);
    const HRESULT status =
        primary.empty()
            ? CLASS_E_CLASSNOTAVAILABLE
            : AddComponent(primary.front(), sheets::WizardRole::kPrimary, platform, add);
    if (status != S_OK) return Refusal(kind, status);
  }
  for (const Guid& class_id :
       specifiers.ComponentsOf(kind.class_name, ConsoleRole::kCreationWizardExtension)) {
    // The object can be made without it.
    (void)AddComponent(class_id, sheets::WizardRole::kSecondary, platform, add);
  }
  return {};
}

}  // namespace pelora::session
