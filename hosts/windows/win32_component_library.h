// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>

#include "hosts/windows/system_headers.h"
#include "platform/component_library.h"

namespace pelora::windows {

/// The system's component library, single-threaded apartments.
///
/// Pages of a property sheet may be released on another thread than the one on which their
/// component was made. A thread that holds counts therefore has a window that nobody sees, to which
/// other threads send what is to be given back there; it goes with the last count.
class Win32ComponentLibrary final : public IComponentLibrary {
 public:
  Win32ComponentLibrary() = default;
  Win32ComponentLibrary(const Win32ComponentLibrary&) = delete;
  Win32ComponentLibrary& operator=(const Win32ComponentLibrary&) = delete;

  /// `kNoThread`, which undoes nothing, when the thread is in an apartment of another kind.
  [[nodiscard]] LibraryThread CoInitialize() override;
  /// What a thread that has ended would have to give back it has taken along.
  void CoUninitialize(LibraryThread thread) override;

  static constexpr LibraryThread kNoThread = 0;

 private:
  struct Counts {
    HWND window = nullptr;
    std::size_t number = 0;
  };

  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow) noexcept;
  [[nodiscard]] HWND MakeWindow();
  void GiveBackHere();
  void GiveBackOn(LibraryThread thread);

  std::mutex mutex_;
  std::map<LibraryThread, Counts> counts_;
};

}  // namespace pelora::windows
