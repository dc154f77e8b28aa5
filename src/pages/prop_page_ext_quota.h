// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pages/edited_fields.h"
#include "pages/name_list.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// Whose limits a quota group edits.
enum class QuotaKind : std::uint8_t {
  /// The object's own.
  kOwn,
  /// The default that a company gives its users.
  kUserDefault,
};

/// A quota: whether it takes the place of a default, its three limits in megabytes, and who is
/// warned when it is exceeded.
///
/// Limits are written as typed: neither their form nor their order is checked, and they are kept
/// while the box that makes them count is not checked. A tab without a list of recipients leaves
/// them alone.
class CPropPageExtQuota final : public CPropPageExt {
 public:
  CPropPageExtQuota(CPropPage& page, const Platform& platform, QuotaKind kind);

  /// The box comes before the limits, which it enables.
  HRESULT Load(const BoundObjects& objects);
  /// The limits come before the box.
  HRESULT Collect(ChangeList& changes);
  [[nodiscard]] std::vector<Command> Commands();
  [[nodiscard]] std::vector<FieldRow> Rows();

 private:
  /// Controls and attributes of one kind of quota.
  struct Layout;
  static const Layout& LayoutOf(QuotaKind kind);

  CPropPageExtQuota(CPropPage& page, const Platform& platform, const Layout& layout);

  EditedFields override_box_;
  /// Warning level, soft limit, hard limit.
  EditedFields limits_;
  NameList recipients_;
};

}  // namespace pelora
