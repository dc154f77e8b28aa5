// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/container_browser.h"

#include "hosts/windows/choosers/chooser_headers.h"
#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/values/wide_text.h"
#include "platform/dialog_controller.h"

namespace pelora::windows {
namespace {

static_assert(sizeof(DSBROWSEINFOW) == 112);

constexpr const wchar_t* kLibrary = L"dsuiext.dll";
/// Where the loader looks for what a program imports: not in the working folder, nor along the
/// path.
constexpr DWORD kWhereImportsAre =
    LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
constexpr const char* kBrowserName = "DsBrowseForContainerW";
constexpr WORD kBrowserNumber = 10;
constexpr std::int32_t kBrowserFailed = -1;

using Browser = int(WINAPI*)(DSBROWSEINFOW*);

Browser FindBrowser(HMODULE library) {
  FARPROC found = GetProcAddress(library, MAKEINTRESOURCEA(kBrowserNumber));
  if (found == nullptr) found = GetProcAddress(library, kBrowserName);
  return reinterpret_cast<Browser>(reinterpret_cast<void*>(found));
}

}  // namespace

std::int32_t BrowseForContainer(const ContainerBrowserInit& init, std::string& path) {
  path.clear();
  const UniqueLibrary library(LoadLibraryExW(kLibrary, nullptr, kWhereImportsAre));
  if (!library) return kBrowserFailed;
  const Browser browse = FindBrowser(library.Get());
  if (browse == nullptr) return kBrowserFailed;

  // The string ends behind the room that the browser is told of, should it fill all of that.
  std::wstring chosen(init.path_capacity, L'\0');
  DSBROWSEINFOW record = {};
  record.cbStruct = sizeof(record);
  record.pszPath = chosen.data();
  record.cchPath = init.path_capacity;
  record.dwFlags = init.flags;
  const int answer = browse(&record);
  if (answer == kDialogOk) path = ToNarrow(chosen.c_str());
  return answer;
}

}  // namespace pelora::windows
