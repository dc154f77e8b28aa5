// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

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

  /// A click on the box and edits of the limits.
  [[nodiscard]] std::vector<Command> LimitCommands();
  /// The buttons and the selection of the list of recipients.
  [[nodiscard]] std::vector<Command> RecipientCommands() { return recipients_.Commands(); }

 private:
  static constexpr std::size_t kLimitCount = 3;
  /// Controls and attributes of one kind of quota.
  struct Layout;
  static const Layout& LayoutOf(QuotaKind kind);

  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);

  std::int32_t OnOverrideClicked();
  std::int32_t OnLimitEdited(std::size_t limit);
  [[nodiscard]] bool IsOverridden() const;

  const Layout& layout_;
  /// Clicked or edited since the last load or collect.
  bool override_changed_ = false;
  std::array<bool, kLimitCount> limit_changed_{};
  NameList recipients_;
};

}  // namespace pelora
