// SPDX-License-Identifier: Apache-2.0
// The system's dialogs, held to the contract.
#include <deque>
#include <memory>
#include <utility>

#include "hosts/windows/dialogs/dialog_host.h"
#include "hosts/windows/dialogs/win32_modal_dialogs.h"
#include "tests/contract/dialog_contract.h"
#include "tests/windows/support/modal_watcher.h"
#include "tests/windows/support/window_player.h"

namespace pelora::contract {
namespace {

using windows::DialogHost;
using windows::DialogRole;
using windows::Win32ModalDialogs;
using windows::test::ModalWatcher;
using windows::test::WindowPlayer;

INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, narrow);
  auto* const host = reinterpret_cast<DialogHost*>(GetWindowLongPtrW(window, DWLP_USER));
  return host == nullptr ? FALSE : host->OnMessage(window, message, wide, narrow);
}

/// Room for a page on a screen of any usual number of dots.
constexpr int kFrameWidth = 900;
constexpr int kFrameHeight = 800;

/// A page in a frame that is no property sheet.
class Win32OpenDialog final : public OpenDialog {
 public:
  Win32OpenDialog(DialogId dialog, IDialogController& controller)
      : host_(controller, DialogRole::kPage),
        frame_(CreateWindowExW(0, L"Static", L"Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                               kFrameWidth, kFrameHeight, nullptr, nullptr, nullptr, nullptr)),
        page_(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dialog), frame_,
                                 &PageProcedure, reinterpret_cast<LPARAM>(&host_))),
        player_(page_) {
    if (page_ == nullptr) return;
    EnableWindow(page_, TRUE);
    ShowWindow(page_, SW_SHOW);
  }
  ~Win32OpenDialog() override { DestroyWindow(frame_); }

  [[nodiscard]] bool IsMade() const { return page_ != nullptr; }
  [[nodiscard]] DialogPlayer& User() override { return player_; }

 private:
  DialogHost host_;
  HWND frame_;
  HWND page_;
  WindowPlayer player_;
};

class Win32Driver final : public DialogDriver {
 public:
  std::unique_ptr<OpenDialog> Open(DialogId dialog, IDialogController& controller) override {
    auto open = std::make_unique<Win32OpenDialog>(dialog, controller);
    return open->IsMade() ? std::move(open) : nullptr;
  }
  IModalDialogs& ModalDialogs() override { return modal_dialogs_; }
  void PlayNext(DialogScript script) override { scripts_.push_back(std::move(script)); }

 private:
  void Play(HWND dialog) {
    if (scripts_.empty()) return;
    const DialogScript script = std::move(scripts_.front());
    scripts_.pop_front();
    WindowPlayer player(dialog);
    script(player);
  }

  Win32ModalDialogs modal_dialogs_{GetModuleHandleW(nullptr)};
  std::deque<DialogScript> scripts_;
  ModalWatcher watcher_{[this](HWND dialog) { Play(dialog); }};
};

std::unique_ptr<DialogDriver> MakeDriver() { return std::make_unique<Win32Driver>(); }

INSTANTIATE_TEST_SUITE_P(Win32, DialogContract, ::testing::Values(&MakeDriver));

}  // namespace
}  // namespace pelora::contract
