// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/judge_page.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "directory/attribute_catalogue.h"
#include "hosts/session/typed/field_roles.h"
#include "hosts/session/typed/quota_limits.h"
#include "hosts/session/typed/typed_address.h"
#include "hosts/session/typed/typed_day.h"
#include "hosts/session/typed/typed_number.h"
#include "hosts/session/typed/typed_query.h"

namespace pelora::session {
namespace {

using Judge = Judgement (*)(std::string_view text);

struct AttributeJudge {
  std::string_view attribute;
  Judge judge;
};

/// Attributes whose texts follow rules of their own; others are judged by the kind of their field.
constexpr std::array kJudges = {
    AttributeJudge{CatalogueEntry("peloraQuotaWarn").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraQuotaSoft").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraQuotaHard").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraUserDefaultQuotaWarn").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraUserDefaultQuotaSoft").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraUserDefaultQuotaHard").name, &JudgeMegabytes},
    AttributeJudge{CatalogueEntry("peloraHttpPort").name, &JudgePort},
    AttributeJudge{CatalogueEntry("peloraSslPort").name, &JudgePort},
    AttributeJudge{CatalogueEntry("peloraFilter").name, &JudgeQuery},
    AttributeJudge{"accountExpires", &JudgeLastDay},
};

/// Limits as a person names them, from the lowest to the highest.
constexpr std::array<std::string_view, 3> kLimitWords = {"warning level", "soft limit",
                                                         "hard limit"};

Judge JudgeOf(const FieldRow& row) {
  const auto* const found =
      std::ranges::find(kJudges, row.attributes.front(), &AttributeJudge::attribute);
  if (found != kJudges.end()) return found->judge;
  if (row.kind == FieldKind::kText && HoldsAddresses(row)) return &JudgeAddress;
  return row.kind == FieldKind::kNumber ? &JudgeNumber : nullptr;
}

bool IsTyped(const FieldRow& row) {
  return (row.kind == FieldKind::kNumber || row.kind == FieldKind::kText) && !row.is_read_only &&
         row.entry.empty();
}

bool CanBeUsed(const PageFields& fields, const FieldRow& row) {
  return fields.dialog->IsShown(row.control) && fields.dialog->IsEnabled(row.control);
}

Judgement JudgeTyped(const PageFields& fields, std::size_t field) {
  const FieldRow& row = fields.touched.Row(field);
  const Judge judge = IsTyped(row) && CanBeUsed(fields, row) ? JudgeOf(row) : nullptr;
  if (judge == nullptr) return {};
  const std::string text = fields.dialog->Text(row.control);
  // Pages show numbers that are not set as 0.
  if (text == "0" && !fields.touched.IsChanged(field)) return {};
  return judge(text);
}

/// A field of several objects that is emptied takes their values from all of them: that is asked
/// for by a command of its own.
Judgement JudgeEmptied(const PageFields& fields, std::size_t field) {
  const FieldRow& row = fields.touched.Row(field);
  const std::size_t count = fields.selection.size();
  if (count < 2 || !IsTyped(row) || !CanBeUsed(fields, row)) return {};
  if (!fields.touched.IsChanged(field) || fields.touched.IsRemoved(field)) return {};
  if (!fields.dialog->Text(row.control).empty()) return {};
  return {.verdict = Verdict::kWrong,
          .sentence = "This is empty. Remove the value from " + std::to_string(count) +
                      " objects, or go back to what was read?"};
}

/// The default one of a list of texts cannot be taken away by its page, only replaced.
Judgement JudgeDefaultEntry(const PageFields& fields, std::size_t field) {
  const FieldRow& row = fields.touched.Row(field);
  if (row.kind != FieldKind::kDefaultEntry || fields.selection.size() != 1) return {};
  if (!CanBeUsed(fields, row) || fields.dialog->ListBox(row.control).Count() != 0) return {};
  if (fields.seen(fields.selection.front(), row.attributes.front()).empty()) return {};
  return {.verdict = Verdict::kWrong,
          .sentence = "The last address cannot be removed, only replaced: add another one."};
}

std::optional<std::size_t> FindField(const PageFields& fields, std::string_view attribute) {
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    if (fields.touched.Row(field).attributes.front() == attribute) return field;
  }
  return std::nullopt;
}

/// One limit of one box on a page: where it stands, and what it is for each object.
struct Limit {
  std::optional<std::size_t> field;
  /// What the field shows; none where it shows nothing that can be compared.
  std::optional<std::int64_t> shown;

  /// Of the object of a place in the selection; 0: no limit.
  [[nodiscard]] std::int64_t Of(const PageFields& fields, std::size_t object) const {
    if (shown) return *shown;
    const bool is_gathered =
        *field < fields.gathered.size() && object < fields.gathered[*field].numbers.size();
    return is_gathered ? fields.gathered[*field].numbers[object] : 0;
  }
};

Limit LimitOf(const PageFields& fields, std::string_view attribute) {
  Limit limit{.field = FindField(fields, attribute), .shown = {}};
  if (!limit.field) return limit;
  const std::string text = fields.dialog->Text(fields.touched.Row(*limit.field).control);
  const bool is_of_each = text.empty() && !fields.touched.IsChanged(*limit.field);
  if (!is_of_each) limit.shown = text.empty() ? 0 : MegabytesOf(text).value_or(0);
  return limit;
}

bool IsOutOfOrder(std::int64_t lower, std::int64_t higher) {
  return lower > 0 && higher > 0 && lower > higher;
}

/// How many of the objects have two limits, both of them on the page, that are out of order.
std::size_t CountOutOfOrder(const PageFields& fields, const Limit& lower, const Limit& higher) {
  std::size_t count = 0;
  for (std::size_t object = 0; object < fields.selection.size(); ++object) {
    if (IsOutOfOrder(lower.Of(fields, object), higher.Of(fields, object))) ++count;
  }
  return count;
}

bool IsChanged(const PageFields& fields, const std::optional<std::size_t>& field) {
  return field && fields.touched.IsChanged(*field);
}

void JudgeQuota(const PageFields& fields, const QuotaLimits& quota,
                std::vector<FieldJudgement>& judgements) {
  const std::optional<std::size_t> box = FindField(fields, quota.override_box);
  if (!box) return;
  const FieldRow& box_row = fields.touched.Row(*box);
  if (fields.dialog->Check(box_row.control) != CheckState::kChecked) return;
  std::array<Limit, 3> limits;
  for (std::size_t at = 0; at < limits.size(); ++at) {
    limits[at] = LimitOf(fields, quota.limits[at].attribute);
  }
  constexpr std::array<std::pair<std::size_t, std::size_t>, 3> kPairs = {{{0, 1}, {1, 2}, {0, 2}}};
  for (const auto& [lower, higher] : kPairs) {
    const Limit& low = limits[lower];
    const Limit& high = limits[higher];
    if (!low.field || !high.field) continue;
    const std::size_t count = CountOutOfOrder(fields, low, high);
    if (count == 0) continue;
    const bool is_for_all = low.shown && high.shown;
    const bool is_lower_meant = IsChanged(fields, low.field) && !IsChanged(fields, high.field);
    const bool is_own_doing =
        IsChanged(fields, low.field) || IsChanged(fields, high.field) || IsChanged(fields, box);
    const std::size_t other = is_lower_meant ? higher : lower;
    std::string sentence = is_lower_meant ? "This is above the " : "This is below the ";
    sentence += kLimitWords[other];
    if (!is_for_all && fields.selection.size() > 1) {
      sentence += " of " + std::to_string(count) + " of the " +
                  std::to_string(fields.selection.size()) + " objects";
    }
    const bool is_wrong = is_own_doing && (is_for_all || fields.selection.size() == 1);
    judgements.push_back({.field = is_lower_meant ? *low.field : *high.field,
                          .judgement = {.verdict = is_wrong ? Verdict::kWrong : Verdict::kOdd,
                                        .sentence = sentence + "."}});
    return;
  }
}

}  // namespace

std::vector<FieldJudgement> JudgePage(const PageFields& fields) {
  std::vector<FieldJudgement> judgements;
  if (!fields.IsShown()) return judgements;
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    for (Judgement judgement : {JudgeTyped(fields, field), JudgeDefaultEntry(fields, field),
                                JudgeEmptied(fields, field)}) {
      if (judgement.sentence.empty()) continue;
      const bool is_stored = !fields.touched.IsChanged(field);
      if (is_stored && judgement.verdict == Verdict::kWrong) judgement.verdict = Verdict::kOdd;
      judgements.push_back({.field = field, .judgement = std::move(judgement)});
    }
  }
  for (const QuotaLimits& quota : kQuotaLimits) JudgeQuota(fields, quota, judgements);
  return judgements;
}

void PutWhatIsMeant(const PageFields& fields) {
  if (!fields.IsShown()) return;
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    if (!fields.touched.IsChanged(field)) continue;
    const std::string meant = JudgeTyped(fields, field).meant;
    if (!meant.empty()) fields.dialog->SetText(fields.touched.Row(field).control, meant);
  }
}

}  // namespace pelora::session
