// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>

#include "server/registration_ports.h"

namespace pelora {

/// The module: what its component classes are made with, what keeps it loaded, and its entries in
/// the registry.
///
/// Every object that lives, and every client that asks for it, holds one lock. Locks may be taken
/// and given up on any thread; everything else happens on the host's user-interface thread.
class CPeloraPropModule {
 public:
  /// The ports outlive the module.
  explicit CPeloraPropModule(const RegistrationPorts& registration);
  CPeloraPropModule(const CPeloraPropModule&) = delete;
  CPeloraPropModule& operator=(const CPeloraPropModule&) = delete;

  /// Both return the new count.
  std::uint32_t Lock() { return ++locks_; }
  std::uint32_t Unlock() { return --locks_; }
  /// `S_OK` when nothing holds a lock, else `S_FALSE`.
  [[nodiscard]] HRESULT CanUnloadNow() const { return locks_ == 0 ? S_OK : S_FALSE; }

  /// Enters the module into the registry: the application identifier, then every class of the class
  /// table in order, then the type library. The first failure ends it and is returned; what was
  /// written stays. Texts are written in the system's default locale; the thread's own is back
  /// afterwards, whatever happened.
  [[nodiscard]] HRESULT RegisterServer() const;

  /// Undoes it in reverse order: the type library, the classes from the last to the first, the
  /// application identifier. Nothing of the module is left, and nothing else is touched. What is
  /// missing already is no failure; the first failure ends it and is returned.
  [[nodiscard]] HRESULT UnregisterServer() const;

 private:
  RegistrationPorts registration_;
  std::atomic<std::uint32_t> locks_ = 0;
};

/// Holds one lock of the module.
class ModuleLock {
 public:
  explicit ModuleLock(CPeloraPropModule& module) : module_(module) { module_.Lock(); }
  ~ModuleLock() { module_.Unlock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;

 private:
  CPeloraPropModule& module_;
};

}  // namespace pelora
