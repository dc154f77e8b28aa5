// SPDX-License-Identifier: Apache-2.0
// The console's wizards, over the sample company in a directory file.
#include "directory/attribute_catalogue.h"
#include "hosts/ldap/ads_path.h"
#include "tests/contract/new_object_contract.h"
#include "tests/ui/new_object_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::contract {
namespace {

class QtWizards final : public NewObjectConsole {
 public:
  ~QtWizards() override { EXPECT_EQ(box_.text, ""); }

  void Open(const std::string& class_name) override {
    class_name_ = class_name;
    wizard_.emplace(company_.recorded(), company_.module(), class_name.c_str(),
                    company_.Objects({sample::kSales}).front());
  }
  void SetName(const std::string& name) override {
    wizard_->Write("own_name", name);
    // Of these there is one in the whole directory.
    if (class_name_ == "user") wizard_->Write("own_logon_name", "new" + std::to_string(++users_));
  }
  [[nodiscard]] IDialog& Page() override { return wizard_->dialog(); }
  [[nodiscard]] DialogPlayer& User() override {
    return player_.emplace(wizard_->dialog().widget());
  }

  [[nodiscard]] bool IsNextEnabled() const override { return wizard_->wizard().next().isEnabled(); }
  void Next() override { wizard_->Next(); }
  void Back() override { wizard_->Back(); }
  void Finish() override { wizard_->Finish(); }
  [[nodiscard]] bool IsOpen() const override { return wizard_->IsOpen(); }
  [[nodiscard]] std::string Summary() override { return wizard_->Summary(); }

  void Pick(const std::string& name) override {
    wizard_->choosers().Choose({ldap::AdsPathOf(name)});
  }
  void Browse(const std::string& name) override {
    wizard_->choosers().Browse(kDialogOk, ldap::AdsPathOf(name));
  }
  void AwaitBox() override { company_.modal_scripts().Add(test::Confirm(box_)); }
  [[nodiscard]] TabBox TakeBox() override {
    const test::ShownBox box = std::exchange(box_, {});
    return {.caption = box.caption, .text = box.text};
  }

  void FailCommit() override { company_.store().FailNextAdd({50, "no right to do that"}); }
  [[nodiscard]] std::optional<TabValues> Stored(const std::string& name) override {
    const char* const part = class_name_ == "organizationalUnit" ? "OU=" : "CN=";
    ldap::Entry entry;
    if (!company_.session().store->Read(part + name + "," + sample::kSales, {}, entry).Ok()) {
      return std::nullopt;
    }
    TabValues values;
    for (const Attribute& attribute : kAttributeCatalogue) {
      const std::string known(attribute.name);
      values[known] = entry.attributes[known];
    }
    return values;
  }

 private:
  test::RecordedCompany company_;
  test::ShownBox box_;
  std::string class_name_;
  int users_ = 0;
  std::optional<test::OpenWizard> wizard_;
  std::optional<QtPlayer> player_;
};

std::unique_ptr<NewObjectConsole> MakeWizards() { return std::make_unique<QtWizards>(); }

INSTANTIATE_TEST_SUITE_P(Qt, NewObjectContract, ::testing::Values(&MakeWizards));

}  // namespace
}  // namespace pelora::contract
