// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QScrollArea>

namespace pelora::console {

/// What stands in a tab of a sheet: room for a page, which grows with it. Where there is less room
/// than the page needs it is scrolled, and whatever has the keyboard is brought into sight.
class PageView final : public QScrollArea {
 public:
  explicit PageView(QWidget* parent = nullptr);
  ~PageView() override;

  /// The parent of the page's widget. Before it holds the page it takes the keyboard in its place,
  /// where that goes from tab to tab.
  [[nodiscard]] QWidget& holder() const { return *widget(); }
  /// Takes the page that was made in the holder.
  void Hold(QWidget& page);
  /// How much more room the page needs to be seen whole.
  [[nodiscard]] QSize Lacking() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
};

}  // namespace pelora::console
