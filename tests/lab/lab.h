// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace pelora::lab {

/// The Samba AD domain that a test runs beside (tests/lab/run_in_lab.sh). Everything throws when
/// the program runs elsewhere, or when a tool fails.

/// The domain controller: `dc1.pelora.test`.
[[nodiscard]] std::string Server();
/// A folder for files of a test's, gone with the domain.
[[nodiscard]] std::string Home();
/// The domain's distinguished name.
[[nodiscard]] std::string Base();

/// Users of the domain who have a ticket.
inline constexpr const char* kAdministrator = "administrator";
/// May read everything and write nothing.
inline constexpr const char* kHelper = "helper";
/// The ticket cache of a user, as the Kerberos library names it.
[[nodiscard]] std::string TicketsOf(const std::string& user);

/// The first of the domain's controllers, and often the only one.
inline constexpr const char* kFirstController = "dc1";
/// Does "start", "kill", "pause" or "resume" to a controller, and returns when it is done.
void ControlServer(const std::string& action, const std::string& controller = kFirstController);
/// The server is there, however the test left it.
class RunningServer {
 public:
  explicit RunningServer(std::string controller = kFirstController)
      : controller_(std::move(controller)) {}
  RunningServer(const RunningServer&) = delete;
  RunningServer& operator=(const RunningServer&) = delete;
  ~RunningServer();

  void Kill();
  void Start();
  void Pause();
  void Resume();

 private:
  const std::string controller_;
  bool is_killed_ = false;
  bool is_paused_ = false;
};

/// What the ldapsearch tool, run as the administrator, prints of some attributes of one object: its
/// lines `name: value` in ascending order, without the object's name. Values in base 64 stay so.
[[nodiscard]] std::vector<std::string> LdapSearch(const std::string& dn,
                                                  const std::vector<std::string>& attributes);

/// Sets an environment variable, or removes it, as long as it lives.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value);
  EnvironmentVariable(const char* name, const std::string& value)
      : EnvironmentVariable(name, value.c_str()) {}
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable();

 private:
  void Set(const char* value) const;

  const char* name_;
  std::string before_;
  bool was_set_;
};

/// What a command prints; it throws when it fails.
[[nodiscard]] std::string OutputOf(const std::string& command);

}  // namespace pelora::lab
