// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/change_log.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/forwarding_store.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::changes {

using ldap::Entry;
using ldap::IDirectoryStore;
using ldap::StoreStatus;

/// A change of one attribute.
[[nodiscard]] inline Change MakeChange(const std::string& dn, ValueChange value) {
  return {.kind = Change::Kind::kModify, .dn = dn, .attributes = {std::move(value)}};
}

/// A log in memory.
class MemoryLog final : public IChangeLog {
 public:
  std::vector<Change> notes;
  std::vector<NoteId> withdrawn;
  /// What the next notes answer instead of being taken, unless it is a success.
  StoreStatus failure;

  [[nodiscard]] StoreStatus Note(std::span<const Change> changes, NoteId& first) override {
    if (!failure.Ok()) return failure;
    first = notes.size();
    notes.insert(notes.end(), changes.begin(), changes.end());
    return {};
  }
  void Withdraw(NoteId note) override { withdrawn.push_back(note); }
};

/// Forwards to a store, and lets a test come in between or answer instead.
class InterruptedStore : public ldap::ForwardingStore {
 public:
  explicit InterruptedStore(IDirectoryStore& target) : ForwardingStore(target) {}

  /// Called before every strict modification; may give what is answered instead of doing it.
  std::function<std::optional<StoreStatus>(std::size_t count)> before_write;
  /// Called before every reading of one object.
  std::function<std::optional<StoreStatus>()> before_read;
  std::size_t writes = 0;
  std::size_t reads = 0;

  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override {
    ++reads;
    if (before_read) {
      if (std::optional<StoreStatus> answer = before_read()) return *answer;
    }
    return ForwardingStore::Read(dn, attributes, entry);
  }
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ldap::ReadSink& sink) override {
    return IDirectoryStore::ReadMany(dns, attributes, sink);
  }
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const ldap::Modification> modifications) override {
    const std::size_t count = writes++;
    if (before_write) {
      if (std::optional<StoreStatus> answer = before_write(count)) return *answer;
    }
    return ForwardingStore::ModifyStrictly(dn, modifications);
  }
  /// Fetches so many requests before it does the first of them, as a network's store does.
  std::size_t fetches_ahead = 1;
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    std::deque<ldap::ModifyRequest> fetched;
    bool is_more = true;
    while (is_more || !fetched.empty()) {
      if (is_more && fetched.size() < fetches_ahead) {
        std::optional<ldap::ModifyRequest> request = next();
        is_more = request.has_value();
        if (request) fetched.push_back(std::move(*request));
      } else {
        sink(ModifyStrictly(fetched.front().dn, fetched.front().modifications));
        fetched.pop_front();
      }
    }
  }
};

/// The sample company in a file, open.
class ChangesBench : public ldap::LdbBench {
 protected:
  void Store(const std::string& attribute, const AttributeValues& values) {
    const StoreStatus status = Replace(*store_, kUser, attribute, values);
    ASSERT_TRUE(status.Ok()) << status.text;
  }
  [[nodiscard]] AttributeValues Stored(const std::string& attribute) {
    return Read(*store_, kUser, attribute);
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
  InterruptedStore interrupted_{*store_};
  MemoryLog log_;
};

}  // namespace pelora::changes
