// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/make_new_object_wizard.h"

#include <utility>

#include "hosts/console/text/qt_text.h"
#include "hosts/session/new_object.h"

namespace pelora::console {

WizardResult MakeNewObjectWizard(const session::NewObjectKind& kind,
                                 const session::DirectoryObject& container,
                                 WizardDirectory directory, const Platform& platform,
                                 const resources::ResourceFile& module, QWidget* parent) {
  session::NewObject prepared;
  std::string reason =
      session::PrepareNewObject(kind, container, directory.store, platform, prepared);
  if (!reason.empty()) return {.wizard = nullptr, .error = ToQString(reason)};
  auto wizard = std::make_unique<QtNewObjectWizard>(
      QtNewObjectWizard::Parts{.module = module,
                               .message_box = platform.message_box,
                               .kind = kind,
                               .own_context = std::move(prepared.own_context)},
      std::move(prepared.setup), parent);
  wizard->explain_failure = [explain = std::move(prepared.explain_failure)] {
    return ToQString(explain());
  };
  wizard->created_name = std::move(prepared.created_name);
  reason = session::AddWizardComponents(
      kind, directory.specifiers, platform,
      [&wizard](Ref<IDsAdminNewObjExt> extension, sheets::WizardRole role) {
        return wizard->AddExtension(std::move(extension), role);
      });
  if (!reason.empty()) return {.wizard = nullptr, .error = ToQString(reason)};
  wizard->Start();
  return {.wizard = std::move(wizard), .error = {}};
}

}  // namespace pelora::console
