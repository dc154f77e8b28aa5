// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/control_window.h"

#include <algorithm>
#include <array>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

struct KindOfClass {
  const wchar_t* window_class;
  ControlKind kind;
};

constexpr auto kKinds = std::to_array<KindOfClass>({
    {L"Button", ControlKind::kButton},
    {L"Edit", ControlKind::kEdit},
    {L"Static", ControlKind::kStatic},
    {L"ListBox", ControlKind::kListBox},
    {L"ComboBox", ControlKind::kComboBox},
    {L"SysListView32", ControlKind::kListView},
});

}  // namespace

ControlWindow::ControlWindow(HWND dialog, ControlId id)
    : window_(dialog == nullptr ? nullptr : GetDlgItem(dialog, static_cast<int>(id))) {}

ControlKind ControlWindow::Kind() const {
  std::array<wchar_t, 32> name{};
  if (window_ == nullptr || GetClassNameW(window_, name.data(), name.size()) == 0) {
    return ControlKind::kOther;
  }
  const auto* const known = std::ranges::find_if(kKinds, [&](const KindOfClass& row) {
    return lstrcmpiW(row.window_class, name.data()) == 0;
  });
  return known == kKinds.end() ? ControlKind::kOther : known->kind;
}

ControlWindow ControlWindow::If(ControlKind kind) const {
  return Kind() == kind ? *this : ControlWindow();
}

DWORD ControlWindow::Style() const {
  if (window_ == nullptr) return 0;
  return static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
}

std::optional<LRESULT> ControlWindow::Send(UINT message, WPARAM wide, LPARAM narrow) const {
  if (window_ == nullptr) return std::nullopt;
  return SendMessageW(window_, message, wide, narrow);
}

std::optional<LRESULT> ControlWindow::SendText(UINT message, WPARAM wide,
                                               std::string_view text) const {
  return Send(message, wide, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
}

std::optional<RowIndex> ControlWindow::AskIndex(UINT message, WPARAM wide, LPARAM narrow) const {
  const std::optional<LRESULT> answer = Send(message, wide, narrow);
  if (!answer || *answer < 0) return std::nullopt;
  return static_cast<RowIndex>(*answer);
}

std::string ControlWindow::AskText(UINT length_message, UINT text_message, RowIndex row) const {
  const std::optional<RowIndex> length = AskIndex(length_message, row);
  if (!length) return {};
  std::wstring text(*length + 1, L'\0');
  const std::optional<RowIndex> copied =
      AskIndex(text_message, row, reinterpret_cast<LPARAM>(text.data()));
  text.resize(std::min(copied.value_or(0), *length));
  return ToNarrow(text);
}

}  // namespace pelora::windows
