// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "directory/select_ad_object.h"
#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/windows_platform.h"
#include "tests/support/fake_directory.h"
#include "tests/windows/provider/ldap_namespace.h"

namespace pelora::windows::test {

inline constexpr const char* kAda = "LDAP://dc1/CN=Ada,OU=Größe,DC=x";
inline constexpr const char* kMoon = "LDAP://dc1/CN=月🌙,DC=x";

/// Base of suites that choose through the adapters of this host: a directory with two objects
/// behind the system's functions, and a dialog window, with one control, to own the choosers.
class ChooserTest : public ::testing::Test {
 protected:
  static constexpr ControlId kButton = 238;

  ChooserTest() {
    directory_.AddObject(kAda, {{"distinguishedName", Variant::String("CN=Ada,OU=Größe,DC=x")},
                                {"cn", Variant::String("Ada")}});
    directory_.AddObject(kMoon, {{"distinguishedName", Variant::String("CN=月🌙,DC=x")},
                                 {"cn", Variant::String("月🌙")}});
  }
  ~ChooserTest() override {
    DestroyWindow(window_);
    EXPECT_EQ(directory_.live_objects(), 0U);
  }

  [[nodiscard]] HWND window() const { return window_; }
  [[nodiscard]] HWND button() const { return button_; }
  [[nodiscard]] IDialog* dialog() { return &dialog_; }
  [[nodiscard]] const SelectADObject& chooser() const { return chooser_; }

  pelora::testing::FakeDirectory directory_;
  std::vector<std::string> names_ = {"from before"};

 private:
  LdapNamespace provider_{directory_};
  WindowsPlatform platform_{GetModuleHandleW(nullptr)};
  SelectADObject chooser_{platform_.platform()};
  HWND window_ = CreateWindowExW(0, L"Static", L"Owner", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100,
                                 nullptr, nullptr, nullptr, nullptr);
  HWND button_ =
      CreateWindowExW(0, L"Button", L"Add", WS_CHILD, 0, 0, 50, 20, window_,
                      reinterpret_cast<HMENU>(std::uintptr_t{kButton}), nullptr, nullptr);
  Win32Dialog dialog_{window_, DialogRole::kModal};
};

}  // namespace pelora::windows::test
