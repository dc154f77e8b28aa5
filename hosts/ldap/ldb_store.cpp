// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_store.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "hosts/ldap/entries_ahead.h"
#include "hosts/ldap/first_entries.h"
#include "hosts/ldap/known_entries.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_changes.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_file_check.h"
#include "hosts/ldap/ldb_file_lock.h"
#include "hosts/ldap/ldb_load.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/reads_ahead.h"
#include "hosts/ldap/write_in_groups.h"

namespace pelora::ldap {
namespace {

using Purpose = LdbFileLock::Purpose;

/// Entries that are read together: others wait meanwhile.
constexpr std::size_t kReadTogether = 256;

class LdbStore final : public IDirectoryStore, public IReadsAhead {
 public:
  LdbStore(std::string path, std::unique_ptr<LdbFileLock> lock,
           std::unique_ptr<LdbConnection> connection)
      : path_(std::move(path)),
        lock_(std::move(lock)),
        connection_(std::move(connection)),
        changes_(*connection_, schema_, root_) {}

  ~LdbStore() override {
    const auto alone = lock_->KeepThreadsOut();
    // What the library was left in the middle of it ends now; whoever else works with the file has
    // had his time then.
    if (lock_->IsFileGivenUp()) static_cast<void>(lock_->AcquireAnew(Purpose::kWrite));
    known_.Clear();
    ahead_.Clear();
    connection_.reset();
  }
  LdbStore(const LdbStore&) = delete;
  LdbStore& operator=(const LdbStore&) = delete;

  /// Reads what the store has to know before it is of use.
  StoreStatus Load();

  [[nodiscard]] const Schema& schema() const override { return schema_; }
  StoreStatus ReadRoot(Entry& root) override;
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override;
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ReadSink& sink) override;
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override;
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override;
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override;
  void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) override;
  void Expect(std::span<const std::string> dns, std::span<const std::string> attributes) override {
    ahead_.Expect(dns, attributes);
  }
  StoreStatus Add(const Entry& entry) override;
  StoreStatus Delete(const Entry& made) override;
  StoreStatus Rename(const Entry& seen, const std::string& dn) override;
  StoreStatus Remove(const Entry& seen, Extent extent) override;
  void CompleteNew(Entry& entry) const override { changes_.CompleteNew(entry); }

 private:
  using Effect = LdbChanges::Effect;
  using Writing = std::function<StoreStatus(Effect& effect)>;

  /// Does something about the object `dn` in one transaction.
  StoreStatus Write(const std::string& dn, const Writing& write);
  /// Does something in one transaction, which is committed when there is something to commit.
  StoreStatus WriteNow(const Writing& write);
  StoreStatus WriteHeld(const Writing& write);
  /// Does requests in one transaction; a refused one does not keep the others from being done.
  WrittenGroup ModifyTogether(std::span<const ModifyRequest> requests);
  /// Does one of them within the transaction; `known` becomes what was known of the object.
  StoreStatus ModifyOne(const ModifyRequest& request, LdbRecord& known, Effect& effect);

  /// Reads entries while others wait; the status is that of the file.
  StoreStatus ReadTogether(std::span<const std::string> dns,
                           std::span<const std::string> attributes, std::vector<ReadRecord>& read);
  /// Reads what was announced and has not been read.
  void ReadAhead();
  /// Sees to it that nothing counts as known that may have changed.
  StoreStatus ForgetWhatChanged();

  /// Searches within a hold of its own.
  StoreStatus Find(const SearchRequest& request, const LdbConnection::Take& take);
  [[nodiscard]] StoreStatus CheckName(const std::string& dn) const;
  StoreStatus Commit(LdbTransaction& transaction) const;
  /// What a request answers: only of what is wrong with the file the file is named.
  [[nodiscard]] StoreStatus FileTrouble(StoreStatus status) const;
  /// Puts the file's name in front of what went wrong with it.
  [[nodiscard]] StoreStatus AboutFile(StoreStatus status) const;

  std::string path_;
  std::unique_ptr<LdbFileLock> lock_;
  std::unique_ptr<LdbConnection> connection_;
  Entry root_;
  Schema schema_;
  LdbChanges changes_;
  /// Used within a hold.
  KnownEntries known_;
  EntriesAhead ahead_;
};

StoreStatus LdbStore::Load() {
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  if (status.Ok()) status = LoadLdbDirectory(*connection_, path_, root_, schema_);
  return AboutFile(std::move(status));
}

StoreStatus LdbStore::ReadRoot(Entry& root) {
  root = {};
  // What it says does not change, but whether the directory can be had does.
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  if (status.Ok()) root = root_;
  return status;
}

StoreStatus LdbStore::Read(const std::string& dn, std::span<const std::string> attributes,
                           Entry& entry) {
  entry = {};
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  LdbRecord record;
  if (status.Ok()) status = FileTrouble(connection_->ReadObject(dn, attributes, record));
  if (status.Ok()) entry = ToEntry(*record);
  return status;
}

StoreStatus LdbStore::ForgetWhatChanged() {
  KnownEntries::State state = 0;
  StoreStatus status = connection_->ReadSequenceNumber(state);
  if (status.Ok()) known_.SetState(state);
  return status;
}

StoreStatus LdbStore::ReadTogether(std::span<const std::string> dns,
                                   std::span<const std::string> attributes,
                                   std::vector<ReadRecord>& read) {
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kRead, hold);
  // What is read from now on is in this state or a later one.
  if (status.Ok()) status = FileTrouble(ForgetWhatChanged());
  for (std::size_t at = 0; status.Ok() && at < dns.size(); ++at) {
    // The library gives the lock back whenever it has looked at something.
    status = lock_->AcquireAnew(Purpose::kRead);
    if (!status.Ok()) break;
    ReadRecord& one = read.emplace_back();
    one.status = FileTrouble(connection_->ReadObject(dns[at], attributes, one.record));
    if (one.status.Ok()) known_.Keep(one.record, attributes);
  }
  return status;
}

StoreStatus LdbStore::ReadMany(std::span<const std::string> dns,
                               std::span<const std::string> attributes, const ReadSink& sink) {
  if (dns.empty()) return {};
  // They become entries here: who reads for somebody else has more to do.
  const auto hand_over = [&sink](ReadRecord& one) {
    const LdbRecord record = std::move(one.record);
    return sink(std::move(one.status), record == nullptr ? Entry() : ToEntry(*record));
  };
  std::vector<ReadRecord> ahead = ahead_.Take(dns, attributes);
  if (!std::ranges::all_of(ahead, hand_over)) return {};
  dns = dns.subspan(ahead.size());
  while (!dns.empty()) {
    const std::span<const std::string> some = dns.first(std::min(dns.size(), kReadTogether));
    std::vector<ReadRecord> read;
    read.reserve(some.size());
    const StoreStatus status = ReadTogether(some, attributes, read);
    // What could not be asked for has failed each by itself, as a single reading would.
    read.resize(some.size(), {.status = status, .record = {}});
    // The lock is gone: the sink may ask for more.
    if (!std::ranges::all_of(read, hand_over)) return {};
    dns = dns.subspan(some.size());
  }
  return {};
}

void LdbStore::ReadAhead() {
  ahead_.Read([this](std::span<const std::string> dns, std::span<const std::string> attributes,
                     std::vector<ReadRecord>& read) {
    StoreStatus status;
    while (status.Ok() && !dns.empty()) {
      const std::span<const std::string> some = dns.first(std::min(dns.size(), kReadTogether));
      status = ReadTogether(some, attributes, read);
      dns = dns.subspan(some.size());
    }
    return status;
  });
}

StoreStatus LdbStore::Search(const SearchRequest& request, const EntrySink& sink) {
  const auto find = [&](const LdbConnection::Take& take) { return Find(request, take); };
  return HandOverFirstEntriesEarly(find, sink);
}

StoreStatus LdbStore::Modify(const std::string& dn, std::span<const Modification> modifications) {
  return Write(dn, [&](Effect& effect) {
    return changes_.Modify(dn, modifications, ModifyWay::kPermissive, effect);
  });
}

StoreStatus LdbStore::ModifyStrictly(const std::string& dn,
                                     std::span<const Modification> modifications) {
  return Write(dn, [&](Effect& effect) {
    return changes_.Modify(dn, modifications, ModifyWay::kStrict, effect);
  });
}

void LdbStore::ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
  WriteInGroups(
      next, sink,
      {.write = [this](std::span<const ModifyRequest> group) { return ModifyTogether(group); },
       .read_ahead = [this] { ReadAhead(); }});
  ahead_.Clear();
}

StoreStatus LdbStore::Add(const Entry& entry) {
  return Write(entry.dn, [&](Effect& effect) { return changes_.Add(entry, effect); });
}

StoreStatus LdbStore::Delete(const Entry& made) {
  return Write(made.dn, [&](Effect& effect) { return changes_.Delete(made, effect); });
}

StoreStatus LdbStore::Rename(const Entry& seen, const std::string& dn) {
  return Write(seen.dn, [&](Effect& effect) { return changes_.Rename(seen, dn, effect); });
}

StoreStatus LdbStore::Remove(const Entry& seen, Extent extent) {
  return Write(seen.dn, [&](Effect& effect) { return changes_.Remove(seen, extent, effect); });
}

StoreStatus LdbStore::Write(const std::string& dn, const Writing& write) {
  StoreStatus status = CheckName(dn);
  return status.Ok() ? WriteNow(write) : status;
}

StoreStatus LdbStore::WriteNow(const Writing& write) {
  LdbFileLock::Hold hold;
  StoreStatus status = lock_->Acquire(Purpose::kWrite, hold);
  if (!status.Ok()) return status;
  status = WriteHeld(write);
  // What has not become so was counted with.
  if (!status.Ok()) known_.Clear();
  return status;
}

StoreStatus LdbStore::WriteHeld(const Writing& write) {
  LdbTransaction transaction(*connection_);
  StoreStatus status = transaction.Begin();
  if (!status.Ok()) return AboutFile(std::move(status));
  Effect effect;
  status = write(effect);
  if (effect.is_damaged) return AboutFile(std::move(status));
  if (!status.Ok() || !effect.has_changes) return FileTrouble(std::move(status));
  return Commit(transaction);
}

WrittenGroup LdbStore::ModifyTogether(std::span<const ModifyRequest> requests) {
  const auto known = std::make_shared<std::vector<LdbRecord>>(requests.size());
  std::vector<StoreStatus> outcomes(requests.size());
  if (requests.empty()) return {};
  bool is_damaged = false;
  const StoreStatus whole = WriteNow([&](Effect& effect) {
    StoreStatus status = ForgetWhatChanged();
    if (!status.Ok()) return status;
    for (std::size_t at = 0; at < requests.size() && !effect.is_damaged; ++at) {
      outcomes[at] = ModifyOne(requests[at], (*known)[at], effect);
    }
    is_damaged = effect.is_damaged;
    if (is_damaged) return StoreStatus{kLdapOther, "one of several changes"};
    KnownEntries::State state = 0;
    status = connection_->ReadSequenceNumber(state);
    if (status.Ok()) known_.MoveTo(state);
    return status;
  });
  if (is_damaged) {
    // Nothing of it is done; each by itself, the one that failed fails alone.
    for (std::size_t at = 0; at < requests.size(); ++at) {
      outcomes[at] = ModifyStrictly(requests[at].dn, requests[at].modifications);
    }
  } else if (!whole.Ok()) {
    std::ranges::fill(outcomes, whole);
  }
  return {.outcomes = std::move(outcomes), .spent = known};
}

StoreStatus LdbStore::ModifyOne(const ModifyRequest& request, LdbRecord& known, Effect& effect) {
  const std::span<const Modification> modifications = request.modifications;
  StoreStatus status;
  known = known_.Take(request.dn, modifications);
  if (known != nullptr) {
    status = changes_.ModifyKnown(*known, modifications, ModifyWay::kStrict, effect);
  } else if (status = CheckName(request.dn); status.Ok()) {
    status = changes_.Modify(request.dn, modifications, ModifyWay::kStrict, effect);
  }
  return FileTrouble(std::move(status));
}

StoreStatus LdbStore::Find(const SearchRequest& request, const LdbConnection::Take& take) {
  LdbFileLock::Hold hold;
  StoreStatus status = CheckName(request.base);
  if (status.Ok()) status = lock_->Acquire(Purpose::kRead, hold);
  return status.Ok() ? FileTrouble(connection_->SearchEach(request, take)) : status;
}

StoreStatus LdbStore::CheckName(const std::string& dn) const {
  if (connection_->IsName(dn)) return {};
  return {kLdapInvalidDnSyntax, "not a distinguished name: " + dn};
}

StoreStatus LdbStore::FileTrouble(StoreStatus status) const {
  return status.code == kLdapOther ? AboutFile(std::move(status)) : status;
}

StoreStatus LdbStore::Commit(LdbTransaction& transaction) const {
  StoreStatus status = lock_->KeepReadersOut();
  if (!status.Ok()) return status;
  status = transaction.Commit();
  if (connection_->IsStuck()) lock_->GiveUpFile();
  return AboutFile(std::move(status));
}

StoreStatus LdbStore::AboutFile(StoreStatus status) const {
  const std::string name = "the directory '" + path_ + "'";
  if (!status.Ok() && status.text.find(name) == std::string::npos) {
    status.text = name + ": " + status.text;
  }
  return status;
}

}  // namespace

StoreStatus OpenLdbStore(const std::string& path, const LdbStoreOptions& options,
                         std::unique_ptr<IDirectoryStore>& store) {
  store.reset();
  std::unique_ptr<LdbFileLock> lock;
  StoreStatus status = LdbFileLock::Open(path, options.lock_wait, lock);
  if (status.Ok()) status = CheckLdbFile(path, *lock);
  if (!status.Ok()) return status;

  std::unique_ptr<LdbConnection> connection;
  {
    LdbFileLock::Hold hold;
    status = lock->Acquire(Purpose::kOpen, hold);
    if (!status.Ok()) return status;
    using Mode = LdbConnection::Mode;
    status = LdbConnection::Open(lock->LibraryPath(),
                                 options.is_mapped ? Mode::kMapped : Mode::kExisting, connection);
  }
  if (!status.Ok()) {
    return {kLdapServerDown, "cannot open the directory '" + path + "': " + status.text};
  }
  auto opened = std::make_unique<LdbStore>(path, std::move(lock), std::move(connection));
  status = opened->Load();
  if (status.Ok()) store = std::move(opened);
  return status;
}

}  // namespace pelora::ldap
