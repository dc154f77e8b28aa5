// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/wizard_scene.h"

#include <algorithm>
#include <utility>

#include "server/console_registration.h"

namespace pelora::testing {
namespace {

constexpr const char* kPath = "LDAP://CN=new,OU=Sales,DC=x";

bool IsPrimary(const ComponentClass& component) {
  return std::ranges::any_of(ConsoleRegistrations(), [&](const ConsoleRegistration& row) {
    return row.role == ConsoleRole::kCreationWizard && row.component_class == component.name;
  });
}

}  // namespace

std::vector<const ComponentClass*> WizardPages() {
  std::vector<const ComponentClass*> pages;
  for (const ComponentClass& component : ClassTable()) {
    if (component.kind == ComponentKind::kWizardPage) pages.push_back(&component);
  }
  return pages;
}

WizardScene::WizardScene(const ComponentClass& component) : component_(component) {
  const EditedValues wanted;
  bench_.directory.AddObject(ChosenPath(wanted),
                             {{"distinguishedName", Variant::String(wanted.chosen)},
                              {"cn", Variant::String(ChosenCommonName(wanted))}});
}

bool WizardScene::Open() {
  Close();
  sheets::NewObjectSetup setup{.class_name = "anything",
                               .container = {},
                               .display_info = {},
                               .make_object = {},
                               .write_own = {}};
  setup.make_object = [this](const std::string& /*name*/, Ref<IADs>& object) {
    object = bench_.faulty.Wrap(bench_.directory.MakeNewObject(kPath, {IID_IADsUser, IID_IADsOU}));
    return S_OK;
  };
  const bool is_primary = IsPrimary(component_);
  wizard_.emplace(bench_.templates(), std::move(setup),
                  is_primary ? sheets::WizardRole::kPrimary : sheets::WizardRole::kSecondary);
  const auto made = Ref<IUnknown>::Adopt(component_.create(bench_.platform));
  rows_ = Query<IFieldRows>(*made)->Fields();
  if (wizard_->AddExtension(Query<IDsAdminNewObjExt>(*made)) != S_OK) return false;
  wizard_->Show();
  if (is_primary) return true;
  wizard_->TypeName("new");
  return wizard_->Next();
}

std::vector<std::string> WizardScene::FillIn() {
  std::vector<std::string> edited =
      FieldEditor(bench_.dialogs, bench_.choosers).EditAll(wizard_->User(), rows_);
  EXPECT_TRUE(wizard_->Next());
  EXPECT_TRUE(wizard_->IsSummary());
  return edited;
}

bool WizardScene::Finish() {
  was_filled_in_ = faults().last_met().has_value();
  bench_.directory.ClearCalls();
  return wizard_->Finish();
}

std::optional<FakeAttributes> WizardScene::Stored() const { return bench_.directory.Values(kPath); }

std::size_t WizardScene::Staged() const {
  using enum DirectoryCall::Kind;
  return bench_.directory.Log({kPut, kPutEx}).size();
}

std::vector<std::string> WizardScene::TakeBoxes() {
  std::vector<std::string> boxes;
  for (const auto& record : bench_.messages.records()) boxes.push_back(record.message.text);
  bench_.messages.ClearRecords();
  return boxes;
}

std::string WizardScene::LeftBehind() const {
  if (bench_.directory.live_objects() > 0) return "objects";
  return bench_.library.initialized() == bench_.library.uninitialized() ? "" : "the library";
}

}  // namespace pelora::testing
