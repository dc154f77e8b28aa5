// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "server/registration_ports.h"

namespace pelora::windows {

/// The system's locale of the current thread.
class Win32ThreadLocale final : public IThreadLocale {
 public:
  [[nodiscard]] LocaleId Get() const override { return GetThreadLocale(); }
  void Set(LocaleId locale) override { SetThreadLocale(locale); }
};

}  // namespace pelora::windows
