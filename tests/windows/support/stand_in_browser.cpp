// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/stand_in_browser.h"

#include <stdexcept>

#include "hosts/windows/module/module_path.h"

namespace pelora::windows::test {
namespace {

constexpr const wchar_t* kName = L"dsuiext.dll";

bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

const wchar_t* BuiltName(BrowserExports exports) {
  switch (exports) {
    case BrowserExports::kByName:
      return L"stand_in_browser_by_name.dll";
    case BrowserExports::kByNumberOnly:
      return L"stand_in_browser_by_number.dll";
    case BrowserExports::kByBoth:
      return L"stand_in_browser_by_both.dll";
    default:
      return L"stand_in_browser_without.dll";
  }
}

}  // namespace

StandInBrowser::StandInBrowser(BrowserExports exports) {
  if (!IsWine()) throw std::runtime_error("the system's folder is not the test's own");
  if (CopyFileW(BuiltPath(exports).c_str(), InstalledPath().c_str(), FALSE) == FALSE) {
    throw std::runtime_error("the stand-in cannot be installed");
  }
  library_ = UniqueLibrary(LoadLibraryW(InstalledPath().c_str()));
  const auto get_plan = reinterpret_cast<GetBrowserPlan>(
      reinterpret_cast<void*>(GetProcAddress(library_.Get(), "StandInBrowserPlan")));
  if (get_plan == nullptr) {
    DeleteFileW(InstalledPath().c_str());
    throw std::runtime_error("another library is loaded in the stand-in's place");
  }
  plan_ = get_plan();
}

StandInBrowser::~StandInBrowser() {
  LetGo();
  DeleteFileW(InstalledPath().c_str());
}

std::wstring StandInBrowser::InstalledPath() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
  return folder + L'\\' + kName;
}

std::wstring StandInBrowser::BuiltPath(BrowserExports exports) {
  const std::wstring program = ModulePath(nullptr);
  return program.substr(0, program.find_last_of(L'\\') + 1) + BuiltName(exports);
}

bool StandInBrowser::IsLoaded() { return GetModuleHandleW(kName) != nullptr; }

}  // namespace pelora::windows::test
