// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/dialog_host.h"

#include <algorithm>
#include <array>

namespace pelora::windows {
namespace {

constexpr auto kPageNotifications = std::to_array<PageNotification>({
    PageNotification::kSetActive,
    PageNotification::kKillActive,
    PageNotification::kApply,
    PageNotification::kReset,
    PageNotification::kWizardBack,
    PageNotification::kWizardNext,
    PageNotification::kWizardFinish,
    PageNotification::kQueryCancel,
});

constexpr auto kControlNotifications = std::to_array<ControlNotification>({
    ControlNotification::kClicked,
    ControlNotification::kSelectionChange,
    ControlNotification::kEditChange,
});

constexpr COLORREF kMutedText = RGB(192, 192, 192);

template <class Codes>
bool Contains(const Codes& codes, typename Codes::value_type code) {
  return std::ranges::find(codes, code) != codes.end();
}

}  // namespace

INT_PTR DialogHost::OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow) noexcept {
  try {
    return Dispatch(window, message, wide, narrow);
  } catch (...) {
    // Controllers report what fails; this is what is left when even that did.
    return FALSE;
  }
}

INT_PTR DialogHost::Dispatch(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  if (message == WM_INITDIALOG) {
    dialog_.emplace(window, role_);
    return controller_.OnInitDialog(*dialog_);
  }
  if (!dialog_ || dialog_->window() == nullptr) return FALSE;
  switch (message) {
    case WM_COMMAND: {
      const auto notification = static_cast<ControlNotification>(HIWORD(wide));
      if (!Contains(kControlNotifications, notification)) return FALSE;
      return Answer(controller_.OnCommand(LOWORD(wide), notification));
    }
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<NMHDR*>(narrow));
    case WM_DESTROY:
      // First of all: the window's number may soon be another's.
      dialog_->Forget();
      controller_.OnDestroy();
      return FALSE;
    default:
      return FALSE;
  }
}

INT_PTR DialogHost::OnNotify(NMHDR& notification) {
  const HWND window = dialog_->window();
  const bool is_from_page =
      notification.hwndFrom == window || notification.hwndFrom == GetParent(window);
  if (is_from_page) return OnPageNotification(notification);
  const bool is_list_view = ControlWindow(notification.hwndFrom).Kind() == ControlKind::kListView;
  return is_list_view ? OnListViewNotification(notification) : FALSE;
}

INT_PTR DialogHost::OnPageNotification(const NMHDR& notification) {
  const auto code = static_cast<PageNotification>(notification.code);
  if (role_ != DialogRole::kPage || !Contains(kPageNotifications, code)) return FALSE;
  std::int32_t answer = code == PageNotification::kApply ? kPageInvalidStay : kPageApplied;
  try {
    answer = controller_.OnPageNotification(code);
  } catch (...) {
    // What was not applied is not given up: the answer from above stands.
  }
  return Answer(answer);
}

INT_PTR DialogHost::OnListViewNotification(NMHDR& notification) {
  const auto id = static_cast<ControlId>(notification.idFrom);
  switch (notification.code) {
    case LVN_ITEMCHANGED:
      OnItemChanged(reinterpret_cast<const NMLISTVIEW&>(notification));
      return Answer(0);
    case static_cast<UINT>(NM_DBLCLK): {
      const int row = reinterpret_cast<const NMITEMACTIVATE&>(notification).iItem;
      if (row >= 0) controller_.OnListViewDoubleClick(id, static_cast<RowIndex>(row));
      return Answer(0);
    }
    case static_cast<UINT>(NM_CUSTOMDRAW):
      return Answer(OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(notification)));
    default:
      return FALSE;
  }
}

void DialogHost::OnItemChanged(const NMLISTVIEW& change) {
  const auto id = static_cast<ControlId>(change.hdr.idFrom);
  const auto report = [&](RowIndex row) {
    controller_.OnListViewItemChanged(id, {.row = row,
                                           .state_changed = (change.uChanged & LVIF_STATE) != 0,
                                           .was_selected = (change.uOldState & LVIS_SELECTED) != 0,
                                           .is_selected = (change.uNewState & LVIS_SELECTED) != 0});
  };
  if (change.iItem >= 0) return report(static_cast<RowIndex>(change.iItem));
  // Row -1 stands for all of them.
  const RowIndex count = ControlWindow(change.hdr.hwndFrom).AskIndex(LVM_GETITEMCOUNT).value_or(0);
  for (RowIndex row = 0; row < count; ++row) report(row);
}

LRESULT DialogHost::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
      const TextRole role = controller_.ListViewTextRole(
          static_cast<ControlId>(draw.nmcd.hdr.idFrom), draw.nmcd.dwItemSpec,
          static_cast<std::size_t>(draw.iSubItem));
      draw.clrText = role == TextRole::kMuted ? kMutedText : GetSysColor(COLOR_WINDOWTEXT);
      return CDRF_NEWFONT;
    }
    default:
      return CDRF_DODEFAULT;
  }
}

INT_PTR DialogHost::Answer(LRESULT result) const {
  SetWindowLongPtrW(dialog_->window(), DWLP_MSGRESULT, result);
  return TRUE;
}

}  // namespace pelora::windows
