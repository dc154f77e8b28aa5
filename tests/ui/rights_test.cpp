// SPDX-License-Identifier: Apache-2.0
// Fields that the user has no right to change, as the directory says with the objects.
#include <gmock/gmock.h>

#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::HasSubstr;

/// Forwards to another store, and says of every object what may be written.
class RightsStore final : public ldap::IDirectoryStore {
 public:
  RightsStore(ldap::IDirectoryStore& target, ldap::AttributeValues allowed)
      : target_(target), allowed_(std::move(allowed)) {}

  const ldap::Schema& schema() const override { return target_.schema(); }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override { return target_.ReadRoot(root); }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    ldap::StoreStatus status = target_.Read(dn, attributes, entry);
    const bool asks =
        std::ranges::find(attributes, "allowedAttributesEffective") != attributes.end();
    if (asks) entry.attributes["allowedAttributesEffective"] = allowed_;
    return status;
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return target_.Search(request, sink);
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return target_.Modify(dn, modifications);
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return target_.ModifyStrictly(dn, modifications);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override { return target_.Add(entry); }
  ldap::StoreStatus Delete(const ldap::Entry& made) override { return target_.Delete(made); }

 private:
  ldap::IDirectoryStore& target_;
  ldap::AttributeValues allowed_;
};

TEST_F(WritingSheet, FieldsWithoutARightCannotBeUsedAndSayWhy) {
  RightsStore store(*session().store, {"peloraHidden", "PELORAQUOTAHARD"});
  OpenSheet open(session(), module(), Objects({kBirgit}), SheetFaults{.store = &store});
  const auto widget = [&](ControlId id) -> QWidget& { return open.dialog().Find(id)->widget(); };
  EXPECT_TRUE(widget(IDC_PELORA_HIDDEN).isEnabled());
  EXPECT_THAT(ToUtf8(widget(IDC_PELORA_HIDDEN).toolTip()), ::testing::Not(HasSubstr("right")));
  for (const ControlId id : {IDC_PELORA_ACCOUNT, IDC_EMAIL_ADD, IDC_SERVER_SELECT}) {
    EXPECT_FALSE(widget(id).isEnabled()) << id;
    EXPECT_THAT(ToUtf8(widget(id).toolTip()), HasSubstr("You have no right to change this.")) << id;
    EXPECT_EQ(widget(id).accessibleDescription(),
              QStringLiteral("You have no right to change this."));
  }
  // What a page says later does not count, and the page is told what it has said itself.
  open.dialog().SetEnabled(IDC_PELORA_ACCOUNT, true);
  EXPECT_FALSE(widget(IDC_PELORA_ACCOUNT).isEnabled());
  EXPECT_TRUE(open.dialog().IsEnabled(IDC_PELORA_ACCOUNT));
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, WithoutAWordAboutRightsEverythingMayBeEdited) {
  OpenSheet& open = Open({kBirgit});
  EXPECT_TRUE(open.dialog().Find(IDC_PELORA_ACCOUNT)->widget().isEnabled());
}

}  // namespace
}  // namespace pelora::test
