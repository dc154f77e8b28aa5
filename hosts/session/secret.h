// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "hosts/ldap/wipe.h"

namespace pelora::session {

/// As long as one of these lives, the process writes no core dump and nobody but the system's
/// administrator can look into its memory. Afterwards both are as they were before the first. May
/// be used on any thread.
class DumpGuard {
 public:
  DumpGuard();
  ~DumpGuard();
  DumpGuard(const DumpGuard&) = delete;
  DumpGuard& operator=(const DumpGuard&) = delete;
};

/// A text that is to leave nothing behind: its memory is overwritten when it changes or goes, and
/// that of what it was moved from. What it is made from is its maker's to wipe.
class Secret {
 public:
  Secret() = default;
  Secret(std::string text) : text_(std::move(text)) { ldap::Wipe(text); }
  Secret(const char* text) : text_(text) {}
  Secret(const Secret&) = default;
  Secret(Secret&& other) noexcept : text_(std::move(other.text_)) { ldap::Wipe(other.text_); }
  Secret& operator=(const Secret& other) {
    if (this != &other) {
      ldap::Wipe(text_);
      text_ = other.text_;
    }
    return *this;
  }
  Secret& operator=(Secret&& other) noexcept {
    if (this != &other) {
      ldap::Wipe(text_);
      text_ = std::move(other.text_);
      ldap::Wipe(other.text_);
    }
    return *this;
  }
  ~Secret() { ldap::Wipe(text_); }

  [[nodiscard]] bool empty() const { return text_.empty(); }
  [[nodiscard]] std::string_view text() const { return text_; }
  [[nodiscard]] bool operator==(const Secret& other) const { return text_ == other.text_; }

 private:
  std::string text_;
};

}  // namespace pelora::session
