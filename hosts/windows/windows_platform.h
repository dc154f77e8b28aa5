// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/adsi/ads_directory.h"
#include "hosts/windows/choosers/win32_choosers.h"
#include "hosts/windows/dialogs/win32_message_box.h"
#include "hosts/windows/dialogs/win32_modal_dialogs.h"
#include "hosts/windows/win32_component_library.h"
#include "hosts/windows/win32_text_service.h"
#include "platform/platform.h"

namespace pelora::windows {

/// The adapters of this host and the `Platform` made of them.
class WindowsPlatform {
 public:
  /// `instance` is the module that holds the dialog templates.
  explicit WindowsPlatform(HINSTANCE instance) : modal_dialogs_(instance) {}
  WindowsPlatform(const WindowsPlatform&) = delete;
  WindowsPlatform& operator=(const WindowsPlatform&) = delete;

  [[nodiscard]] const Platform& platform() const { return platform_; }

 private:
  AdsDirectory directory_;
  Win32MessageBox message_box_;
  Win32ModalDialogs modal_dialogs_;
  Win32Choosers choosers_;
  Win32TextService text_;
  Win32ComponentLibrary component_library_;
  Platform platform_{directory_, message_box_, modal_dialogs_,
                     choosers_,  text_,        component_library_};
};

}  // namespace pelora::windows
