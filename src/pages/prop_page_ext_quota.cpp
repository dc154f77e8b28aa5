// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_quota.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array<ControlId, 3> kOwnLimits = {IDC_QUOTA_WARN, IDC_QUOTA_SOFT, IDC_QUOTA_HARD};
constexpr std::array<ControlId, 3> kUserLimits = {IDC_USER_QUOTA_WARN, IDC_USER_QUOTA_SOFT,
                                                  IDC_USER_QUOTA_HARD};

template <class T>
void Append(std::vector<T>& list, std::vector<T> more) {
  std::ranges::move(more, std::back_inserter(list));
}

}  // namespace

struct CPropPageExtQuota::Layout {
  std::array<EditedFields::Field, 1> override_box;
  std::array<EditedFields::Field, 3> limits;
  NameList::Layout recipients;
};

const CPropPageExtQuota::Layout& CPropPageExtQuota::LayoutOf(QuotaKind kind) {
  static constexpr std::array<Layout, 2> kLayouts = {{
      {{{{.control = IDC_QUOTA_OVERRIDE,
          .attribute = CatalogueEntry("peloraQuotaOverride"),
          .third_state = EditedFields::ThirdState::kLeaves,
          .enables = kOwnLimits}}},
       {{{.control = IDC_QUOTA_WARN, .attribute = CatalogueEntry("peloraQuotaWarn")},
         {.control = IDC_QUOTA_SOFT, .attribute = CatalogueEntry("peloraQuotaSoft")},
         {.control = IDC_QUOTA_HARD, .attribute = CatalogueEntry("peloraQuotaHard")}}},
       {IDC_QUOTA_RECIPIENTS, IDC_QUOTA_RECIPIENTS_ADD, IDC_QUOTA_RECIPIENTS_DELETE,
        IDC_QUOTA_RECIPIENTS_GROUP, CatalogueEntry("peloraQuotaCompanyWarningRecipients"),
        &SelectADObject::SelectUsers}},
      {{{{.control = IDC_USER_QUOTA_OVERRIDE,
          .attribute = CatalogueEntry("peloraUserDefaultQuotaOverride"),
          .third_state = EditedFields::ThirdState::kLeaves,
          .enables = kUserLimits}}},
       {{{.control = IDC_USER_QUOTA_WARN,
          .attribute = CatalogueEntry("peloraUserDefaultQuotaWarn")},
         {.control = IDC_USER_QUOTA_SOFT,
          .attribute = CatalogueEntry("peloraUserDefaultQuotaSoft")},
         {.control = IDC_USER_QUOTA_HARD,
          .attribute = CatalogueEntry("peloraUserDefaultQuotaHard")}}},
       {IDC_USER_QUOTA_RECIPIENTS, IDC_USER_QUOTA_RECIPIENTS_ADD, IDC_USER_QUOTA_RECIPIENTS_DELETE,
        IDC_USER_QUOTA_RECIPIENTS_GROUP, CatalogueEntry("peloraQuotaUserWarningRecipients"),
        &SelectADObject::SelectUsers}},
  }};
  return kLayouts.at(static_cast<std::size_t>(kind));
}

CPropPageExtQuota::CPropPageExtQuota(CPropPage& page, const Platform& platform, QuotaKind kind)
    : CPropPageExtQuota(page, platform, LayoutOf(kind)) {}

CPropPageExtQuota::CPropPageExtQuota(CPropPage& page, const Platform& platform,
                                     const Layout& layout)
    : CPropPageExt(page),
      override_box_(page, layout.override_box),
      limits_(page, layout.limits),
      recipients_(page, platform, layout.recipients) {}

HRESULT CPropPageExtQuota::Load(const BoundObjects& objects) {
  override_box_.Load(objects);
  limits_.Load(objects);
  return recipients_.Load(objects);
}

HRESULT CPropPageExtQuota::Collect(ChangeList& changes) {
  limits_.Collect(changes);
  override_box_.Collect(changes);
  return recipients_.Collect(changes);
}

std::vector<Command> CPropPageExtQuota::Commands() {
  std::vector<Command> commands = override_box_.Commands();
  Append(commands, limits_.Commands());
  Append(commands, recipients_.Commands());
  return commands;
}

std::vector<FieldRow> CPropPageExtQuota::Rows() {
  std::vector<FieldRow> rows = override_box_.Rows();
  Append(rows, limits_.Rows());
  Append(rows, recipients_.Rows());
  return rows;
}

}  // namespace pelora
