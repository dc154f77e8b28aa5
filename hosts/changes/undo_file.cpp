// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/undo_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
#include <utility>

#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/read_bytes.h"

namespace pelora::changes {
namespace {

using ldap::StoreStatus;

constexpr std::string_view kChangeMark = "# change ";
constexpr std::string_view kWithdrawnMark = "# withdrawn ";
constexpr mode_t kForTheOwner = 0600;
/// Of what is no file, and may have no end.
constexpr std::size_t kMostOfAPipe = std::size_t{128} << 20;

StoreStatus SystemFailure(const std::string& path, const char* doing, int error) {
  return {error == EEXIST ? ldap::kLdapAlreadyExists : ldap::kLdapOther,
          "'" + path + "' " + doing + ": " + std::generic_category().message(error)};
}

/// Puts a new file's name on the disk.
bool SyncFolderOf(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
  const ldap::FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return opened && fsync(opened.get()) == 0;
}

/// Whether a name is still that of an open file.
bool IsStillAt(const std::string& path, int file) {
  struct stat there {};
  struct stat opened {};
  return lstat(path.c_str(), &there) == 0 && fstat(file, &opened) == 0 &&
         there.st_dev == opened.st_dev && there.st_ino == opened.st_ino;
}

/// The number behind a mark at the beginning of a line.
std::optional<IChangeLog::NoteId> NumberBehind(std::string_view mark, std::string_view line) {
  if (!line.starts_with(mark)) return std::nullopt;
  IChangeLog::NoteId number = 0;
  const std::string_view digits = line.substr(mark.size());
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

StoreStatus ReadText(const std::string& path, std::string& text) {
  const ldap::FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat info {};
  if (!file || fstat(file.get(), &info) != 0) return SystemFailure(path, "cannot be read", errno);
  const std::size_t most =
      S_ISREG(info.st_mode) ? std::numeric_limits<std::size_t>::max() : kMostOfAPipe;
  switch (ldap::ReadBytes(file.get(), most, text)) {
    case ldap::ReadEnd::kWhole:
      return {};
    case ldap::ReadEnd::kTooLong:
      return {ldap::kLdapOther, "'" + path + "' has no end within 128 MB"};
    case ldap::ReadEnd::kFailed:
      break;
  }
  return SystemFailure(path, "cannot be read", errno);
}

/// The text of one change, from its mark to the next.
struct Part {
  std::size_t first_line = 1;
  std::optional<IChangeLog::NoteId> number;
  std::string text;
};

/// Cuts a file at its marks, and finds out which changes were withdrawn.
std::vector<Part> PartsOf(std::string text, std::set<IChangeLog::NoteId>& withdrawn) {
  std::vector<Part> parts(1);
  std::istringstream file(std::move(text));
  std::string line;
  for (std::size_t number = 1; std::getline(file, line); ++number) {
    if (const auto change = NumberBehind(kChangeMark, line)) {
      parts.push_back({.first_line = number, .number = change, .text = {}});
    } else if (const auto taken_back = NumberBehind(kWithdrawnMark, line)) {
      withdrawn.insert(*taken_back);
    }
    parts.back().text += line + '\n';
  }
  return parts;
}

}  // namespace

UndoFile::UndoFile(std::string path, ldap::FileDescriptor file, const ldap::Schema& schema)
    : path_(std::move(path)), file_(std::move(file)), schema_(schema) {}

UndoFile::~UndoFile() {
  // It has to be the one that was made: somebody may have put another into its place.
  if (next_ == withdrawn_ && IsStillAt(path_, file_.get())) unlink(path_.c_str());
}

StoreStatus UndoFile::Create(const std::string& path, const ldap::Schema& schema,
                             std::unique_ptr<UndoFile>& file) {
  file.reset();
  ldap::FileDescriptor made(
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kForTheOwner));
  if (!made) return SystemFailure(path, "cannot be made", errno);
  if (!SyncFolderOf(path)) {
    StoreStatus status = SystemFailure(path, "cannot be made", errno);
    // The next one may have the name.
    unlink(path.c_str());
    return status;
  }
  file.reset(new UndoFile(path, std::move(made), schema));
  return {};
}

StoreStatus UndoFile::Note(std::span<const Change> changes, NoteId& first) {
  std::string text;
  first = next_;
  NoteId number = next_;
  for (const Change& change : changes) {
    text += std::string(kChangeMark) + std::to_string(number++) + '\n';
    for (const Change& undo : UndosOf(change)) text += ToLdif(schema_, undo, Lists::kUntouched);
    text += '\n';
  }
  StoreStatus status = Append(text);
  if (status.Ok() && fdatasync(file_.get()) != 0) {
    status = SystemFailure(path_, "cannot be written", errno);
  }
  if (!status.Ok()) {
    // Nothing of it is sent, so nothing of it is to be taken back.
    CutAtEnd();
    return status;
  }
  next_ = number;
  end_ += static_cast<std::int64_t>(text.size());
  return {};
}

void UndoFile::Withdraw(NoteId note) {
  ++withdrawn_;
  const std::string text = std::string(kWithdrawnMark) + std::to_string(note) + "\n\n";
  // Without the mark, the record's guard keeps it from doing harm.
  if (Append(text).Ok()) {
    end_ += static_cast<std::int64_t>(text.size());
  } else {
    CutAtEnd();
  }
}

void UndoFile::CutAtEnd() {
  // What cannot be cut off either is half a record, which its reader refuses.
  if (ftruncate(file_.get(), end_) == 0) static_cast<void>(lseek(file_.get(), end_, SEEK_SET));
}

StoreStatus UndoFile::Append(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(file_.get(), text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return SystemFailure(path_, "cannot be written", errno);
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return {};
}

StoreStatus ReadUndoFile(const std::string& path, const ldap::Schema& schema,
                         std::vector<Change>& changes) {
  changes.clear();
  std::string text;
  if (StoreStatus status = ReadText(path, text); !status.Ok()) return status;
  std::set<IChangeLog::NoteId> withdrawn;
  std::vector<Part> parts = PartsOf(std::move(text), withdrawn);

  std::vector<Change> read;
  for (const Part& part : parts) {
    if (part.number && withdrawn.contains(*part.number)) continue;
    std::vector<Change> some;
    StoreStatus status = ReadChanges(schema, part.text, some, part.first_line);
    if (!status.Ok()) return {status.code, "'" + path + "', " + status.text};
    std::ranges::move(some, std::back_inserter(read));
  }
  std::ranges::reverse(read);
  changes = std::move(read);
  return {};
}

}  // namespace pelora::changes
