// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_quota.h"

#include <string>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {

struct CPropPageExtQuota::Layout {
  struct Field {
    ControlId control;
    const Attribute& attribute;
  };
  Field override_box;
  /// Warning level, soft limit, hard limit.
  std::array<Field, kLimitCount> limits;
  NameList::Layout recipients;
};

const CPropPageExtQuota::Layout& CPropPageExtQuota::LayoutOf(QuotaKind kind) {
  static constexpr std::array<Layout, 2> kLayouts = {{
      {{IDC_QUOTA_OVERRIDE, CatalogueEntry("peloraQuotaOverride")},
       {{{IDC_QUOTA_WARN, CatalogueEntry("peloraQuotaWarn")},
         {IDC_QUOTA_SOFT, CatalogueEntry("peloraQuotaSoft")},
         {IDC_QUOTA_HARD, CatalogueEntry("peloraQuotaHard")}}},
       {IDC_QUOTA_RECIPIENTS, IDC_QUOTA_RECIPIENTS_ADD, IDC_QUOTA_RECIPIENTS_DELETE,
        CatalogueEntry("peloraQuotaCompanyWarningRecipients"), &SelectADObject::SelectUsers}},
      {{IDC_USER_QUOTA_OVERRIDE, CatalogueEntry("peloraUserDefaultQuotaOverride")},
       {{{IDC_USER_QUOTA_WARN, CatalogueEntry("peloraUserDefaultQuotaWarn")},
         {IDC_USER_QUOTA_SOFT, CatalogueEntry("peloraUserDefaultQuotaSoft")},
         {IDC_USER_QUOTA_HARD, CatalogueEntry("peloraUserDefaultQuotaHard")}}},
       {IDC_USER_QUOTA_RECIPIENTS, IDC_USER_QUOTA_RECIPIENTS_ADD, IDC_USER_QUOTA_RECIPIENTS_DELETE,
        CatalogueEntry("peloraQuotaUserWarningRecipients"), &SelectADObject::SelectUsers}},
  }};
  return kLayouts.at(static_cast<std::size_t>(kind));
}

CPropPageExtQuota::CPropPageExtQuota(CPropPage& page, const Platform& platform, QuotaKind kind)
    : CPropPageExt(page), layout_(LayoutOf(kind)), recipients_(page, platform, layout_.recipients) {
  page.RegisterLoad(Handler(this, &CPropPageExtQuota::Load));
  page.RegisterCollect(Handler(this, &CPropPageExtQuota::Collect));
  page.RegisterValidate([](std::string* /*message*/) { return S_OK; });
}

std::vector<Command> CPropPageExtQuota::LimitCommands() {
  using enum ControlNotification;
  std::vector<Command> commands = {{layout_.override_box.control, kClicked,
                                    Handler(this, &CPropPageExtQuota::OnOverrideClicked)}};
  for (std::size_t limit = 0; limit < kLimitCount; ++limit) {
    commands.push_back({layout_.limits.at(limit).control, kEditChange,
                        [this, limit] { return OnLimitEdited(limit); }});
  }
  return commands;
}

std::int32_t CPropPageExtQuota::OnOverrideClicked() {
  override_changed_ = true;
  for (const Layout::Field& limit : layout_.limits) {
    dialog().SetEnabled(limit.control, IsOverridden());
  }
  // A box that was loaded indeterminate leaves that state for good with its first click.
  dialog().SetStyle(layout_.override_box.control, ButtonStyle::kAutoCheckBox);
  page().SetModified(true);
  return 0;
}

HRESULT CPropPageExtQuota::Load(const BoundObjects& objects) {
  const Layout::Field& box = layout_.override_box;
  page().LoadCheckBox(objects, box.attribute.name, box.control);
  override_changed_ = false;
  for (std::size_t limit = 0; limit < kLimitCount; ++limit) {
    const Layout::Field& field = layout_.limits.at(limit);
    page().LoadNumber(objects, field.attribute.name, field.control);
    dialog().SetEnabled(field.control, IsOverridden());
    // Filling the field has been reported as an edit.
    limit_changed_.at(limit) = false;
  }
  return recipients_.Load(objects);
}

HRESULT CPropPageExtQuota::Collect(ChangeList& changes) {
  const bool is_multi_select = page().IsMultiSelect();
  for (std::size_t limit = 0; limit < kLimitCount; ++limit) {
    const Layout::Field& field = layout_.limits.at(limit);
    changes.push_back(MakeChange(field.attribute, dialog().Text(field.control),
                                 limit_changed_.at(limit), is_multi_select));
  }
  changes.push_back(MakeChange(layout_.override_box.attribute, IsOverridden() ? "1" : "0",
                               override_changed_, is_multi_select));
  override_changed_ = false;
  limit_changed_.fill(false);
  return recipients_.Collect(changes);
}

std::int32_t CPropPageExtQuota::OnLimitEdited(std::size_t limit) {
  limit_changed_.at(limit) = true;
  page().SetModified(true);
  return 0;
}

bool CPropPageExtQuota::IsOverridden() const {
  return dialog().Check(layout_.override_box.control) == CheckState::kChecked;
}

}  // namespace pelora
