// SPDX-License-Identifier: Apache-2.0
// Writes the manual pages and the shell's completion when the programs are built:
//
//   pelora-manual page PAGE [NAME=FILE...]   a page; the help text of program NAME stands in FILE
//   pelora-manual completion SCRIPT
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/command_line/parse_command_line.h"
#include "hosts/ctl/manual/bash_completion.h"
#include "hosts/ctl/manual/manual_page.h"
#include "hosts/ctl/manual/own_tables.h"

namespace {

constexpr std::string_view kOwnName = "peloractl";

std::string ReadFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The program's own help text, or that of its command behind the blank.
std::string OwnHelp(const std::string& name) {
  const std::size_t blank = name.find(' ');
  if (blank == std::string::npos) return pelora::ctl::HelpText(nullptr);
  const pelora::ctl::Command* const command = pelora::ctl::FindCommand(name.substr(blank + 1));
  if (command == nullptr) throw std::runtime_error("no command: " + name);
  return pelora::ctl::HelpText(command);
}

std::string Page(const std::string& page, const std::map<std::string, std::string>& files,
                 const pelora::resources::ResourceFile& module) {
  pelora::ctl::ManualSources sources;
  sources.version = PELORA_VERSION;
  sources.help_of = [&files](const std::string& name) {
    if (name.starts_with(kOwnName)) return OwnHelp(name);
    const auto file = files.find(name);
    if (file == files.end()) throw std::runtime_error("no help text: " + name);
    return ReadFile(file->second);
  };
  for (const pelora::ctl::Command* command : pelora::ctl::Commands()) {
    sources.commands.emplace_back(command->name);
  }
  sources.table_of = [&module](const std::string& name) {
    return pelora::ctl::ManualTable(name, module);
  };
  return pelora::ctl::MakeManualPage(ReadFile(page), sources);
}

std::string Write(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  const auto module =
      pelora::resources::ResourceFile::Read(pelora::resources::EmbeddedResourceBytes());
  if (!module.value) throw std::runtime_error(module.error);
  if (argc < 3) throw std::runtime_error("a file is to be named");
  if (what == "completion") return pelora::ctl::BashCompletion(ReadFile(argv[2]), *module.value);
  if (what != "page") throw std::runtime_error("it writes no " + what);
  std::map<std::string, std::string> files;
  for (int at = 3; at < argc; ++at) {
    const std::string argument = argv[at];
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos) throw std::runtime_error(argument + ": no file is named");
    files[argument.substr(0, sign)] = argument.substr(sign + 1);
  }
  return Page(argv[2], files, *module.value);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::cout << Write(argc, argv);
    std::cout.flush();
    return std::cout ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "pelora-manual: " << error.what() << "\n";
    return 1;
  }
}
