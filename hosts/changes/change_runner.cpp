// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change_runner.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <utility>

#include "hosts/changes/change_work.h"
#include "hosts/changes/change_writer.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/reads_ahead.h"

namespace pelora::changes {
namespace {

using ldap::StoreStatus;

/// Objects that are read, prepared and noted together.
constexpr std::size_t kTogether = 256;
/// As many of a store that reads ahead: it can be at it while the last ones are worked out.
constexpr std::size_t kMostTogether = 2048;

/// Whether a change was not sent for a reason that keeps the others from being sent, too: no server
/// can be reached, or the ticket to sign in with has ended.
bool IsWithoutServer(const StoreStatus& answer) {
  return answer.code == ldap::kLdapServerDown || answer.code == ldap::kLdapInvalidCredentials;
}

bool IsWithoutServer(const Result& result) {
  const auto is_of = [&result](int code) { return result.code == ldap::HresultOfLdap(code); };
  return result.outcome == Outcome::kFailed &&
         (is_of(ldap::kLdapServerDown) || is_of(ldap::kLdapInvalidCredentials));
}

/// The work on one object, from its preparation to its result.
struct Job {
  std::size_t at = 0;
  Change change{};
  std::optional<IChangeLog::NoteId> note{};
  std::optional<Result> result{};
  /// The object has to be looked at when what comes before is done, and nothing is noted until
  /// then.
  bool needs_look = false;

  [[nodiscard]] bool IsAlone() const { return needs_look || change.kind != Change::Kind::kModify; }
};

class Run {
 public:
  Run(ldap::IDirectoryStore& store, IWork& work, const RunOptions& options, const ResultSink& sink)
      : store_(store),
        work_(work),
        options_(options),
        sink_(sink),
        writer_(store, options.log, options.lists),
        is_in_turn_(options.stops_at_first || options.is_rehearsal) {}

  Tally Do() {
    do {
      store_.ModifyManyStrictly([this] { return Next(); },
                                [this](StoreStatus answer) { TakeAnswer(std::move(answer)); });
    } while (WriteAlone());
    SkipTheRest();
    if (thrown_) std::rethrow_exception(thrown_);
    return tally_;
  }

 private:
  /// The next request; none at the end, and where a change has to be written alone.
  std::optional<ldap::ModifyRequest> Next() {
    while (true) {
      if (options_.stop.stop_requested()) is_ended_ = true;
      if (is_ended_) return std::nullopt;
      if (Job* const job = FirstUnsent(); job != nullptr) {
        if (job->IsAlone()) return std::nullopt;
        ++sent_;
        return ldap::ModifyRequest{job->change.dn, GuardedRequest(store_.schema(), job->change)};
      }
      if (next_ == work_.count()) return std::nullopt;
      PrepareSome();
    }
  }

  /// Jobs that have no result and were not sent stand behind those that were.
  Job* FirstUnsent() {
    for (; sent_ < jobs_.size(); ++sent_) {
      if (!jobs_[sent_].result) return &jobs_[sent_];
    }
    return nullptr;
  }

  /// Answers come in the order of the requests: this one is that of the first job without a result.
  void TakeAnswer(StoreStatus answer) {
    Job& job = jobs_.front();
    if (IsWithoutServer(answer)) is_ended_ = true;
    job.result = writer_.Finish(std::move(job.change), job.note.value_or(0), std::move(answer));
    Tell();
  }

  /// Writes by itself what is no modification, or has to be looked at first; whether the run goes
  /// on.
  bool WriteAlone() {
    if (is_ended_) return false;
    Job* const job = FirstUnsent();
    if (job == nullptr) return false;
    ++sent_;
    if (job->needs_look) {
      job->result = writer_.Write(std::move(job->change));
      if (IsWithoutServer(*job->result)) is_ended_ = true;
      Tell();
      if (!is_ended_) NoteAll();
      return true;
    }
    TakeAnswer(writer_.Send(job->change));
    return true;
  }

  void PrepareSome() {
    const std::size_t end = std::min(next_ + together_, work_.count());
    // The first results are not to be waited for.
    if (!is_in_turn_ && work_.ReadsAhead()) together_ = std::min(2 * together_, kMostTogether);
    try {
      const StoreStatus read = work_.Read(next_, end);
      work_.Announce(end, std::min(end + together_, work_.count()));
      while (next_ < end && !is_ended_) {
        if (options_.stop.stop_requested()) break;
        PrepareOne();
      }
      if (!read.Ok()) is_ended_ = true;
      if (!is_in_turn_) NoteAll();
    } catch (...) {
      thrown_ = std::current_exception();
      is_ended_ = true;
    }
    Tell();
  }

  void PrepareOne() {
    Prepared prepared = work_.PrepareOne(next_);
    Job job{.at = next_, .change = std::move(prepared.change), .result = prepared.instead};
    if (!job.result) DropWhatChangesNothing(store_.schema(), job.change);
    if (!job.result && !job.IsAlone() && job.change.attributes.empty()) {
      // The prepared change knows how the directory writes the name.
      const std::string& known = job.change.dn;
      job.result =
          Result{.dn = known.empty() ? work_.NameOf(next_) : known, .outcome = Outcome::kUnchanged};
    }
    if (!job.result && is_in_turn_) job.result = WriteInTurn(std::move(job.change));
    if (!job.result && writer_.NeedsLook(job.change)) Look(job);
    if (options_.stops_at_first && !job.result->IsDone()) is_ended_ = true;
    jobs_.push_back(std::move(job));
    ++next_;
    if (is_in_turn_) Tell();
  }

  void Look(Job& job) {
    if (const ldap::Entry* const there = work_.LookedAt(job.at)) {
      job.result = writer_.Judge(job.change, *there);
    } else {
      job.needs_look = true;
    }
  }

  Result WriteInTurn(Change change) {
    if (!options_.is_rehearsal) return writer_.Write(std::move(change));
    if (!work_.IsFresh()) return writer_.Rehearse(std::move(change));
    IChangeLog::NoteId note = 0;
    const StoreStatus noted =
        options_.log == nullptr ? StoreStatus{} : options_.log->Note({&change, 1}, note);
    if (noted.Ok()) return {.dn = std::move(change.dn), .outcome = Outcome::kChanged};
    is_ended_ = true;
    return NotDone(std::move(change.dn), noted);
  }

  /// Notes what has been prepared and not been sent, in one go, up to what has to be looked at
  /// first: notes stand in the order in which changes are sent.
  void NoteAll() {
    if (options_.log == nullptr) return;
    std::vector<Change> changes;
    std::size_t end = sent_;
    for (; end < jobs_.size() && !jobs_[end].needs_look; ++end) {
      if (!jobs_[end].result) changes.push_back(jobs_[end].change);
    }
    if (changes.empty()) return;
    IChangeLog::NoteId note = 0;
    const StoreStatus noted = options_.log->Note(changes, note);
    if (!noted.Ok()) is_ended_ = true;
    for (std::size_t at = sent_; at < end; ++at) {
      Job& job = jobs_[at];
      if (job.result) continue;
      if (noted.Ok()) {
        job.note = note++;
      } else {
        job.result = NotDone(job.change.dn, noted);
      }
    }
  }

  /// Tells the results that are there, up to the first that is not.
  void Tell() {
    while (!jobs_.empty() && jobs_.front().result) {
      const Job job = std::move(jobs_.front());
      jobs_.pop_front();
      if (sent_ > 0) --sent_;
      TellOne(job.at, *job.result);
    }
  }

  void TellOne(std::size_t at, const Result& result) {
    tally_.Count(result.outcome);
    sink_(at, result);
  }

  void SkipTheRest() {
    for (Job& job : jobs_) {
      if (job.result) continue;
      if (job.note) options_.log->Withdraw(*job.note);
      job.result = Skipped(job.at);
    }
    Tell();
    for (; next_ < work_.count(); ++next_) TellOne(next_, Skipped(next_));
  }

  [[nodiscard]] Result Skipped(std::size_t at) const {
    return {.dn = work_.NameOf(at), .outcome = Outcome::kSkipped};
  }

  ldap::IDirectoryStore& store_;
  IWork& work_;
  const RunOptions& options_;
  const ResultSink& sink_;
  ChangeWriter writer_;
  bool is_in_turn_;
  /// Jobs in the objects' order, from the first whose result has not been told.
  std::deque<Job> jobs_;
  /// How many of them, from the first, were sent or have a result.
  std::size_t sent_ = 0;
  /// The first object that has not been prepared, and how many are next.
  std::size_t next_ = 0;
  std::size_t together_ = kTogether;
  bool is_ended_ = false;
  std::exception_ptr thrown_;
  Tally tally_;
};

/// Objects that have to be read before it is known what becomes of them.
class ReadWork final : public IWork {
 public:
  ReadWork(ldap::IDirectoryStore& store, std::span<const std::string> names, const Prepare& prepare,
           const RunOptions& options)
      : store_(store),
        ahead_(dynamic_cast<ldap::IReadsAhead*>(&store)),
        names_(names),
        prepare_(prepare),
        options_(options) {}

  [[nodiscard]] std::size_t count() const override { return names_.size(); }
  [[nodiscard]] std::string NameOf(std::size_t at) const override { return names_[at]; }
  [[nodiscard]] StoreStatus Read(std::size_t begin, std::size_t end) override {
    // They are mostly those that were announced.
    Batch batch = std::exchange(announced_, {});
    if (batch.begin != begin || batch.objects.size() != end - begin) batch = BatchOf(begin, end);
    begin_ = begin;
    objects_ = std::move(batch.objects);
    std::size_t next = 0;
    StoreStatus status =
        store_.ReadMany(batch.dns, options_.attributes, [&](StoreStatus read, ldap::Entry entry) {
          ReadObject& object = objects_[batch.places[next++]];
          object.status = std::move(read);
          object.entry = std::move(entry);
          return true;
        });
    for (; !status.Ok() && next < batch.places.size(); ++next) {
      objects_[batch.places[next]].status = status;
    }
    return status;
  }
  [[nodiscard]] Prepared PrepareOne(std::size_t at) override {
    return prepare_(std::move(objects_[at - begin_]));
  }
  void Announce(std::size_t begin, std::size_t end) override {
    if (ahead_ == nullptr) return;
    announced_ = BatchOf(begin, end);
    ahead_->Expect(announced_.dns, options_.attributes);
  }
  [[nodiscard]] bool ReadsAhead() const override { return ahead_ != nullptr; }
  [[nodiscard]] bool IsFresh() const override { return true; }

 private:
  /// Objects that follow each other, as far as they are at hand, and the names and places (from 0)
  /// of those that have to be read.
  struct Batch {
    std::size_t begin = 0;
    std::vector<ReadObject> objects;
    std::vector<std::string> dns;
    std::vector<std::size_t> places;
  };

  [[nodiscard]] Batch BatchOf(std::size_t begin, std::size_t end) const {
    Batch batch{.begin = begin, .objects = {}, .dns = {}, .places = {}};
    for (std::size_t at = begin; at < end; ++at) {
      ReadObject& object = batch.objects.emplace_back(ReadObject{.at = at});
      const ldap::Entry* const entry = options_.at_hand ? options_.at_hand(at) : nullptr;
      if (entry != nullptr) {
        object.entry = *entry;
      } else if (!names_[at].empty()) {
        batch.places.push_back(at - begin);
        batch.dns.push_back(names_[at]);
      }
    }
    return batch;
  }

  ldap::IDirectoryStore& store_;
  /// The same; null when it does not read ahead.
  ldap::IReadsAhead* ahead_;
  std::span<const std::string> names_;
  const Prepare& prepare_;
  const RunOptions& options_;
  /// What was read last, from which object on.
  std::vector<ReadObject> objects_;
  std::size_t begin_ = 0;
  /// What will be read next.
  Batch announced_;
};

}  // namespace

bool Tally::IsAllDone() const {
  const Tally& tally = *this;
  return tally[Outcome::kRefused] + tally[Outcome::kFailed] + tally[Outcome::kUnknown] +
             tally[Outcome::kSkipped] ==
         0;
}

std::string Tally::Text() const {
  std::string text;
  for (std::size_t at = 0; at < counts_.size(); ++at) {
    if (at > 0) text += ", ";
    text += std::to_string(counts_.at(at)) + " ";
    text += WordOf(static_cast<Outcome>(at));
  }
  return text;
}

Tally RunChanges(ldap::IDirectoryStore& store, std::span<const std::string> names,
                 const Prepare& prepare, const RunOptions& options, const ResultSink& sink) {
  ReadWork work(store, names, prepare, options);
  return Run(store, work, options, sink).Do();
}

Tally RunChanges(ldap::IDirectoryStore& store, std::span<const Change> changes,
                 const RunOptions& options, const ResultSink& sink) {
  KnownWork work(store, changes, options.lists);
  return Run(store, work, options, sink).Do();
}

}  // namespace pelora::changes
