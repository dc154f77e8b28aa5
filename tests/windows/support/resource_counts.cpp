// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/resource_counts.h"

#include <malloc.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <vector>

namespace pelora::windows::test {
namespace {

/// More than there are free numbers below the highest one taken.
constexpr std::size_t kManyWindows = 200;
constexpr std::size_t kManyOthers = 3000;

/// The least step between two of these.
std::size_t StepOf(std::vector<std::size_t> numbers) {
  std::ranges::sort(numbers);
  std::size_t step = numbers.back();
  for (std::size_t index = 1; index < numbers.size(); ++index) {
    step = std::min(step, numbers[index] - numbers[index - 1]);
  }
  return step;
}

/// Makes so many, destroys them, and says how many there were before.
template <class Make, class Destroy>
std::size_t CountBefore(std::size_t many, const Make& make, const Destroy& destroy) {
  // Handles of windows and drawing objects carry a generation above their number.
  constexpr std::uintptr_t kNumberMask = 0xFFFF;
  std::vector<decltype(make())> made;
  std::vector<std::size_t> numbers;
  for (std::size_t index = 0; index < many; ++index) {
    made.push_back(make());
    numbers.push_back(reinterpret_cast<std::uintptr_t>(made.back()) & kNumberMask);
  }
  for (const auto& one : made) destroy(one);
  return *std::ranges::max_element(numbers) / StepOf(numbers) - many;
}

std::size_t CountHandles() {
  return CountBefore(
      kManyOthers, [] { return CreateEventW(nullptr, FALSE, FALSE, nullptr); },
      [](HANDLE event) { CloseHandle(event); });
}

std::size_t CountWindows() {
  return CountBefore(
      kManyWindows,
      [] {
        return CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                               nullptr);
      },
      [](HWND window) { DestroyWindow(window); });
}

std::size_t CountDrawingObjects() {
  return CountBefore(
      kManyOthers, [] { return CreateSolidBrush(RGB(1, 2, 3)); },
      [](HBRUSH brush) { DeleteObject(brush); });
}

std::size_t CountThreads() {
  std::size_t count = 0;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  for (BOOL found = Thread32First(snapshot, &thread); found != FALSE;
       found = Thread32Next(snapshot, &thread)) {
    if (thread.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(snapshot);
  return count;
}

BOOL CALLBACK CountBelow(HWND /*window*/, LPARAM count) {
  ++*reinterpret_cast<std::size_t*>(count);
  return TRUE;
}

BOOL CALLBACK Count(HWND window, LPARAM count) {
  ++*reinterpret_cast<std::size_t*>(count);
  EnumChildWindows(window, &CountBelow, count);
  return TRUE;
}

}  // namespace

ResourceCounts CountResources() {
  ResourceCounts counts;
  counts.handles = CountHandles();
  counts.windows = CountWindows();
  counts.drawing_objects = CountDrawingObjects();
  counts.windows_of_thread = CountWindowsOfThread();
  counts.threads = CountThreads();
  return counts;
}

std::size_t CountWindowsOfThread() {
  std::size_t count = 0;
  EnumThreadWindows(GetCurrentThreadId(), &Count, reinterpret_cast<LPARAM>(&count));
  return count;
}

std::size_t CountHeapBlocks() {
  std::size_t count = 0;
  _HEAPINFO block = {};
  while (_heapwalk(&block) == _HEAPOK) {
    if (block._useflag == _USEDENTRY) ++count;
  }
  return count;
}

void PrintTo(const ResourceCounts& counts, std::ostream* out) {
  *out << "handles " << counts.handles << ", windows " << counts.windows << ", drawing objects "
       << counts.drawing_objects << ", windows of the thread " << counts.windows_of_thread
       << ", threads " << counts.threads;
}

}  // namespace pelora::windows::test
