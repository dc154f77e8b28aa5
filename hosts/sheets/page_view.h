// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace pelora::sheets {

/// What a face does for the machine of its sheet or wizard: it makes the pages' dialogs, keeps them
/// until the sheet closes, and shows. Places count from 0, the host's own pages among them.
class IPageView {
 public:
  /// The page at `place`, which is no page of the host's own, shows for the first time: makes its
  /// dialog and tells the page's controller that it stands. Asked once for each page.
  virtual void MakeDialog(std::size_t place) = 0;
  /// This page is the current one from now on, and the only one to be seen.
  virtual void ShowPage(std::size_t place) = 0;
  /// Buttons may have to be enabled or disabled: the machine says which are.
  virtual void UpdateButtons() = 0;

 protected:
  ~IPageView() = default;
};

}  // namespace pelora::sheets
