// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/lab.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace pelora::lab {
namespace {

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  if (value == nullptr) {
    throw std::runtime_error(std::string(name) + " is not set: run this by run_in_lab.sh");
  }
  return value;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char letter : text) {
    quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  }
  return quoted + "'";
}

}  // namespace

std::string Server() { return Variable("PELORA_LAB_SERVER"); }

std::string Home() { return Variable("PELORA_LAB_HOME"); }

std::string Base() { return Variable("PELORA_LAB_BASE"); }

std::string TicketsOf(const std::string& user) {
  return "FILE:" + Variable("PELORA_LAB_TICKETS") + "/" + user;
}

std::string OutputOf(const std::string& command) {
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  std::string output;
  for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
    output += static_cast<char>(letter);
  }
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command + "\n" + output);
  return output;
}

void ControlServer(const std::string& action, const std::string& controller) {
  static_cast<void>(
      OutputOf(Quoted(Variable("PELORA_LAB_CONTROL")) + " " + action + " " + controller));
}

RunningServer::~RunningServer() {
  if (is_paused_) Resume();
  if (is_killed_) Start();
}

void RunningServer::Kill() {
  ControlServer("kill", controller_);
  is_killed_ = true;
}

void RunningServer::Start() {
  ControlServer("start", controller_);
  is_killed_ = false;
}

void RunningServer::Pause() {
  ControlServer("pause", controller_);
  is_paused_ = true;
}

void RunningServer::Resume() {
  ControlServer("resume", controller_);
  is_paused_ = false;
}

std::vector<std::string> LdapSearch(const std::string& dn,
                                    const std::vector<std::string>& attributes) {
  std::string command = "KRB5CCNAME=" + Quoted(TicketsOf(kAdministrator)) +
                        " ldapsearch -N -Q -LLL -o ldif-wrap=no -Y GSSAPI -H ldap://" + Server() +
                        " -s base -b " + Quoted(dn);
  for (const std::string& attribute : attributes) command += " " + Quoted(attribute);
  std::vector<std::string> lines;
  std::istringstream output(OutputOf(command));
  for (std::string line; std::getline(output, line);) {
    if (!line.empty() && !line.starts_with("dn:")) lines.push_back(line);
  }
  std::ranges::sort(lines);
  return lines;
}

EnvironmentVariable::EnvironmentVariable(const char* name, const char* value)
    : name_(name), was_set_(std::getenv(name) != nullptr) {
  if (was_set_) before_ = std::getenv(name);
  Set(value);
}

EnvironmentVariable::~EnvironmentVariable() { Set(was_set_ ? before_.c_str() : nullptr); }

void EnvironmentVariable::Set(const char* value) const {
  if (value != nullptr) {
    setenv(name_, value, 1);
  } else {
    unsetenv(name_);
  }
}

}  // namespace pelora::lab
