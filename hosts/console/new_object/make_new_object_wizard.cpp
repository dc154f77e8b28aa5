// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/make_new_object_wizard.h"

#include <array>
#include <utility>

#include "hosts/console/choosers/folder_name.h"
#include "hosts/console/qt_text.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/object_name.h"
#include "server/component_server.h"

namespace pelora::console {
namespace {

QString CodeOf(HRESULT status) {
  return QStringLiteral("0X") + QString::number(static_cast<std::uint32_t>(status), 16).toUpper();
}

/// Where the container's own objects lie.
QString PlaceOf(const DirectoryObject& container) { return FolderOf("CN=," + container.dn); }

/// The name in the domain name system of the directory's domain; empty when it cannot be read.
QString DomainOf(ldap::IDirectoryStore& store) {
  ldap::Entry root;
  if (!store.ReadRoot(root).Ok()) return {};
  const auto base = root.attributes.find("defaultNamingContext");
  if (base == root.attributes.end() || base->second.empty()) return {};
  return FolderOf("CN=," + base->second.front());
}

HRESULT AddComponent(const Guid& class_id, WizardRole role, const Platform& platform,
                     QtNewObjectWizard& wizard) {
  Ref<IDsAdminNewObjExt> extension;
  const HRESULT created = CreateComponent(class_id, platform, IID_IDsAdminNewObjExt,
                                          reinterpret_cast<void**>(extension.Put()));
  return FAILED(created) ? created : wizard.AddExtension(std::move(extension), role);
}

/// What the administrator is told of a failure beside its code; empty when the directory has no
/// words for it.
QString Explain(const ldap::StoreStatus& failure) {
  if (failure.text.empty()) return {};
  // What was sent and not answered may have been done.
  const QString outcome = failure.code == ldap::kLdapTimeout
                              ? QStringLiteral("It is not known whether the object was created.")
                              : QStringLiteral("The object was not created.");
  return QStringLiteral("%1 The directory says: %2").arg(outcome, ToQString(failure.text));
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

/// Temporary objects of the kind in the container.
NewObjectSetup SetupOf(const NewObjectKind& kind, const DirectoryObject& container,
                       ldap::IDirectoryStore& store, const std::shared_ptr<Outcome>& outcome) {
  NewObjectSetup setup;
  setup.class_name = std::string(kind.class_name);
  setup.display_info = {.wizard_title = ToUtf8(TextOf(kind)),
                        .container_name = ToUtf8(PlaceOf(container))};
  setup.make_object = [&store, outcome, class_name = setup.class_name,
                       container_name = container.dn](const std::string& name, Ref<IADs>& object) {
    outcome->dn = ldap::ChildName(container_name, class_name, name);
    object = Ref<IADs>::Adopt(
        new ldap::NewStoreObject(store, outcome->dn, class_name, outcome->failure));
    return S_OK;
  };
  return setup;
}

}  // namespace

WizardResult MakeNewObjectWizard(const NewObjectKind& kind, const DirectoryObject& container,
                                 DirectorySession& session, const Platform& platform,
                                 const resources::ResourceFile& module, QWidget* parent) {
  const auto refuse = [&kind](HRESULT status) {
    return WizardResult{.wizard = nullptr,
                        .error = QStringLiteral("%1: no object can be created (error code %2).")
                                     .arg(TextOf(kind), CodeOf(status))};
  };
  ldap::IDirectoryStore& store = *session.store;
  const auto outcome = std::make_shared<Outcome>();
  NewObjectSetup setup = SetupOf(kind, container, store, outcome);
  const HRESULT bound =
      platform.directory.ADsGetObject(ldap::AdsPathOf(container.dn), IID_IADs, setup.container);
  if (FAILED(bound)) return refuse(bound);

  auto wizard = std::make_unique<QtNewObjectWizard>(
      QtNewObjectWizard::Parts{
          .module = module,
          .message_box = platform.message_box,
          .kind = kind,
          .own_context = {.domain = DomainOf(store), .takes_passwords = store.IsSealed()}},
      std::move(setup), parent);
  wizard->explain_failure = [outcome] { return Explain(std::exchange(*outcome->failure, {})); };
  wizard->created_name = [&store, outcome] { return NameInDirectory(store, outcome->dn); };
  if (!kind.HasOwnPage()) {
    const std::vector<Guid> primary =
        session.specifiers.ComponentsOf(kind.class_name, ConsoleRole::kCreationWizard);
    const HRESULT status =
        primary.empty() ? CLASS_E_CLASSNOTAVAILABLE
                        : AddComponent(primary.front(), WizardRole::kPrimary, platform, *wizard);
    if (status != S_OK) return refuse(status);
  }
  for (const Guid& class_id :
       session.specifiers.ComponentsOf(kind.class_name, ConsoleRole::kCreationWizardExtension)) {
    // The object can be made without it.
    (void)AddComponent(class_id, WizardRole::kSecondary, platform, *wizard);
  }
  wizard->Start();
  return {.wizard = std::move(wizard), .error = {}};
}

}  // namespace pelora::console
