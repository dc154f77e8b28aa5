// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/screenshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "hosts/windows/module/module_path.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/png_writer.h"

namespace pelora::windows::test {
namespace {

std::wstring PictureFolder() {
  const std::wstring program = ModulePath(nullptr);
  const std::wstring programs = program.substr(0, program.find_last_of(L'\\'));
  const std::wstring folder = programs.substr(0, programs.find_last_of(L'\\')) + L"\\screenshots";
  CreateDirectoryW(folder.c_str(), nullptr);
  return folder;
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

}  // namespace

void SavePicture(HWND window, const std::string& name) {
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  const Picture picture = TakePicture(window);
  const auto colour = picture.pixels.front();
  EXPECT_FALSE(std::ranges::all_of(picture.pixels, [&](auto pixel) { return pixel == colour; }))
      << name << " is empty";
  EXPECT_TRUE(WritePng(PictureFolder() + L'\\' + ToWide(name) + L".png", picture)) << name;
}

}  // namespace pelora::windows::test
