// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/workplace.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/objects/read_settings.h"
#include "server/component_server.h"

namespace pelora::ctl {
namespace {

/// A variable of the environment; empty when it is not set.
std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

session::SessionResult OpenNamed(const CommandLine& line) {
  // When a file is cut short that is mapped the program ends: `CutFileEnd`. What a person types
  // would be lost with it.
  const ldap::LdbStoreOptions mapped{.is_mapped = line.command != &EditCommand()};
  if (line.directory) return session::OpenDirectoryFile(*line.directory, mapped);
  if (line.site) return session::OpenServer({}, {}, *line.site);
  if (line.server) return session::OpenServer(*line.server);
  if (line.sample) return session::OpenSampleDirectory(mapped);
  const std::string file = Environment("PELORA_DIRECTORY");
  if (!file.empty()) return session::OpenDirectoryFile(file, mapped);
  const std::string server = Environment("PELORA_SERVER");
  session::SessionResult opened = session::OpenServer(server);
  if (!opened.session && server.empty()) {
    opened.error +=
        " (sign in with kinit, or name a directory with --server HOST, "
        "--directory FILE or --sample)";
  }
  return opened;
}

}  // namespace

std::unique_ptr<session::DirectorySession> OpenDirectory(const CommandLine& line) {
  session::SessionResult opened = OpenNamed(line);
  if (!opened.session) throw CtlError(kExitNoDirectory, opened.error);
  return std::move(opened.session);
}

Workplace::Workplace(const CommandLine& line, Program& program)
    : session(OpenDirectory(line)),
      platform(session->service, session->store, program.module),
      catalogue(session->specifiers, platform.platform, program.module, &CreateComponent),
      finder(*session) {}

std::vector<std::string> NamesOf(const CommandLine& line, std::vector<std::string> named) {
  if (!line.from) return named;
  std::vector<std::string> more = ReadNames(*line.from);
  std::ranges::move(more, std::back_inserter(named));
  return named;
}

std::vector<Target> TargetsOf(const CommandLine& line, const std::vector<std::string>& names,
                              Workplace& workplace) {
  const Selection selection{
      .filter = line.filter, .class_word = line.class_name, .base = line.base};
  if (names.empty() && !line.from && !selection.IsGiven()) {
    throw WrongUsage("no object is named");
  }
  std::vector<Target> targets = workplace.finder.Resolve(names);
  if (selection.IsGiven()) {
    std::ranges::move(workplace.finder.Select(selection, SettingsAttributes()),
                      std::back_inserter(targets));
  }
  return EachOnce(std::move(targets));
}

}  // namespace pelora::ctl
