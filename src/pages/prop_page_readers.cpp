// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstdint>
#include <utility>

#include "pages/prop_page.h"

namespace pelora {
namespace {

/// Part of every name that refers to a deleted object, in its escaped form.
constexpr std::string_view kDeletedMark = "\\0ADEL:";

bool RefersToDeletedObject(std::string_view value) {
  return value.find(kDeletedMark) != std::string_view::npos;
}

}  // namespace

/// What was typed into a control that showed nothing gives way, also to a value that is not set.
void CPropPage::EmptyIfLoadedAnew(ControlId edit) const {
  if (loads_anew_) Dialog().SetText(edit, "");
}

void CPropPage::EmptyIfLoadedAnew(MultiValueAttribute& values, IListBox& list) const {
  if (loads_anew_) values.Clear(list);
}

void CPropPage::LoadCheckBox(const BoundObjects& objects, std::string_view attribute,
                             ControlId box) const {
  const ValueSummary<bool> summary = SummarizeFlag(objects, attribute);
  if (!summary.IsUniform()) {
    Dialog().SetStyle(box, ButtonStyle::kAutoThreeState);
    Dialog().SetCheck(box, CheckState::kIndeterminate);
    return;
  }
  Dialog().SetStyle(box, ButtonStyle::kAutoCheckBox);
  Dialog().SetCheck(box, summary.value() ? CheckState::kChecked : CheckState::kUnchecked);
}

void CPropPage::LoadNumber(const BoundObjects& objects, std::string_view attribute,
                           ControlId edit) const {
  EmptyIfLoadedAnew(edit);
  const ValueSummary<std::int32_t> summary = SummarizeInteger(objects, attribute);
  if (!summary.IsUniform()) return;
  Dialog().SetText(edit, std::to_string(static_cast<std::uint32_t>(summary.value())));
}

void CPropPage::LoadText(const BoundObjects& objects, std::string_view attribute,
                         ControlId edit) const {
  EmptyIfLoadedAnew(edit);
  const ValueSummary<std::string> summary = SummarizeString(objects, attribute);
  if (summary.IsUniform()) Dialog().SetText(edit, summary.value());
}

void CPropPage::LoadSingleText(const BoundObjects& objects, std::string_view attribute,
                               ControlId edit) const {
  EmptyIfLoadedAnew(edit);
  if (IsMultiSelect()) {
    Dialog().SetText(edit, "");
    return;
  }
  if (objects.empty()) return;
  Variant value;
  const HRESULT status = objects.front()->Get(attribute, value);
  if (SUCCEEDED(status) && value.type() == VT_BSTR) Dialog().SetText(edit, value.string());
}

void CPropPage::LoadMultiValue(const BoundObjects& objects, std::string_view attribute,
                               const ValueSink& sink) const {
  if (IsMultiSelect() || objects.empty()) return;
  Variant stored;
  if (FAILED(objects.front()->Get(attribute, stored))) return;
  if (stored.type() == VT_BSTR && !RefersToDeletedObject(stored.string())) {
    sink({.text = stored.string()});
  }
  if (stored.type() != kVariantArray) return;
  for (const Variant& element : stored.array()) {
    if (element.type() != VT_BSTR || RefersToDeletedObject(element.string())) continue;
    if (sink({.text = element.string(), .is_shown_cut = true}) != 0) return;
  }
}

}  // namespace pelora
