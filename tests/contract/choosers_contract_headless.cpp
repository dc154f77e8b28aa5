// SPDX-License-Identifier: Apache-2.0
// The choosers that answer with given objects, held to the contract.
#include "hosts/headless/headless_choosers.h"
#include "tests/contract/chooser_objects.h"
#include "tests/contract/choosers_contract.h"
#include "tests/unit/page_bench.h"

namespace pelora::contract {
namespace {

class HeadlessHost final : public ChooserHost {
 public:
  HeadlessHost() { AddChooserObjects(bench_.directory); }

  [[nodiscard]] const Platform& platform() override { return platform_; }
  void Pick(const Choice& objects) override {
    std::vector<HeadlessChoosers::Object> given;
    for (const ChooserObject& object : objects) {
      given.push_back({.dn = object.name,
                       .path = ChooserPathsOf({object}).front(),
                       .name = object.common_name});
    }
    choosers_.AnswerNext(std::move(given));
  }
  void Find(const Choice& containers) override { Pick(containers); }
  void BrowseLaboratory() override { Pick({kLaboratory}); }
  void CancelBrowser() override { Pick({}); }

 private:
  pelora::testing::PageBench bench_;
  HeadlessChoosers choosers_;
  Platform platform_{bench_.faulty, bench_.messages, bench_.dialogs,
                     choosers_,     bench_.text,     bench_.library};
};

std::unique_ptr<ChooserHost> MakeHost() { return std::make_unique<HeadlessHost>(); }

INSTANTIATE_TEST_SUITE_P(Headless, ChoosersContract, ::testing::Values(&MakeHost));

TEST(HeadlessChoosers, WhatIsNotOfferedIsNotTakenAndSaysSo) {
  const HeadlessChoosers::Object ada{.dn = "CN=Ada,DC=x", .path = "LDAP://CN=Ada,DC=x"};
  const HeadlessChoosers::Object unit{.dn = "OU=A/B,DC=x", .path = "LDAP://OU=A\\/B,DC=x"};
  HeadlessChoosers choosers(
      [](const HeadlessChoosers::Object& object, const ObjectPickerScope* scope) {
        return object.dn.starts_with("CN=") == (scope != nullptr && scope->down_level == 7);
      });
  std::unique_ptr<IDsObjectPicker> picker;
  ASSERT_EQ(choosers.CreateObjectPicker(picker), S_OK);
  Ref<IDataObject> chosen;
  choosers.AnswerNext({ada});
  ASSERT_EQ(picker->Initialize({}), S_OK);
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_FALSE) << "of another scope";
  EXPECT_EQ(choosers.refusal(), "CN=Ada,DC=x is nothing that can be chosen here");
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_FALSE) << "an answer is given once";
  ASSERT_EQ(picker->Initialize({.scope = {.down_level = 7}}), S_OK);
  choosers.AnswerNext({ada, unit});
  EXPECT_EQ(choosers.refusal(), "");
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_FALSE) << "all or none";
  EXPECT_EQ(choosers.refusal(), "OU=A/B,DC=x is nothing that can be chosen here");
  choosers.AnswerNext({ada});
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), S_OK);
  EXPECT_EQ(choosers.refusal(), "");

  std::string path;
  choosers.AnswerNext({ada});
  EXPECT_EQ(choosers.BrowseForContainer({.path_capacity = 260}, path), kDialogCancel);
  EXPECT_EQ(choosers.refusal(), "CN=Ada,DC=x is nothing that can be chosen here");
  choosers.AnswerNext({unit});
  EXPECT_EQ(choosers.BrowseForContainer({.path_capacity = 8}, path), kDialogCancel);
  EXPECT_EQ(choosers.refusal(), "OU=A/B,DC=x is too long to be used here");
}

}  // namespace
}  // namespace pelora::contract
