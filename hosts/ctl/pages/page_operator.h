// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "hosts/ctl/fields/wish.h"
#include "hosts/ctl/pages/page_platform.h"
#include "hosts/headless/headless_user.h"

namespace pelora::ctl {

/// Does on a page in memory what a person would do to fulfil a wish: types, clicks, chooses,
/// selects. What the page would not let a person do is refused.
class PageOperator {
 public:
  /// The person stands before the page of the wishes; `fields` are those that may be on it. All
  /// outlive the operator.
  PageOperator(HeadlessUser user, PagePlatform& platform, std::span<const Field> fields)
      : user_(user), platform_(platform), fields_(fields) {}

  /// Whether the page would let a person begin with it.
  [[nodiscard]] bool IsEnabled(const Wish& wish);
  /// Throws `Refusal`, which names the field; what was done on the page until then stays done.
  void Fulfil(const Wish& wish);

 private:
  void SetFlag(const Wish& wish);
  void Type(const Wish& wish);
  void ChooseObject(const Wish& wish);
  void SelectChoice(const Wish& wish);
  void ChangeList(const Wish& wish);
  void TypeIntoList(const Wish& wish, const ListStep& step);
  void ClickSelected(const Wish& wish, const ListStep& step, ControlId button);
  void ChangeInDialog(const Wish& wish);
  /// Clicks a button that opens a dialog, in which a script is played. One that does not open plays
  /// no other's: the script lives by what its maker holds.
  UserAnswer ClickAndPlay(ControlId button, HeadlessModalDialogs::Script script);
  /// Selects the row of a field that is one of several in a list view.
  void SelectEntry(const Wish& wish);
  /// Throws unless the answer is that it was done.
  void Require(const Wish& wish, UserAnswer answer);

  HeadlessUser user_;
  PagePlatform& platform_;
  std::span<const Field> fields_;
};

}  // namespace pelora::ctl
