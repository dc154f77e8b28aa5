// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/run_program.h"

namespace pelora::windows::test {

DWORD RunProgram(const std::wstring& command_line) {
  std::wstring command = command_line;
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process = {};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &process) == FALSE) {
    return kNotStarted;
  }
  DWORD code = kNotStarted;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}

}  // namespace pelora::windows::test
