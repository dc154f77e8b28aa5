// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ads.h"
#include "platform/counted.h"
#include "tests/support/fake_directory_state.h"

namespace pelora::testing {

/// An object bound from a `FakeDirectory`, with its property cache. Born with a count of 1.
class FakeDirectoryObject final : public Counted<IADs> {
 public:
  /// `key` names the entry in `state`; `path` is what calls are logged with. A new object has no
  /// entry until `SetInfo` makes one.
  FakeDirectoryObject(std::shared_ptr<FakeDirectoryState> state, std::string path, std::string key,
                      std::vector<Guid> interfaces, bool is_new);

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;

  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override;
  [[nodiscard]] HRESULT Put(std::string_view name, const Variant& value) override;
  [[nodiscard]] HRESULT PutEx(std::int32_t control, std::string_view name,
                              const Variant& value) override;
  [[nodiscard]] HRESULT SetInfo() override;

 private:
  struct Staged {
    std::int32_t control;
    std::vector<Variant> values;
  };

  ~FakeDirectoryObject() override;

  [[nodiscard]] FakeEntry* FindEntry() const;
  [[nodiscard]] HRESULT Fill();
  [[nodiscard]] HRESULT Refresh(const std::string& name);
  [[nodiscard]] HRESULT Stage(std::int32_t control, std::string_view name, const Variant& value);
  [[nodiscard]] HRESULT Apply(FakeAttributes& attributes) const;
  void SettleCache();

  std::shared_ptr<FakeDirectoryState> state_;
  std::string path_;
  std::string key_;
  std::vector<Guid> interfaces_;
  bool is_new_;
  bool is_filled_ = false;
  std::map<std::string, std::vector<Variant>, NoCaseLess> cache_;
  std::map<std::string, Staged, NoCaseLess> staged_;
  /// Names whose values have to be read again.
  std::set<std::string, NoCaseLess> dropped_;
};

}  // namespace pelora::testing
