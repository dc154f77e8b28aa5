// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/session/writing_desk.h"

namespace pelora::console {

/// The windows around the writing of a sheet.
class QtWritingDesk final : public session::IWritingDesk {
 public:
  /// Whether even the change of a single object is to be looked at first.
  bool reviews_everything = false;

  [[nodiscard]] bool ReviewsEverything() const override { return reviews_everything; }
  [[nodiscard]] bool ShowReview(IDialog* owner, session::Review& review) override;
  [[nodiscard]] bool ShowConflicts(IDialog* owner,
                                   std::vector<session::ShownConflict>& conflicts) override;
  [[nodiscard]] bool ShowResults(IDialog* owner,
                                 std::span<const session::WrittenChange> results) override;
  void ShowFailure(IDialog* owner, const session::ShownFailure& failure) override;
};

}  // namespace pelora::console
