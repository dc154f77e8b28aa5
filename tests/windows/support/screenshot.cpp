// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/screenshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "hosts/windows/module/module_path.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/png_writer.h"
#include "tests/windows/support/window_player.h"

namespace pelora::windows::test {
namespace {

std::wstring PictureFolder() {
  const std::wstring program = ModulePath(nullptr);
  const std::wstring programs = program.substr(0, program.find_last_of(L'\\'));
  const std::wstring folder = programs.substr(0, programs.find_last_of(L'\\')) + L"\\screenshots";
  CreateDirectoryW(folder.c_str(), nullptr);
  return folder;
}

/// What tells pictures of a screen with more dots per inch from the usual ones.
std::wstring DpiSuffix() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi == USER_DEFAULT_SCREEN_DPI ? L"" : L'_' + std::to_wstring(dpi) + L"dpi";
}

Picture TakePicture(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  Picture picture;
  picture.width = static_cast<std::uint32_t>(area.right - area.left);
  picture.height = static_cast<std::uint32_t>(area.bottom - area.top);

  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  format.bmiHeader.biWidth = area.right - area.left;
  format.bmiHeader.biHeight = -(area.bottom - area.top);
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, format.bmiHeader.biWidth, area.bottom - area.top, screen, area.left,
         area.top, SRCCOPY);
  GdiFlush();
  const auto* const pixels = static_cast<const std::uint32_t*>(bits);
  picture.pixels.assign(pixels, pixels + std::size_t{picture.width} * picture.height);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

/// What was drawn comes to the screen when the thread has nothing else to do.
void WaitForTheScreen() {
  constexpr int kRounds = 3;
  constexpr DWORD kMilliseconds = 20;
  for (int round = 0; round < kRounds; ++round) {
    HandleWaitingMessages();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kMilliseconds, QS_ALLINPUT);
  }
}

/// Whether nothing is to be seen below a window's caption.
bool IsEmpty(HWND window, const Picture& picture) {
  POINT client = {};
  RECT area = {};
  ClientToScreen(window, &client);
  GetWindowRect(window, &area);
  const auto left = static_cast<std::size_t>(client.x - area.left);
  const auto width = picture.width - 2 * left;
  const auto first = static_cast<std::size_t>(client.y - area.top);
  const std::uint32_t colour = picture.pixels[first * picture.width + left];
  for (std::size_t row = first; row + left < picture.height; ++row) {
    const auto begin =
        picture.pixels.begin() + static_cast<std::ptrdiff_t>(row * picture.width + left);
    const auto end = begin + static_cast<std::ptrdiff_t>(width);
    if (std::any_of(begin, end, [colour](auto pixel) { return pixel != colour; })) return false;
  }
  return true;
}

}  // namespace

void SavePicture(HWND window, const std::string& name) {
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  WaitForTheScreen();
  const Picture picture = TakePicture(window);
  EXPECT_FALSE(IsEmpty(window, picture)) << name << " is empty";
  EXPECT_TRUE(WritePng(PictureFolder() + L'\\' + ToWide(name) + DpiSuffix() + L".png", picture))
      << name;
}

}  // namespace pelora::windows::test
