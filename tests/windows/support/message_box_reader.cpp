// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/message_box_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "hosts/windows/dialogs/control_window.h"
#include "tests/windows/support/window_text.h"

namespace pelora::windows::test {
namespace {

MessageIcon IconOf(HICON icon) {
  if (icon == LoadIconW(nullptr, IDI_ERROR)) return MessageIcon::kError;
  if (icon == LoadIconW(nullptr, IDI_WARNING)) return MessageIcon::kWarning;
  return MessageIcon::kNone;
}

BOOL CALLBACK ReadChild(HWND window, LPARAM target) {
  auto& box = *reinterpret_cast<ShownBox*>(target);
  const ControlWindow child(window);
  const DWORD type = child.Style() & SS_TYPEMASK;
  if (child.Kind() == ControlKind::kStatic && type == SS_ICON) {
    box.icon = IconOf(reinterpret_cast<HICON>(SendMessageW(window, STM_GETICON, 0, 0)));
  } else if (child.Kind() == ControlKind::kStatic) {
    box.text += TextOfWindow(window);
  } else if (child.Kind() == ControlKind::kButton && IsWindowVisible(window) != FALSE) {
    std::string caption = TextOfWindow(window);
    std::erase(caption, '&');
    box.buttons.push_back(std::move(caption));
  }
  return TRUE;
}

BOOL CALLBACK LookForOthers(HWND window, LPARAM found) {
  const ControlKind kind = ControlWindow(window).Kind();
  if (kind != ControlKind::kStatic && kind != ControlKind::kButton) {
    *reinterpret_cast<bool*>(found) = true;
  }
  return TRUE;
}

bool IsMessageBox(HWND dialog) {
  bool has_others = false;
  EnumChildWindows(dialog, &LookForOthers, reinterpret_cast<LPARAM>(&has_others));
  return !has_others;
}

}  // namespace

void PrintTo(const ShownBox& box, std::ostream* out) {
  *out << '"' << box.caption << "\": \"" << box.text << "\", icon "
       << static_cast<unsigned int>(box.icon) << ", buttons";
  for (const std::string& button : box.buttons) *out << ' ' << button;
  *out << ", owned by \"" << box.owner << '"';
}

MessageBoxReader::MessageBoxReader() : watcher_([this](HWND dialog) { DealWith(dialog); }) {}

void MessageBoxReader::DealWith(HWND dialog) {
  if (IsMessageBox(dialog)) {
    Read(dialog);
  } else {
    Play(dialog);
  }
}

void MessageBoxReader::Play(HWND dialog) {
  if (scripts_.empty()) {
    ADD_FAILURE() << "nobody plays the dialog \"" << TextOfWindow(dialog) << '"';
    SendMessageW(dialog, WM_CLOSE, 0, 0);
    return;
  }
  const Script script = std::move(scripts_.front());
  scripts_.pop_front();
  script(dialog);
}

void MessageBoxReader::Read(HWND window) {
  ShownBox box;
  box.caption = TextOfWindow(window);
  if (const HWND owner = GetWindow(window, GW_OWNER)) box.owner = TextOfWindow(owner);
  EnumChildWindows(window, &ReadChild, reinterpret_cast<LPARAM>(&box));
  boxes_.push_back(std::move(box));
  if (const auto action = std::exchange(before_next_, nullptr)) action();
  int button = GetDlgItem(window, IDYES) != nullptr ? IDYES : IDOK;
  if (!answers_.empty()) {
    button = answers_.front();
    answers_.pop_front();
  }
  SendMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
}

}  // namespace pelora::windows::test
