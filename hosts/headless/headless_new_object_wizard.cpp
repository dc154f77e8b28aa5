// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_new_object_wizard.h"

#include <utility>

namespace pelora {
namespace {

sheets::NewObjectSetup WithOwnPages(sheets::NewObjectSetup setup, sheets::WizardRole first) {
  setup.own_pages = first == sheets::WizardRole::kPrimary ? 0 : 1;
  return setup;
}

}  // namespace

HeadlessNewObjectWizard::HeadlessNewObjectWizard(const resources::ResourceFile& templates,
                                                 sheets::NewObjectSetup setup,
                                                 sheets::WizardRole first_extension)
    : first_extension_(first_extension),
      machine_(templates, view_, WithOwnPages(std::move(setup), first_extension)) {
  view_.pages = &machine_.pages();
  machine_.own_name = [this] { return name_; };
}

HRESULT HeadlessNewObjectWizard::AddExtension(Ref<IDsAdminNewObjExt> extension) {
  const auto role = std::exchange(first_extension_, sheets::WizardRole::kSecondary);
  return machine_.AddExtension(std::move(extension), role);
}

void HeadlessNewObjectWizard::Show() {
  machine_.Show();
  TakeSummaries();
}

void HeadlessNewObjectWizard::TypeName(const std::string& name) {
  name_ = name;
  machine_.SetOwnPageComplete(!name_.empty());
}

void HeadlessNewObjectWizard::TakeSummaries() {
  if (machine_.IsSummary()) summaries_ = machine_.Summaries();
}

bool HeadlessNewObjectWizard::Next() {
  if (!machine_.Next()) return false;
  TakeSummaries();
  return true;
}

bool HeadlessNewObjectWizard::Back() { return machine_.Back(); }

bool HeadlessNewObjectWizard::Finish() {
  // Boxes belong to the first extension's page.
  const std::size_t first_page = machine_.OwnPages();
  if (!machine_.Finish(Dialog(first_page))) return false;
  Close();
  return true;
}

bool HeadlessNewObjectWizard::Cancel() {
  if (!machine_.Cancel()) return false;
  Close();
  return true;
}

void HeadlessNewObjectWizard::Close() {
  view_.Clear();
  machine_.Close();
}

}  // namespace pelora
