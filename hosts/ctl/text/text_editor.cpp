// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/text_editor.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/text/byte_order_mark.h"
#include "hosts/ctl/text/input_file.h"
#include "hosts/ldap/file_descriptor.h"

namespace pelora::ctl {
namespace {

std::string EditorCommand() {
  for (const char* variable : {"VISUAL", "EDITOR"}) {
    const char* command = std::getenv(variable);
    if (command != nullptr && *command != '\0') return command;
  }
  return "vi";
}

std::string TemporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return folder != nullptr && *folder != '\0' ? folder : "/tmp";
}

constexpr const char* kTerminal = "/dev/tty";

/// Whether the program has a terminal of its own.
bool HasOwnTerminal() {
  return static_cast<bool>(ldap::FileDescriptor(open(kTerminal, O_RDONLY | O_CLOEXEC)));
}

[[noreturn]] void Fail(const std::string& path) {
  throw WrongUsage(path + ": " + std::generic_category().message(errno));
}

/// A child's signals are as if nobody had looked at them.
class ChildAttributes {
 public:
  ChildAttributes() {
    posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    sigset_t ours;
    sigemptyset(&ours);
    sigaddset(&ours, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes_, &ours);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ChildAttributes(const ChildAttributes&) = delete;
  ChildAttributes& operator=(const ChildAttributes&) = delete;
  ~ChildAttributes() { posix_spawnattr_destroy(&attributes_); }

  [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

/// What a child has open in place of what is open here.
class ChildFiles {
 public:
  ChildFiles() { posix_spawn_file_actions_init(&actions_); }
  ChildFiles(const ChildFiles&) = delete;
  ChildFiles& operator=(const ChildFiles&) = delete;
  ~ChildFiles() { posix_spawn_file_actions_destroy(&actions_); }

  /// Standard input is the terminal; without one it stays what it is.
  void ReadTerminal() {
    if (HasOwnTerminal()) {
      posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, kTerminal, O_RDONLY, 0);
    }
  }
  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

}  // namespace

TextEditor::TextEditor(Interruption& interruption, Keys keys)
    : interruption_(interruption), keys_(keys) {
  path_ = TemporaryFolder() + "/peloractl-XXXXXX.txt";
  constexpr int kSuffixLength = 4;
  const ldap::FileDescriptor file(mkostemps(path_.data(), kSuffixLength, O_CLOEXEC));
  if (!file) Fail(path_);
  interruption_.SetLastWords("interrupted; the text is in " + path_);
}

TextEditor::~TextEditor() {
  interruption_.SetLastWords({});
  if (!is_kept_) unlink(path_.c_str());
}

std::string TextEditor::Edit(const std::string& text) {
  {
    const ldap::FileDescriptor file(open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!file) Fail(path_);
    std::string_view left = text;
    while (!left.empty()) {
      const ssize_t written = write(file.get(), left.data(), left.size());
      if (written < 0 && errno != EINTR) Fail(path_);
      if (written > 0) left.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  Run();
  std::string edited(WithoutByteOrderMark(ReadInput(path_)));
  has_typed_ = has_typed_ || edited != text;
  return edited;
}

bool TextEditor::HasTerminal() const {
  return keys_ == Keys::kTerminal ? HasOwnTerminal() : isatty(STDIN_FILENO) == 1;
}

void TextEditor::Run() {
  const std::string command = EditorCommand();
  // The shell gets the file's name as an argument: it is no part of the command.
  std::string script = command + " \"$@\"";
  std::string shell = "sh";
  std::string flag = "-c";
  std::string name = command;
  const std::array<char*, 6> arguments = {shell.data(), flag.data(),  script.data(),
                                          name.data(),  path_.data(), nullptr};
  const ChildAttributes attributes;
  ChildFiles files;
  if (keys_ == Keys::kTerminal) files.ReadTerminal();
  interruption_.Ignore(true);
  pid_t child = 0;
  const int failed =
      posix_spawn(&child, "/bin/sh", files.get(), attributes.get(), arguments.data(), environ);
  int status = -1;
  while (failed == 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  interruption_.Ignore(false);
  if (failed == 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
  is_kept_ = true;
  throw WrongUsage("the editor \"" + command + "\" failed; the text is in " + path_);
}

}  // namespace pelora::ctl
