// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace pelora {

/// A thread for which the component library has been initialised, by the host's own number.
using LibraryThread = std::uint32_t;

/// The component library of the host's threads. Calls are counted for each thread: every
/// `CoInitialize` is undone by one `CoUninitialize`.
class IComponentLibrary {
 public:
  virtual ~IComponentLibrary() = default;

  /// Initialises it for the thread that calls, and says which one that is.
  [[nodiscard]] virtual LibraryThread CoInitialize() = 0;
  /// Undoes one `CoInitialize` of `thread`. Called on another thread it takes nothing of that
  /// one's; `thread` gives the count back itself, as soon as it handles its messages.
  virtual void CoUninitialize(LibraryThread thread) = 0;
};

}  // namespace pelora
