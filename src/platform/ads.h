// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/unknown.h"
#include "platform/variant.h"

namespace pelora {

/// What `PutEx` does with the value it is given.
inline constexpr std::int32_t ADS_PROPERTY_CLEAR = 1;
inline constexpr std::int32_t ADS_PROPERTY_UPDATE = 2;
inline constexpr std::int32_t ADS_PROPERTY_APPEND = 3;
inline constexpr std::int32_t ADS_PROPERTY_DELETE = 4;

/// Flag of `ADsOpenObject`: bind as the user who runs the program.
inline constexpr std::uint32_t ADS_SECURE_AUTHENTICATION = 1;

/// One bound directory object with its property cache.
///
/// Attribute names compare without case. Strings are UTF-8. The object is used on one thread.
/// `QueryInterface` answers `IID_IADs` always and `IID_IADsUser`, `IID_IADsOU`, `IID_IADsContainer`
/// when the object is of such a class; the pointer it gives back is an `IADs` in each case.
class IADs : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IADs;

  /// Reads an attribute from the cache, which is filled from the directory by the first read of a
  /// name that it does not hold; values staged before survive the filling.
  ///
  /// One value gives its bare type, whatever the schema says; several give `kVariantArray` in no
  /// promised order. An attribute without values is `E_ADS_PROPERTY_NOT_FOUND`. On failure `value`
  /// is empty.
  [[nodiscard]] virtual HRESULT Get(std::string_view name, Variant& value) = 0;

  /// Stages the replacement of all values of an attribute by a value or an array of values. An
  /// array without elements stages the removal of the attribute. A value that the attribute's
  /// syntax cannot hold, and an attribute that the schema does not know, is
  /// `E_ADS_CANT_CONVERT_DATATYPE`; nothing is staged then. Staging again replaces what was staged
  /// for the attribute.
  [[nodiscard]] virtual HRESULT Put(std::string_view name, const Variant& value) = 0;

  /// Stages as `control` (`ADS_PROPERTY_*`) says: clear (the value is ignored), update (as `Put`),
  /// append or delete of an array of values. Another control is `E_ADS_BAD_PARAMETER`.
  [[nodiscard]] virtual HRESULT PutEx(std::int32_t control, std::string_view name,
                                      const Variant& value) = 0;

  /// Sends everything staged as one change that takes effect whole or not at all; with nothing
  /// staged nothing is sent and the answer is `S_OK`. After a failure what was staged stays staged.
  [[nodiscard]] virtual HRESULT SetInfo() = 0;

 protected:
  ~IADs() = default;
};

/// The directory, seen as the user who runs the program.
///
/// Paths have the form `LDAP://[server/]DN`, with a "/" inside the distinguished name written `\/`,
/// or `LDAP://[server/]rootDSE`.
class IDirectoryService {
 public:
  virtual ~IDirectoryService() = default;

  /// Binds the object of a path. On success `object` holds the interface `iid`; on failure it is
  /// empty and the code says why: `kNoSuchObject`, `E_ADS_BAD_PATHNAME`, `E_NOINTERFACE`, or the
  /// code of a failed connection. Of a path that begins otherwise systems say what they like.
  [[nodiscard]] virtual HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                             Ref<IADs>& object) = 0;

  /// Binds as `ADsGetObject` does, with a name and password (none: the user's own) and `flags`.
  [[nodiscard]] virtual HRESULT ADsOpenObject(const std::string& path,
                                              const std::optional<std::string>& user_name,
                                              const std::optional<std::string>& password,
                                              std::uint32_t flags, const Guid& iid,
                                              Ref<IADs>& object) = 0;

  /// Binds every path, in order, and gives the objects in that order. The first status that is not
  /// exactly `S_OK` is returned and `objects` is left empty. A directory behind a network may ask
  /// for all of them at once, as long as order, first failure and "nothing kept" stay the same, and
  /// may fill the objects' caches with what it read.
  [[nodiscard]] virtual HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                          std::vector<Ref<IADs>>& objects) {
    objects.clear();
    std::vector<Ref<IADs>> bound;
    bound.reserve(paths.size());
    for (const std::string& path : paths) {
      Ref<IADs> object;
      if (const HRESULT status = ADsGetObject(path, iid, object); status != S_OK) return status;
      bound.push_back(std::move(object));
    }
    objects = std::move(bound);
    return S_OK;
  }
};

}  // namespace pelora
