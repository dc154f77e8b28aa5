// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_quota.h"

#include <string>
#include <utility>
#include <vector>

#include "directory/select_ad_object.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::size_t kWarning = 0;
constexpr std::size_t kSoftLimit = 1;
constexpr std::size_t kHardLimit = 2;

}  // namespace

struct CPropPageExtQuota::Layout {
  struct Field {
    ControlId control;
    const Attribute& attribute;
  };
  Field override_box;
  /// Warning level, soft limit, hard limit.
  std::array<Field, kLimitCount> limits;
  Field recipients;
  ControlId delete_recipient;
};

const CPropPageExtQuota::Layout& CPropPageExtQuota::LayoutOf(QuotaKind kind) {
  static constexpr std::array<Layout, 2> kLayouts = {{
      {{IDC_QUOTA_OVERRIDE, CatalogueEntry("peloraQuotaOverride")},
       {{{IDC_QUOTA_WARN, CatalogueEntry("peloraQuotaWarn")},
         {IDC_QUOTA_SOFT, CatalogueEntry("peloraQuotaSoft")},
         {IDC_QUOTA_HARD, CatalogueEntry("peloraQuotaHard")}}},
       {IDC_QUOTA_RECIPIENTS, CatalogueEntry("peloraQuotaCompanyWarningRecipients")},
       IDC_QUOTA_RECIPIENTS_DELETE},
      {{IDC_USER_QUOTA_OVERRIDE, CatalogueEntry("peloraUserDefaultQuotaOverride")},
       {{{IDC_USER_QUOTA_WARN, CatalogueEntry("peloraUserDefaultQuotaWarn")},
         {IDC_USER_QUOTA_SOFT, CatalogueEntry("peloraUserDefaultQuotaSoft")},
         {IDC_USER_QUOTA_HARD, CatalogueEntry("peloraUserDefaultQuotaHard")}}},
       {IDC_USER_QUOTA_RECIPIENTS, CatalogueEntry("peloraQuotaUserWarningRecipients")},
       IDC_USER_QUOTA_RECIPIENTS_DELETE},
  }};
  return kLayouts.at(static_cast<std::size_t>(kind));
}

CPropPageExtQuota::CPropPageExtQuota(CPropPage& page, const Platform& platform, QuotaKind kind)
    : CPropPageExt(page), platform_(platform), layout_(LayoutOf(kind)), recipients_(platform.text) {
  page.RegisterLoad(Handler(this, &CPropPageExtQuota::Load));
  page.RegisterCollect(Handler(this, &CPropPageExtQuota::Collect));
  page.RegisterValidate([](std::string* /*message*/) { return S_OK; });
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

std::int32_t CPropPageExtQuota::OnWarningEdited() { return OnLimitEdited(kWarning); }

std::int32_t CPropPageExtQuota::OnSoftLimitEdited() { return OnLimitEdited(kSoftLimit); }

std::int32_t CPropPageExtQuota::OnHardLimitEdited() { return OnLimitEdited(kHardLimit); }

std::int32_t CPropPageExtQuota::OnAddRecipients() {
  const SelectADObject chooser(platform_);
  std::vector<std::string> names;
  if (chooser.SelectUsers(&dialog(), names, SelectionMode::kMultiple) != S_OK) return 0;
  if (names.empty()) return 0;
  for (std::string& name : names) recipients_.Add(RecipientList(), std::move(name), true, false);
  page().SetModified(true);
  return 0;
}

std::int32_t CPropPageExtQuota::OnDeleteRecipient() {
  page().SetModified(true);
  if (RecipientList().Count() == 1) dialog().SetEnabled(layout_.delete_recipient, false);
  recipients_.Delete(RecipientList());
  return 0;
}

std::int32_t CPropPageExtQuota::OnRecipientSelected() {
  dialog().SetEnabled(layout_.delete_recipient, RecipientList().Selection().has_value());
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
  page().LoadMultiValue(objects, layout_.recipients.attribute.name, [this](std::string value) {
    return recipients_.Load(RecipientList(), std::move(value));
  });
  return S_OK;
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
  Variant names;
  if (recipients_.BuildValue(&names, nullptr)) {
    changes.push_back(
        MakeListChange(layout_.recipients.attribute, std::move(names), is_multi_select));
  }
  override_changed_ = false;
  limit_changed_.fill(false);
  return S_OK;
}

std::int32_t CPropPageExtQuota::OnLimitEdited(std::size_t limit) {
  limit_changed_.at(limit) = true;
  page().SetModified(true);
  return 0;
}

bool CPropPageExtQuota::IsOverridden() const {
  return dialog().Check(layout_.override_box.control) == CheckState::kChecked;
}

IListBox& CPropPageExtQuota::RecipientList() const {
  return dialog().ListBox(layout_.recipients.control);
}

}  // namespace pelora
