// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/program.h"

#include <unistd.h>

#include <exception>

#include "hosts/ctl/command_line/parse_command_line.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/cut_file_end.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

int RunCommand(std::span<const std::string> arguments, Program& program) {
  const ParsedCommandLine parsed = ParseCommandLine(arguments);
  if (parsed.text) {
    program.output.Write(*parsed.text);
    return kExitDone;
  }
  return parsed.line.command->run(parsed.line, program);
}

}  // namespace

void Tell(Program& program, const std::string& line) {
  program.errors.WriteLine("peloractl: " + session::OnOneLine(line));
  program.errors.Flush();
}

int RunProgram(std::span<const std::string> arguments) {
  Output output(STDOUT_FILENO);
  Output errors(STDERR_FILENO);
  Interruption interruption;
  const CutFileEnd cut_file_end;
  const resources::ReadResult<resources::ResourceFile> module =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  if (!module.value) {
    errors.WriteLine("peloractl: " + module.error);
    return kExitNoDirectory;
  }
  Program program{
      .output = output, .errors = errors, .interruption = interruption, .module = *module.value};
  int code = kExitNotAll;
  try {
    code = RunCommand(arguments, program);
  } catch (const CtlError& error) {
    Tell(program, error.what());
    code = error.code();
  } catch (const std::exception& error) {
    Tell(program, error.what());
  }
  output.Flush();
  if (!output.failure().empty()) Tell(program, "standard output: " + output.failure());
  return code;
}

}  // namespace pelora::ctl
