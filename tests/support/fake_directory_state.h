// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ads.h"

namespace pelora::testing {

/// Orders names and paths without regard to the case of ASCII letters.
struct NoCaseLess {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

/// Values of attributes by name. Several values of one attribute are an array.
using FakeAttributes = std::map<std::string, Variant, NoCaseLess>;

/// One call that reached the fake directory or an object bound from it.
struct DirectoryCall {
  enum class Kind : std::uint8_t { kGetObject, kOpenObject, kGet, kPut, kPutEx, kSetInfo };

  Kind kind = Kind::kGet;
  /// The path that was bound, as the caller wrote it.
  std::string path{};
  /// Attribute name of `kGet`, `kPut` and `kPutEx`.
  std::string name{};
  /// Control code of `kPutEx`, flags of `kOpenObject`.
  std::int32_t control = 0;
  /// Value of `kPut` and `kPutEx`.
  Variant value{};

  friend bool operator==(const DirectoryCall&, const DirectoryCall&) = default;
};

/// A call in one line: `Get PATH NAME`, `Put PATH NAME VALUE`, `PutEx CONTROL PATH NAME VALUE`,
/// `SetInfo PATH`, `ADsGetObject PATH`, `ADsOpenObject PATH FLAGS`.
[[nodiscard]] std::string ToText(const DirectoryCall& call);
void PrintTo(const DirectoryCall& call, std::ostream* out);

/// What the schema of the fake says of an attribute.
struct FakeAttributeType {
  /// `VT_I4`, `VT_BSTR`, or another code, whose values nothing can be turned into.
  VarType type = VT_BSTR;
  bool is_single_valued = true;
};

/// A committed object.
struct FakeEntry {
  FakeAttributes attributes;
  /// Offered beside `IID_IUnknown` and `IID_IADs`.
  std::vector<Guid> interfaces;
};

/// What the fake directory and the objects bound from it share.
struct FakeDirectoryState {
  /// By distinguished name as it stands in the path, "rootDSE" for the root.
  std::map<std::string, FakeEntry, NoCaseLess> entries;
  std::map<std::string, FakeAttributeType, NoCaseLess> schema;
  std::vector<DirectoryCall> calls;
  std::size_t reads = 0;
  std::size_t live_objects = 0;
};

}  // namespace pelora::testing
