// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/ads.h"

// The contract of the directory port (platform/ads.h), as one suite that every directory runs:
//
//   INSTANTIATE_TEST_SUITE_P(Fake, DirectoryContract, ::testing::Values(&MakeFakeDirectory));
//
// in a program that links pelora_directory_contract.

namespace pelora::contract {

enum class ObjectKind : std::uint8_t { kUser, kGroup, kOrganizationalUnit };

/// Attribute values as the directory stores them, by name: integers in decimal, Booleans as "TRUE"
/// and "FALSE".
using StoredAttributes = std::map<std::string, std::vector<std::string>>;

/// One directory with the attributes of the catalogue, made anew (or cleared) for each test, and
/// the way behind the port's back: what another administrator does and sees.
class DirectoryUnderTest {
 public:
  virtual ~DirectoryUnderTest() = default;

  [[nodiscard]] virtual IDirectoryService& Service() = 0;
  /// What stands in front of a distinguished name in a path.
  [[nodiscard]] virtual std::string PathPrefix() const { return "LDAP://"; }
  /// Name of an object under which the tests may put theirs.
  [[nodiscard]] virtual std::string Container() const = 0;

  /// Makes an object; its name is in the form that the directory delivers.
  virtual void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) = 0;
  virtual void Remove(const std::string& dn) = 0;
  /// Gives an attribute exactly these values; none removes it.
  virtual void Set(const std::string& dn, const std::string& attribute,
                   const std::vector<std::string>& values) = 0;
  /// Everything that is stored on an object.
  [[nodiscard]] virtual StoredAttributes Stored(const std::string& dn) = 0;
};

using DirectoryFactory = std::unique_ptr<DirectoryUnderTest> (*)();

class DirectoryContract : public ::testing::TestWithParam<DirectoryFactory> {
 protected:
  /// The user that most tests are about.
  static constexpr const char* kUser = "CN=Ada Brandt";

  [[nodiscard]] DirectoryUnderTest& Directory() { return *directory_; }
  [[nodiscard]] IDirectoryService& Service() { return directory_->Service(); }

  /// Name and path of the object `rdn` of the tests' container.
  [[nodiscard]] std::string DnOf(const std::string& rdn) const;
  [[nodiscard]] std::string PathOf(const std::string& rdn) const;

  void AddUser(const std::string& rdn, const StoredAttributes& attributes = {});
  void SetOnUser(const std::string& attribute, const std::vector<std::string>& values);
  /// Values of one attribute of the user, in ascending order.
  [[nodiscard]] std::vector<std::string> StoredOnUser(const std::string& attribute);

  /// Binds an object that has to be there.
  [[nodiscard]] Ref<IADs> Bind(const std::string& rdn, const Guid& iid = IID_IADs);
  /// The user, made with these attributes and bound.
  [[nodiscard]] Ref<IADs> BindUserWith(const StoredAttributes& attributes);

 private:
  std::unique_ptr<DirectoryUnderTest> directory_ = GetParam()();
};

/// Reads an attribute that has to be there.
[[nodiscard]] Variant ValueOf(IADs& object, const std::string& name);
/// The strings of a value, one or an array, in ascending order.
[[nodiscard]] std::vector<std::string> StringsOf(const Variant& value);

}  // namespace pelora::contract
