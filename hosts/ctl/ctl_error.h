// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "hosts/ldap/directory_store.h"

namespace pelora::ctl {

/// What the program answers to its caller.
enum ExitCode : int {
  kExitDone = 0,
  /// An object was refused, failed, is unknown or skipped; a check found something.
  kExitNotAll = 1,
  /// Nothing was done.
  kExitWrongUsage = 2,
  kExitNoDirectory = 3,
  /// The object under way was finished, the rest skipped, everything reported.
  kExitInterrupted = 130,
};

/// Ends the program, before anything was done, with one line for the person who started it. Thrown
/// wherever that turns out, caught in one place.
class CtlError : public std::runtime_error {
 public:
  CtlError(ExitCode code, const std::string& line) : std::runtime_error(line), code_(code) {}

  [[nodiscard]] ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

/// The arguments, or a file that they name, are wrong.
class WrongUsage : public CtlError {
 public:
  explicit WrongUsage(const std::string& line) : CtlError(kExitWrongUsage, line) {}
};

/// The directory could not be asked. Where objects are worked on one by one it is that object's
/// failure.
class DirectoryFailure : public CtlError {
 public:
  explicit DirectoryFailure(ldap::StoreStatus status)
      : CtlError(kExitNoDirectory, "the directory cannot be searched: " + status.text),
        status_(std::move(status)) {}

  [[nodiscard]] const ldap::StoreStatus& status() const { return status_; }

 private:
  ldap::StoreStatus status_;
};

}  // namespace pelora::ctl
