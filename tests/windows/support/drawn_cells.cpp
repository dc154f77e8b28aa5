// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/drawn_cells.h"

#include <algorithm>

namespace pelora::windows::test {
namespace {

struct Looker {
  HWND view;
  std::size_t row;
  std::size_t column;
  std::optional<COLORREF> color;
};

LRESULT CALLBACK LookOn(HWND window, UINT message, WPARAM wide, LPARAM narrow, UINT_PTR /*id*/,
                        DWORD_PTR data) {
  const LRESULT result = DefSubclassProc(window, message, wide, narrow);
  if (message != WM_NOTIFY) return result;
  auto& looker = *reinterpret_cast<Looker*>(data);
  const auto& draw = *reinterpret_cast<const NMLVCUSTOMDRAW*>(narrow);
  const bool is_cell = draw.nmcd.hdr.hwndFrom == looker.view &&
                       draw.nmcd.hdr.code == static_cast<UINT>(NM_CUSTOMDRAW) &&
                       draw.nmcd.dwDrawStage == (CDDS_ITEMPREPAINT | CDDS_SUBITEM);
  if (is_cell && draw.nmcd.dwItemSpec == looker.row &&
      static_cast<std::size_t>(draw.iSubItem) == looker.column) {
    looker.color = draw.clrText;
  }
  return result;
}

}  // namespace

std::optional<COLORREF> DrawnTextColor(HWND dialog, HWND view, std::size_t row,
                                       std::size_t column) {
  constexpr UINT_PTR kLooker = 1;
  Looker looker = {view, row, column, std::nullopt};
  SetWindowSubclass(dialog, &LookOn, kLooker, reinterpret_cast<DWORD_PTR>(&looker));
  RedrawWindow(view, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  RemoveWindowSubclass(dialog, &LookOn, kLooker);
  return looker.color;
}

int DrawnTextBrightness(HWND view, std::size_t row, std::size_t column) {
  constexpr int kWhite = 255;
  RECT cell = {};
  cell.left = LVIR_LABEL;
  cell.top = static_cast<LONG>(column);
  SendMessageW(view, LVM_GETSUBITEMRECT, row, reinterpret_cast<LPARAM>(&cell));
  RedrawWindow(view, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  HDC drawn = GetDC(view);
  int darkest = kWhite;
  for (LONG y = cell.top + 1; y < cell.bottom - 1; ++y) {
    for (LONG x = cell.left + 1; x < cell.right - 1; ++x) {
      darkest = std::min<int>(darkest, GetGValue(GetPixel(drawn, x, y)));
    }
  }
  ReleaseDC(view, drawn);
  return darkest;
}

}  // namespace pelora::windows::test
