// SPDX-License-Identifier: Apache-2.0
#include "directory/select_ad_object.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <utility>

#include "directory/selection_reader.h"
#include "platform/dialog_controller.h"

namespace pelora {
namespace {

/// Every type of scope but the workgroup.
constexpr std::uint32_t kAllScopes = 0x37F;
/// The domain that the computer is joined to, in up-level and down-level form.
constexpr std::uint32_t kJoinedDomain = 0x6;

constexpr std::uint32_t kStartingScope = 0x1;
constexpr std::uint32_t kLdapPaths = 0x4;
constexpr std::uint32_t kShowUsers = 0x40;
constexpr std::uint32_t kShowGroups = 0x80;

constexpr std::uint32_t kUpLevelUsers = 0x2;
/// Universal, global and domain-local groups, for security and for distribution.
constexpr std::uint32_t kUpLevelGroups = 0x3F0;
constexpr std::uint32_t kUpLevelComputers = 0x800;
constexpr std::uint32_t kDownLevelUsers = 0x80000001;
constexpr std::uint32_t kDownLevelComputers = 0x80000008;
/// Local and global groups, no built-in ones; alone and with users.
constexpr std::uint32_t kDownLevelGroups = 0x80008006;
constexpr std::uint32_t kDownLevelUsersAndGroups = 0x80008007;

constexpr std::uint32_t kMultiselect = 0x1;
constexpr std::uint32_t kSkipTargetComputerCheck = 0x2;

/// One kind of search with the object picker.
struct SetUp {
  ObjectPickerScope scope;
  /// Read from each chosen object; its text stands for the object.
  std::string_view attribute;
};

constexpr SetUp InEveryMode(std::uint32_t shown, std::uint32_t up_level, std::uint32_t down_level) {
  return {.scope = {.types = kAllScopes,
                    .flags = kStartingScope | kLdapPaths | shown,
                    .up_level_both_modes = up_level,
                    .up_level_mixed_mode = up_level,
                    .up_level_native_mode = up_level,
                    .down_level = down_level},
          .attribute = "distinguishedName"};
}

/// In the order of `SelectADObject::Search`.
constexpr std::array<SetUp, 4> kSetUps = {
    InEveryMode(kShowUsers, kUpLevelUsers, kDownLevelUsers),
    InEveryMode(kShowUsers | kShowGroups, kUpLevelUsers | kUpLevelGroups, kDownLevelUsersAndGroups),
    InEveryMode(kShowGroups, kUpLevelGroups, kDownLevelGroups),
    SetUp{.scope = {.types = kJoinedDomain,
                    .up_level_both_modes = kUpLevelComputers,
                    .down_level = kDownLevelComputers},
          .attribute = "cn"},
};

/// OK and Cancel, the default form and no other, the query issued at once.
constexpr std::uint32_t kQueryWindow = 0x63;
constexpr std::uint32_t kQuerySingleSelection = 0x4;
constexpr std::uint32_t kQueryNoSave = 0x1;
constexpr Guid kDsQueryHandler{
    0x8A23E65E, 0x31C2, 0x11D0, {0x89, 0x1C, 0x00, 0xA0, 0x24, 0xAB, 0x2D, 0xBB}};
constexpr Guid kContainerForm{
    0xC1B3CBF2, 0x886A, 0x11D0, {0x91, 0x40, 0x00, 0xAA, 0x00, 0xC1, 0x6E, 0x65}};

constexpr ContainerBrowserInit kEntireDirectory = {.flags = 0x90000, .path_capacity = 260};

}  // namespace

HRESULT SelectADObject::SelectUsers(ChooserOwner owner, std::vector<std::string>& names,
                                    SelectionMode mode) const {
  return PickObjects(Search::kUsers, owner, names, mode);
}

HRESULT SelectADObject::SelectUsersAndGroups(ChooserOwner owner, std::vector<std::string>& names,
                                             SelectionMode mode) const {
  return PickObjects(Search::kUsersAndGroups, owner, names, mode);
}

HRESULT SelectADObject::SelectGroups(ChooserOwner owner, std::vector<std::string>& names,
                                     SelectionMode mode) const {
  return PickObjects(Search::kGroups, owner, names, mode);
}

HRESULT SelectADObject::SelectComputers(ChooserOwner owner, std::vector<std::string>& names,
                                        SelectionMode mode) const {
  return PickObjects(Search::kComputers, owner, names, mode);
}

HRESULT SelectADObject::SelectContainers(ChooserOwner owner, std::vector<std::string>& names,
                                         SelectionMode mode) const {
  std::unique_ptr<ICommonQuery> query;
  HRESULT status = platform_.choosers.CreateCommonQuery(query);
  if (FAILED(status)) return status;
  const bool single = mode == SelectionMode::kSingle;
  Ref<IDataObject> chosen;
  status = query->OpenQueryWindow(
      owner,
      {.window_flags = single ? kQueryWindow | kQuerySingleSelection : kQueryWindow,
       .handler = kDsQueryHandler,
       .default_form = kContainerForm,
       .handler_flags = kQueryNoSave},
      chosen);
  if (FAILED(status)) return status;

  std::vector<std::string> paths;
  status = ReadSelection(chosen.Get(), kDsObjectNamesFormat, paths);
  if (FAILED(status)) return status;
  std::ranges::transform(paths, paths.begin(), StripPath);
  names = std::move(paths);
  return S_OK;
}

HRESULT SelectADObject::BrowseContainer(std::string& name) const {
  std::string path;
  if (platform_.choosers.BrowseForContainer(kEntireDirectory, path) != kDialogOk) return E_FAIL;
  name = StripPath(path);
  return S_OK;
}

HRESULT SelectADObject::PickObjects(Search search, ChooserOwner owner,
                                    std::vector<std::string>& names, SelectionMode mode) const {
  const SetUp& set_up = kSetUps.at(static_cast<std::size_t>(search));
  const bool single = mode == SelectionMode::kSingle;
  std::unique_ptr<IDsObjectPicker> picker;
  HRESULT status = platform_.choosers.CreateObjectPicker(picker);
  if (FAILED(status)) return status;
  status = picker->Initialize(
      {.scope = set_up.scope,
       .options = single ? kSkipTargetComputerCheck : kSkipTargetComputerCheck | kMultiselect});
  if (FAILED(status)) return status;
  Ref<IDataObject> chosen;
  status = picker->InvokeDialog(owner, chosen);
  if (FAILED(status)) return status;

  std::vector<std::string> read;
  status = ReadSelection(chosen.Get(), kDsSelectionListFormat, read);
  if (FAILED(status)) return status;
  for (std::string& entry : read) {
    std::string name;
    status = ReadName(entry, set_up.attribute, name);
    if (FAILED(status)) return status;
    entry = std::move(name);
  }
  names = std::move(read);
  return S_OK;
}

HRESULT SelectADObject::ReadName(const std::string& path, std::string_view attribute,
                                 std::string& name) const {
  Ref<IADs> object;
  HRESULT status = platform_.directory.ADsGetObject(path, IID_IADs, object);
  if (FAILED(status)) return status;
  if (!object) return E_UNEXPECTED;
  Variant value;
  status = object->Get(attribute, value);
  if (FAILED(status)) return status;
  if (value.type() != VT_BSTR) return E_ADS_CANT_CONVERT_DATATYPE;
  name = value.string();
  return S_OK;
}

std::string StripPath(std::string_view path) {
  constexpr std::size_t kSchemeLength = std::string_view("LDAP://").size();
  path.remove_prefix(std::min(kSchemeLength, path.size()));
  // npos wraps to 0: without a "/" nothing more is dropped.
  path.remove_prefix(path.find('/') + 1);
  return std::string(path);
}

}  // namespace pelora
