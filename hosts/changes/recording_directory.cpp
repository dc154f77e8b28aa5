// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/recording_directory.h"

#include <array>
#include <utility>

#include "hosts/changes/recording_memory.h"
#include "hosts/changes/recording_store.h"
#include "hosts/ldap/store_directory_service.h"

namespace pelora::changes {

class RecordingDirectory::Parts {
 public:
  Parts(ldap::IDirectoryStore& target, RecordingOptions options)
      : breathe(std::move(options.breathe)),
        memory(target.schema(), options.attributes, std::move(options.keeps)),
        store(target, memory, breathe),
        service(store, std::make_shared<ldap::StoreStatus>(),
                {.attributes = std::move(options.attributes), .witness = &store}) {}

  std::function<void()> breathe;
  RecordingMemory memory;
  RecordingStore store;
  ldap::StoreDirectoryService service;
};

RecordingDirectory::RecordingDirectory(ldap::IDirectoryStore& store, RecordingOptions options)
    : parts_(std::make_unique<Parts>(store, std::move(options))) {}

RecordingDirectory::~RecordingDirectory() = default;

HRESULT RecordingDirectory::ADsGetObject(const std::string& path, const Guid& iid,
                                         Ref<IADs>& object) {
  return parts_->service.ADsGetObject(path, iid, object);
}

HRESULT RecordingDirectory::ADsOpenObject(const std::string& path,
                                          const std::optional<std::string>& user_name,
                                          const std::optional<std::string>& password,
                                          std::uint32_t flags, const Guid& iid, Ref<IADs>& object) {
  return parts_->service.ADsOpenObject(path, user_name, password, flags, iid, object);
}

HRESULT RecordingDirectory::BindPaths(std::span<const std::string> paths, const Guid& iid,
                                      std::vector<Ref<IADs>>& objects) {
  return parts_->service.BindPaths(paths, iid, objects);
}

const ldap::StoreStatus& RecordingDirectory::last_failure() const {
  return parts_->service.last_failure();
}

ldap::IDirectoryStore& RecordingDirectory::store() { return parts_->store; }

void RecordingDirectory::Give(std::shared_ptr<const ldap::Entry> entry) {
  parts_->store.Give(std::move(entry));
}

AttributeValues RecordingDirectory::Seen(const std::string& dn, std::string_view attribute) const {
  return parts_->memory.Seen(dn, attribute);
}

std::vector<Change> RecordingDirectory::TakeRecorded() {
  return parts_->memory.Unwritten(parts_->breathe);
}

bool RecordingDirectory::HasRecorded() const { return parts_->memory.HasUnwritten(); }

void RecordingDirectory::Record(const Change& change) { parts_->memory.Record(change); }

void RecordingDirectory::Settle(const Change& change, const Result& result) {
  parts_->store.TakeBack(change.dn);
  parts_->memory.Settle(change, result);
}

void RecordingDirectory::AcceptAsSeen(const Result& result) { parts_->memory.AcceptAsSeen(result); }

void RecordingDirectory::Drop(const std::string& dn, std::string_view attribute) {
  parts_->memory.Drop(dn, attribute);
}

void RecordingDirectory::Forget(const std::string& dn) {
  parts_->store.TakeBack(dn);
  parts_->memory.Forget(dn);
}

std::shared_ptr<void> RecordingDirectory::ForgetAll() {
  return std::make_shared<std::array<std::shared_ptr<void>, 2>>(
      std::array{parts_->store.TakeAllBack(), parts_->memory.ForgetAll()});
}

void RecordingDirectory::LeaveOut(const std::string& dn) {
  parts_->store.TakeBack(dn);
  parts_->memory.LeaveOut(dn);
}

void RecordingDirectory::TakeInAgain(std::span<const std::string_view> attributes) {
  parts_->memory.TakeInAgain(attributes);
}

void RecordingDirectory::Breathe() const {
  if (parts_->breathe) parts_->breathe();
}

}  // namespace pelora::changes
