// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/change_history.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/undo_file.h"
#include "hosts/session/json_text.h"

namespace pelora::session {
namespace {

using changes::Result;
using Clock = ChangeHistory::Clock;

constexpr const char* kUndoFile = ".ldif";
/// Each taking back that did something has one, numbered from 1.
constexpr std::string_view kRedoMark = ".redo";
constexpr const char* kWordsFile = ".json";
/// Among the words: it cannot be taken back.
constexpr const char* kFinal = "final";
constexpr const char* kTimeForm = "%Y%m%dT%H%M%SZ";
constexpr std::size_t kTimeLength = 16;
/// Longer names are cut, and told apart by their number.
constexpr std::size_t kLongestName = 120;

/// A directory's name as that of a folder: other signs than these as their bytes.
std::string FolderName(const std::string& directory) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string name;
  for (const char sign : directory) {
    const auto byte = static_cast<unsigned char>(sign);
    const bool is_plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                          (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
    if (is_plain && !(name.empty() && byte == '.')) {
      name += sign;
    } else {
      name += {'_', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  if (name.size() <= kLongestName) return name;
  return name.substr(0, kLongestName) + "-" + std::to_string(std::hash<std::string>()(directory));
}

std::string TimeText(Clock::time_point time) {
  const std::time_t seconds = Clock::to_time_t(time);
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  std::array<char, kTimeLength + 1> text{};
  std::strftime(text.data(), text.size(), kTimeForm, &parts);
  return text.data();
}

std::optional<Clock::time_point> TimeOf(const std::string& id) {
  std::tm parts{};
  if (id.size() < kTimeLength) return std::nullopt;
  const std::string text = id.substr(0, kTimeLength);
  const char* const end = strptime(text.c_str(), kTimeForm, &parts);
  if (end == nullptr || *end != '\0') return std::nullopt;
  return Clock::from_time_t(timegm(&parts));
}

void AddTexts(const Json& words, const char* key, std::vector<std::string>& texts) {
  if (!words.is_object() || !words.contains(key) || !words[key].is_array()) return;
  for (const Json& text : words[key]) {
    if (text.is_string()) texts.push_back(text.get<std::string>());
  }
}

/// The words of a go; the file itself counts, whatever became of them.
void ReadWords(const std::filesystem::path& path, PastChange& past) {
  std::ifstream file(path, std::ios::binary);
  const Json words = Json::parse(file, nullptr, false);
  AddTexts(words, "objects", past.objects);
  AddTexts(words, "fields", past.fields);
  past.is_final = words.is_object() && words.value(kFinal, Json(false)) == Json(true);
}

std::string ListText(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : ",") + JsonLine(Json(text));
  return "[" + list + "]";
}

/// Takes away from others what is made as long as it stands.
class OnlyOurs {
 public:
  OnlyOurs() : before_(umask(S_IRWXG | S_IRWXO)) {}
  ~OnlyOurs() { umask(before_); }
  OnlyOurs(const OnlyOurs&) = delete;
  OnlyOurs& operator=(const OnlyOurs&) = delete;

 private:
  mode_t before_;
};

/// A log whose files go when nothing was done of what was noted.
class GoLog final : public changes::IChangeLog {
 public:
  GoLog(std::unique_ptr<changes::UndoFile> file, std::vector<std::filesystem::path> paths)
      : file_(std::move(file)), paths_(std::move(paths)) {}
  ~GoLog() override {
    file_.reset();
    std::error_code ignored;
    if (open_ > 0) return;
    for (const std::filesystem::path& path : paths_) std::filesystem::remove(path, ignored);
  }
  GoLog(const GoLog&) = delete;
  GoLog& operator=(const GoLog&) = delete;

  [[nodiscard]] ldap::StoreStatus Note(std::span<const changes::Change> changes,
                                       NoteId& first) override {
    ldap::StoreStatus status = file_->Note(changes, first);
    if (status.Ok()) open_ += changes.size();
    return status;
  }
  void Withdraw(NoteId note) override {
    file_->Withdraw(note);
    --open_;
  }

 private:
  std::unique_ptr<changes::UndoFile> file_;
  std::vector<std::filesystem::path> paths_;
  /// How many of the notes were not withdrawn.
  std::size_t open_ = 0;
};

bool IsAllDone(const std::vector<Result>& results) {
  return std::ranges::all_of(results, [](const Result& result) { return result.IsDone(); });
}

}  // namespace

ChangeHistory::ChangeHistory(const std::filesystem::path& folder, const std::string& directory,
                             const ldap::Schema& schema)
    : folder_(folder / FolderName(directory)), schema_(schema) {}

std::filesystem::path ChangeHistory::File(const std::string& id, const char* kind) const {
  return folder_ / (id + kind);
}

bool ChangeHistory::Write(const std::filesystem::path& path, const Words& words) {
  // Put together by hand: the library's lists and objects need memory even to go.
  std::string text =
      "{\"objects\":" + ListText(words.objects) + ",\"fields\":" + ListText(words.fields);
  if (words.is_final) text += ",\"" + std::string(kFinal) + "\":true";
  text += "}\n";
  std::ofstream file;
  {
    const OnlyOurs only_ours;
    file.open(path, std::ios::binary | std::ios::trunc);
  }
  file << text;
  return file.good();
}

std::unique_ptr<changes::IChangeLog> ChangeHistory::Begin(std::vector<std::string> objects,
                                                          std::vector<std::string> fields,
                                                          Clock::time_point now) {
  return Start(Words{.objects = std::move(objects), .fields = std::move(fields)}, now);
}

std::unique_ptr<changes::IChangeLog> ChangeHistory::BeginFinal(std::vector<std::string> objects,
                                                               std::vector<std::string> fields,
                                                               Clock::time_point now) {
  return Start(Words{.objects = std::move(objects), .fields = std::move(fields), .is_final = true},
               now);
}

std::unique_ptr<changes::IChangeLog> ChangeHistory::Start(const Words& words,
                                                          Clock::time_point now) {
  failure_.clear();
  std::error_code failure;
  std::filesystem::create_directories(folder_, failure);
  if (!failure) {
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, failure);
  }
  if (failure) {
    failure_ = "'" + folder_.string() + "' cannot be made: " + failure.message();
    return nullptr;
  }
  const std::string time = TimeText(now);
  // Several in one second are numbered, in an order that is that of their names.
  for (int number = 100; number < 1000; ++number) {
    const std::string id = time + "-" + std::to_string(number);
    const std::filesystem::path undo = File(id, kUndoFile);
    if (std::filesystem::exists(undo, failure)) continue;
    std::unique_ptr<changes::UndoFile> file;
    const ldap::StoreStatus made = changes::UndoFile::Create(undo.string(), schema_, file);
    if (!made.Ok()) {
      failure_ = made.text;
      return nullptr;
    }
    (void)Write(File(id, kWordsFile), words);
    return std::make_unique<GoLog>(std::move(file), std::vector{undo, File(id, kWordsFile)});
  }
  failure_ = "there are too many changes within one second";
  return nullptr;
}

std::vector<PastChange> ChangeHistory::List(Clock::time_point now) const {
  std::vector<PastChange> past;
  std::error_code failure;
  for (const auto& entry : std::filesystem::directory_iterator(folder_, failure)) {
    const std::string name = entry.path().filename().string();
    if (!name.ends_with(kUndoFile) || name.find(kRedoMark) != std::string::npos) continue;
    const std::string id = name.substr(0, name.size() - std::string_view(kUndoFile).size());
    const std::optional<Clock::time_point> when = TimeOf(id);
    if (!when) continue;
    if (*when + kKept < now) {
      for (const char* kind : {kUndoFile, kWordsFile}) {
        std::filesystem::remove(File(id, kind), failure);
      }
      for (const std::filesystem::path& redo : RedoFiles(id)) {
        std::filesystem::remove(redo, failure);
      }
      continue;
    }
    PastChange change{.id = id, .when = *when, .objects = {}, .fields = {}};
    change.is_undone = !RedoFiles(id).empty();
    ReadWords(File(id, kWordsFile), change);
    past.push_back(std::move(change));
  }
  std::ranges::sort(past, std::greater(), &PastChange::id);
  return past;
}

std::vector<Result> ChangeHistory::Run(const std::filesystem::path& file, const std::string& what,
                                       changes::IChangeLog* log, ldap::IDirectoryStore& store,
                                       IErrands& errands) {
  std::vector<Result> results;
  errands.Run(what, [&](IErrand& errand) {
    std::vector<changes::Change> all;
    if (const ldap::StoreStatus read = changes::ReadUndoFile(file.string(), schema_, all);
        !read.Ok()) {
      results = {changes::NotDone({}, read)};
      return;
    }
    if (all.empty()) {
      // Of an object that was created and taken back nothing is kept.
      results = {{.dn = {},
                  .outcome = changes::Outcome::kRefused,
                  .message = "An object that was created and taken back cannot be made again."}};
      return;
    }
    results.resize(all.size());
    store.StopOn(errand.give_up());
    const changes::RunOptions options{
        .lists = changes::Lists::kUntouched, .stop = errand.stop(), .log = log};
    changes::RunChanges(store, all, options, [&](std::size_t at, const Result& result) {
      results[at] = result;
      errand.Advance(at + 1, all.size() > 1 ? all.size() : 0);
    });
    store.StopOn({});
  });
  return results;
}

std::vector<std::filesystem::path> ChangeHistory::RedoFiles(const std::string& id) const {
  std::vector<std::filesystem::path> files;
  std::error_code failure;
  while (true) {
    std::filesystem::path file = RedoFile(id, files.size() + 1);
    if (!std::filesystem::exists(file, failure)) return files;
    files.push_back(std::move(file));
  }
}

std::filesystem::path ChangeHistory::RedoFile(const std::string& id, std::size_t number) const {
  return folder_ / (id + std::string(kRedoMark) + std::to_string(number) + kUndoFile);
}

std::vector<Result> ChangeHistory::Undo(const std::string& id, ldap::IDirectoryStore& store,
                                        IErrands& errands) {
  const std::filesystem::path redo = RedoFile(id, RedoFiles(id).size() + 1);
  std::unique_ptr<changes::UndoFile> file;
  if (const ldap::StoreStatus made = changes::UndoFile::Create(redo.string(), schema_, file);
      !made.Ok()) {
    return {changes::NotDone({}, made)};
  }
  GoLog log(std::move(file), {redo});
  return Run(File(id, kUndoFile), "Taking back changes...", &log, store, errands);
}

std::vector<Result> ChangeHistory::Redo(const std::string& id, ldap::IDirectoryStore& store,
                                        IErrands& errands) {
  std::vector<std::filesystem::path> files = RedoFiles(id);
  std::ranges::reverse(files);
  std::vector<Result> all;
  for (const std::filesystem::path& file : files) {
    // The undo file takes back what is done again, as it took back what was done first.
    std::vector<Result> results = Run(file, "Doing changes again...", nullptr, store, errands);
    const bool is_all_done = IsAllDone(results);
    std::ranges::move(results, std::back_inserter(all));
    if (!is_all_done) break;
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
  }
  return all;
}

}  // namespace pelora::session
