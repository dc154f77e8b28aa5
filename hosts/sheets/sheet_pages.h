// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/resources/resource_file.h"
#include "hosts/sheets/page_view.h"
#include "platform/shell_extension.h"

namespace pelora::sheets {

/// What a page answers that may be left, or cancelled, or that shows.
inline constexpr std::int32_t kPageMayGo = 0;
/// A page that is not to be shown now, or not to be left that way.
inline constexpr std::int32_t kPageDeclines = -1;
/// A page that could not apply and is to be shown (beside `kPageInvalidStay`).
inline constexpr std::int32_t kPageInvalidShow = 1;

/// Which way a sheet goes on when a page is not to be shown.
enum class Direction : std::int8_t { kBack = -1, kForward = 1 };

/// Places for pages that the host draws itself; they are told nothing.
struct OwnPlaces {
  std::size_t in_front = 0;
  std::size_t behind = 0;
};

/// The pages of one sheet or wizard, in their order, and which of them shows.
///
/// Pages are destroyed by `Clear` or with the object; the view's dialogs are gone by then.
class SheetPages {
 public:
  /// `templates` and `view` outlive the object.
  SheetPages(const resources::ResourceFile& templates, IPageView& view, OwnPlaces own)
      : templates_(templates), view_(view), own_(own) {}

  /// Takes a page. False when its template cannot be read; the page has been destroyed then.
  [[nodiscard]] bool Add(std::unique_ptr<PropSheetPage> page);
  /// Destroys the pages.
  void Clear() { pages_.clear(); }

  /// Places of all kinds.
  [[nodiscard]] std::size_t Count() const;
  /// Whether a place is a page's, and none of the host's own.
  [[nodiscard]] bool IsPage(std::size_t place) const { return At(place) != nullptr; }
  [[nodiscard]] std::size_t Current() const { return current_; }
  /// The page's own title, or its template's caption; empty for a place of the host's own.
  [[nodiscard]] std::string Title(std::size_t place) const;
  // Only for places of pages.
  [[nodiscard]] const resources::DialogTemplate& Template(std::size_t place) const;
  [[nodiscard]] IDialogController& Controller(std::size_t place) const;

  /// Whether the page has been shown; false for places of the host's own.
  [[nodiscard]] bool WasShown(std::size_t place) const;
  /// Tells the page and gives its answer; a place of the host's own lets everything pass.
  [[nodiscard]] std::int32_t Tell(std::size_t place, PageNotification notification) const;
  /// Tells every page that was shown; the answers do not matter.
  void TellShown(PageNotification notification) const;
  /// The place of the page that is made from this template.
  [[nodiscard]] std::optional<std::size_t> Find(DialogId dialog) const;

  /// Brings up a page: it becomes the current one, gets its dialog when it has none, and hears that
  /// it is about to show. One that declines is passed over, in this direction as long as there are
  /// places; one that names another page's template gives way to that. The last one asked shows.
  void Activate(std::size_t place, Direction direction);
  /// Makes a page that was shown before the current one as it is: it is told nothing.
  void Show(std::size_t place);

  /// A page has become the current one and is about to be told.
  std::function<void()> on_current;

 private:
  struct Page {
    std::unique_ptr<PropSheetPage> page;
    const resources::DialogTemplate* described;
    bool was_shown = false;
  };

  [[nodiscard]] const Page* At(std::size_t place) const;
  /// Makes the page the current one; its answer.
  [[nodiscard]] std::int32_t Enter(std::size_t place);
  /// Where to go on after an answer; none: nowhere.
  [[nodiscard]] std::optional<std::size_t> After(std::int32_t answer, Direction direction) const;

  const resources::ResourceFile& templates_;
  IPageView& view_;
  OwnPlaces own_;
  std::vector<Page> pages_;
  std::size_t current_ = 0;
};

}  // namespace pelora::sheets
