// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/objects/object_finder.h"
#include "hosts/ctl/pages/page_platform.h"
#include "hosts/ctl/program.h"
#include "hosts/session/directory_session.h"

namespace pelora::ctl {

/// Opens the directory that the command line or the environment names. Throws `CtlError` with
/// `kExitNoDirectory`.
[[nodiscard]] std::unique_ptr<session::DirectorySession> OpenDirectory(const CommandLine& line);

/// An open directory and what a command needs to work in it.
struct Workplace {
  /// Throws `CtlError`. The program outlives the workplace.
  Workplace(const CommandLine& line, Program& program);

  [[nodiscard]] ldap::IDirectoryStore& store() { return *session->store; }

  std::unique_ptr<session::DirectorySession> session;
  PagePlatform platform;
  FieldCatalogue catalogue;
  ObjectFinder finder;
};

/// What a command names its objects by: its arguments, `named`, and then the lines of `--from`. It
/// may wait for them as long as somebody types. Throws `WrongUsage`.
[[nodiscard]] std::vector<std::string> NamesOf(const CommandLine& line,
                                               std::vector<std::string> named);

/// The objects that a command names and selects, each once: those of `names` (`NamesOf`) first,
/// then those that are selected, with their settings unless there are very many. Throws
/// `WrongUsage`, also when none is named and nothing selects.
[[nodiscard]] std::vector<Target> TargetsOf(const CommandLine& line,
                                            const std::vector<std::string>& names,
                                            Workplace& workplace);

}  // namespace pelora::ctl
