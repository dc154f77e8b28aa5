// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_new_object_wizard.h"
#include "server/component_server.h"
#include "server/console_registration.h"
#include "tests/contract/headless_player.h"
#include "tests/contract/new_object_contract.h"
#include "tests/contract/tab_company.h"
#include "tests/support/fake_choosers.h"
#include "tests/support/fault_directory.h"

namespace pelora::contract {

/// New-object wizards in memory. Into which directory they make objects is their platform's
/// business.
class HeadlessNewObjectConsole : public NewObjectConsole {
 public:
  /// What the wizards are run on; everything outlives the console.
  struct Bench {
    const Platform& platform;
    const resources::ResourceFile& templates;
    HeadlessMessageBox& messages;
    pelora::testing::FakeChoosers& choosers;
    pelora::testing::FaultPlan& faults;
  };

  ~HeadlessNewObjectConsole() override {
    EXPECT_EQ(bench_.messages.records().size(), boxes_taken_);
  }

  void Open(const std::string& class_name) override {
    player_.reset();
    sheets::NewObjectSetup setup;
    setup.class_name = class_name;
    setup.display_info = {.wizard_title = "New Object", .container_name = "x/New"};
    setup.make_object = [this, class_name](const std::string& name, Ref<IADs>& object) {
      object = MakeObject(class_name, name);
      return S_OK;
    };
    const auto primary = DefaultRegistrations(class_name, ConsoleRole::kCreationWizard);
    using enum sheets::WizardRole;
    wizard_.emplace(bench_.templates, std::move(setup), primary.empty() ? kSecondary : kPrimary);
    for (const Guid& component : primary) Add(component);
    for (const Guid& component :
         DefaultRegistrations(class_name, ConsoleRole::kCreationWizardExtension)) {
      Add(component);
    }
    wizard_->Show();
  }
  void SetName(const std::string& name) override { wizard_->TypeName(name); }
  [[nodiscard]] IDialog& Page() override { return *wizard_->Dialog(wizard_->CurrentPage()); }
  [[nodiscard]] DialogPlayer& User() override {
    return player_.emplace(*wizard_->Dialog(wizard_->CurrentPage()));
  }

  [[nodiscard]] bool IsNextEnabled() const override { return wizard_->IsNextEnabled(); }
  void Next() override { wizard_->Next(); }
  void Back() override { wizard_->Back(); }
  void Finish() override { wizard_->Finish(); }
  [[nodiscard]] bool IsOpen() const override { return wizard_->IsOpen(); }
  [[nodiscard]] std::string Summary() override {
    std::string text;
    for (const std::string& part : wizard_->summaries()) text += (text.empty() ? "" : "\n") + part;
    std::erase(text, '\r');
    return text;
  }

  void Pick(const std::string& name) override { bench_.choosers.Choose({TabPathOf(name)}); }
  void Browse(const std::string& name) override {
    bench_.choosers.Browse(kDialogOk, TabPathOf(name));
  }
  void AwaitBox() override { bench_.messages.AnswerNext(kDialogOk); }
  [[nodiscard]] TabBox TakeBox() override {
    if (bench_.messages.records().size() == boxes_taken_) return {};
    return ToTabBox(bench_.messages.records()[boxes_taken_++].message);
  }

  void FailCommit() override {
    bench_.faults.Fail(pelora::testing::FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  }

 protected:
  explicit HeadlessNewObjectConsole(const Bench& bench) : bench_(bench) {}

  /// A temporary object, under the faults of the bench.
  [[nodiscard]] virtual Ref<IADs> MakeObject(const std::string& class_name,
                                             const std::string& name) = 0;

 private:
  void Add(const Guid& component) {
    Ref<IDsAdminNewObjExt> extension;
    EXPECT_EQ(CreateComponent(component, bench_.platform, IID_IDsAdminNewObjExt,
                              reinterpret_cast<void**>(extension.Put())),
              S_OK);
    EXPECT_EQ(wizard_->AddExtension(std::move(extension)), S_OK);
  }

  Bench bench_;
  std::optional<HeadlessNewObjectWizard> wizard_;
  std::optional<HeadlessPlayer> player_;
  std::size_t boxes_taken_ = 0;
};

}  // namespace pelora::contract
