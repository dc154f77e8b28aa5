// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/directory_store.h"
#include "platform/ads.h"

namespace pelora::changes {

struct RecordingOptions {
  /// What is read of an object when it is bound, `objectClass` besides: what the tabs know, unless
  /// something else is said. None: all of it. Another attribute that is asked for is read then, by
  /// itself.
  std::vector<std::string> attributes = ldap::BoundAttributes();
  /// Whether what is staged of an attribute is kept. Empty: everything is.
  std::function<bool(std::string_view attribute)> keeps{};
  /// Called with every value that a page is told and every object that it writes, that is at hand
  /// when it is read, or that is taken: where there are many of them, a face may look after its
  /// window meanwhile. May be none.
  std::function<void()> breathe{};
};

/// The directory port for pages whose changes the host itself writes: it reads from a store, and
/// `SetInfo` sends nothing but is recorded as a change.
///
/// A page binds its objects anew for every loading and every apply; what it was told in between is
/// remembered here, by the object's name. What a change takes as seen is what the page was last
/// told of the attribute by `Get`, or, when it never asked, what the last binding read; after a
/// write that was done it is what was written. What a page stages as it was seen is no change.
///
///   page.Apply();                                   // stages and commits
///   for (Change& change : directory.TakeRecorded()) {
///     const Result result = writer.Write(change);   // or the runner's, elsewhere
///     directory.Settle(change, result);
///   }
///
/// What was recorded and not written stays pending: it goes along with the next recording, unless
/// it is staged again. So an edit outlives a failed write, though the page has forgotten it.
///
/// Used on one thread. The store outlives it, and it outlives the objects bound from it.
class RecordingDirectory final : public IDirectoryService {
 public:
  explicit RecordingDirectory(ldap::IDirectoryStore& store, RecordingOptions options = {});
  ~RecordingDirectory() override;
  RecordingDirectory(const RecordingDirectory&) = delete;
  RecordingDirectory& operator=(const RecordingDirectory&) = delete;

  // A path's server is not looked at: the store is the directory.
  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;
  [[nodiscard]] HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects) override;

  /// What the store said of the last request that failed; success when none has failed yet.
  [[nodiscard]] const ldap::StoreStatus& last_failure() const;

  /// The store as the recording sees it: changes and additions sent to it are recorded, and an
  /// object whose addition was recorded can be read. For what makes objects itself, as a wizard's
  /// host does.
  [[nodiscard]] ldap::IDirectoryStore& store();

  /// Hands over an object that has been read already, with at least what a binding would read, its
  /// `objectClass` included: bindings take it in place of asking the store, until it is forgotten
  /// or a change of it is settled. Several recordings may share it.
  void Give(std::shared_ptr<const ldap::Entry> entry);

  /// What counts as seen of an attribute of an object; none: not set, or never read.
  [[nodiscard]] AttributeValues Seen(const std::string& dn, std::string_view attribute) const;

  /// What has been recorded since it was last taken, and what is pending, one change for each
  /// object, in the order in which the objects were first recorded. Changes of nothing are left
  /// out. Until it is settled, a change that was taken counts as pending.
  [[nodiscard]] std::vector<Change> TakeRecorded();
  /// Whether `TakeRecorded` would give something.
  [[nodiscard]] bool HasRecorded() const;

  /// Records a change of an object in place of what is recorded of the same attributes. For what
  /// knows by itself what it has seen; of lists `seen` and `wanted` may be what is taken out and
  /// put in alone.
  void Record(const Change& change);

  /// Tells what became of a change that was taken. Done: what was written is what the page has
  /// seen. Not done: the change stays pending.
  void Settle(const Change& change, const Result& result);

  /// The user has been shown the conflicts: what they say is there counts as seen from now on, for
  /// what is pending too, so that the next write, if there is one, replaces it knowingly.
  void AcceptAsSeen(const Result& result);

  /// Drops what is recorded of one attribute of an object. What a page was told of it stays: a page
  /// that stages it once more starts from that.
  void Drop(const std::string& dn, std::string_view attribute);

  /// Drops what is known and recorded of an object, what is pending included.
  void Forget(const std::string& dn);

  /// Forgets everything that is known and recorded, and hands it over: of thousands of objects it
  /// takes its time to go, and may do so on any thread.
  [[nodiscard]] std::shared_ptr<void> ForgetAll();

  /// As `Forget`, for an object that is not to be changed so: what was recorded of it is not
  /// recorded again, though a page that could not be written for others stages all of them anew;
  /// not until it is staged with another value, or taken in again.
  void LeaveOut(const std::string& dn);
  /// These attributes were edited once more: what is staged of them counts for every object.
  void TakeInAgain(std::span<const std::string_view> attributes);

  /// For what goes over many objects beside what is recorded here: see `RecordingOptions`.
  void Breathe() const;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace pelora::changes
