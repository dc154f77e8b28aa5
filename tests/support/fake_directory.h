// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ads.h"
#include "tests/support/fake_directory_state.h"
#include "tests/support/variant_text.h"

namespace pelora::testing {

/// A directory in memory, held to the same contract as the real ones.
///
/// It knows every attribute of the catalogue and the usual ones of a directory (`objectClass`,
/// `cn`, `displayName`, ...); `DefineAttribute` adds to them. The rootDSE is there from the start,
/// so that a connection test succeeds. Failures are injected by `FaultDirectory`, which wraps this
/// one.
///
///   FakeDirectory directory;
///   directory.AddObject("LDAP://CN=Ada,DC=x", {{"peloraAccount", Variant::Integer(1)}});
///   ... run the page ...
///   EXPECT_THAT(directory.Log(DirectoryCall::Kind::kPut),
///               ElementsAre("Put LDAP://CN=Ada,DC=x peloraHidden 1"));
///   EXPECT_EQ(directory.Value("LDAP://CN=Ada,DC=x", "peloraHidden"), Variant::Integer(1));
///   EXPECT_EQ(directory.live_objects(), 0U);
///
/// Bound objects may outlive the directory.
class FakeDirectory final : public IDirectoryService {
 public:
  FakeDirectory();

  /// Adds or replaces the object of a path. It offers `IID_IADs` and `interfaces`.
  void AddObject(const std::string& path, FakeAttributes attributes = {},
                 std::vector<Guid> interfaces = {IID_IADsUser});
  /// Objects bound before keep their cache and fail when they go to the directory.
  void RemoveObject(const std::string& path);
  /// Sets a committed value, as another administrator would; an empty one removes the attribute.
  /// Unlike `Put` it takes any type.
  void SetValue(const std::string& path, std::string_view name, Variant value);
  void DefineAttribute(std::string_view name, FakeAttributeType type);

  /// The committed value of an attribute; empty when there is none.
  [[nodiscard]] Variant Value(const std::string& path, std::string_view name) const;
  /// Everything committed on an object; nothing for an object that is not there.
  [[nodiscard]] std::optional<FakeAttributes> Values(const std::string& path) const;

  /// A new object, bound but not yet in the directory: its `SetInfo` adds it, whatever is staged,
  /// or fails with `kObjectAlreadyExists`. It has no values but those staged.
  [[nodiscard]] Ref<IADs> MakeNewObject(const std::string& path,
                                        std::vector<Guid> interfaces = {IID_IADsUser});

  /// Every call so far, failed ones too, in order.
  [[nodiscard]] const std::vector<DirectoryCall>& calls() const { return state_->calls; }
  [[nodiscard]] std::size_t CountOf(DirectoryCall::Kind kind) const;
  /// The calls as lines of text (see `ToText`): all of them, or those of the given kinds.
  [[nodiscard]] std::vector<std::string> Log() const;
  [[nodiscard]] std::vector<std::string> Log(DirectoryCall::Kind kind) const;
  [[nodiscard]] std::vector<std::string> Log(
      std::initializer_list<DirectoryCall::Kind> kinds) const;
  void ClearCalls() { state_->calls.clear(); }
  /// How often bound objects have gone to the directory to read.
  [[nodiscard]] std::size_t reads() const { return state_->reads; }
  /// Bound objects that have not been released.
  [[nodiscard]] std::size_t live_objects() const { return state_->live_objects; }

  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;

 private:
  [[nodiscard]] HRESULT Bind(const std::string& path, const Guid& iid, Ref<IADs>& object) const;

  std::shared_ptr<FakeDirectoryState> state_;
};

}  // namespace pelora::testing
