// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fake_directory.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "directory/ascii_case.h"
#include "directory/attribute_catalogue.h"
#include "tests/support/fake_directory_object.h"

namespace pelora::testing {
namespace {

constexpr std::string_view kScheme = "LDAP://";
constexpr std::string_view kRoot = "rootDSE";

/// Where the first `wanted` stands that is not escaped.
std::size_t FindBare(std::string_view text, char wanted) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == wanted) {
      return at;
    }
  }
  return std::string_view::npos;
}

/// Whether every part of a name has the form `attribute=value`.
bool IsName(std::string_view name) {
  const std::size_t comma = FindBare(name, ',');
  const std::string_view part = name.substr(0, comma);
  const std::size_t equals = part.find('=');
  if (equals == 0 || equals == std::string_view::npos || equals + 1 == part.size()) return false;
  return comma == std::string_view::npos || IsName(name.substr(comma + 1));
}

/// The entry's key of a path: what stands behind the server's name. Nothing for a path that is
/// none.
std::optional<std::string> KeyOf(std::string_view path) {
  if (!path.starts_with(kScheme)) return std::nullopt;
  path.remove_prefix(kScheme.size());
  const std::size_t slash = FindBare(path, '/');
  const bool has_server = slash != std::string_view::npos && slash > 0 &&
                          path.substr(0, slash).find('=') == std::string_view::npos;
  if (has_server) path.remove_prefix(slash + 1);
  const bool is_name = FindBare(path, '/') == std::string_view::npos && IsName(path);
  if (!EqualsWithoutCase(path, kRoot) && !is_name) return std::nullopt;
  return std::string(path);
}

std::string RequireKey(const std::string& path) {
  std::optional<std::string> key = KeyOf(path);
  if (!key) throw std::invalid_argument("not a path: " + path);
  return *std::move(key);
}

VarType TypeOf(Encoding encoding) {
  return encoding == Encoding::kFlag || encoding == Encoding::kInteger ? VT_I4 : VT_BSTR;
}

constexpr auto kOrdinaryAttributes = std::to_array<std::string_view>(
    {"cn", "ou", "displayName", "givenName", "sn", "sAMAccountName", "userPrincipalName"});

}  // namespace

bool NoCaseLess::operator()(std::string_view left, std::string_view right) const {
  // A plain loop over what mostly is the same: tests are compiled as they stand, and every map asks
  // this.
  const std::size_t common = std::min(left.size(), right.size());
  const char* const one = left.data();
  const char* const other = right.data();
  for (std::size_t index = 0; index < common; ++index) {
    if (one[index] == other[index]) continue;
    const char lower = AsciiLowerCase(one[index]);
    const char other_lower = AsciiLowerCase(other[index]);
    if (lower != other_lower) return lower < other_lower;
  }
  return left.size() < right.size();
}

std::string ToText(const DirectoryCall& call) {
  using Kind = DirectoryCall::Kind;
  constexpr std::array kControls = {"", "CLEAR", "UPDATE", "APPEND", "DELETE"};
  switch (call.kind) {
    case Kind::kGetObject:
      return "ADsGetObject " + call.path;
    case Kind::kOpenObject:
      return "ADsOpenObject " + call.path + ' ' + std::to_string(call.control);
    case Kind::kGet:
      return "Get " + call.path + ' ' + call.name;
    case Kind::kPut:
      return "Put " + call.path + ' ' + call.name + ' ' + ToText(call.value);
    case Kind::kPutEx: {
      const auto control = static_cast<std::size_t>(call.control);
      const std::string word = call.control > 0 && control < kControls.size()
                                   ? kControls.at(control)
                                   : std::to_string(call.control);
      return "PutEx " + word + ' ' + call.path + ' ' + call.name + ' ' + ToText(call.value);
    }
    case Kind::kSetInfo:
      return "SetInfo " + call.path;
  }
  return {};
}

void PrintTo(const DirectoryCall& call, std::ostream* out) { *out << ToText(call); }

FakeDirectory::FakeDirectory() : state_(std::make_shared<FakeDirectoryState>()) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    DefineAttribute(attribute.name, {TypeOf(attribute.encoding), !attribute.is_multi_valued});
  }
  for (const std::string_view name : kOrdinaryAttributes) DefineAttribute(name, {});
  DefineAttribute("objectClass", {.type = VT_BSTR, .is_single_valued = false});
  AddObject("LDAP://rootDSE", {{"defaultNamingContext", Variant::String("DC=fake,DC=example")}},
            {});
}

void FakeDirectory::AddObject(const std::string& path, FakeAttributes attributes,
                              std::vector<Guid> interfaces) {
  state_->entries.insert_or_assign(
      RequireKey(path),
      FakeEntry{.attributes = std::move(attributes), .interfaces = std::move(interfaces)});
}

void FakeDirectory::RemoveObject(const std::string& path) {
  state_->entries.erase(RequireKey(path));
}

void FakeDirectory::SetValue(const std::string& path, std::string_view name, Variant value) {
  FakeAttributes& attributes = state_->entries.at(RequireKey(path)).attributes;
  if (value.IsEmpty()) {
    attributes.erase(std::string(name));
  } else {
    attributes.insert_or_assign(std::string(name), std::move(value));
  }
}

void FakeDirectory::DefineAttribute(std::string_view name, FakeAttributeType type) {
  state_->schema.insert_or_assign(std::string(name), type);
}

Variant FakeDirectory::Value(const std::string& path, std::string_view name) const {
  const std::optional<FakeAttributes> values = Values(path);
  if (!values) return {};
  const auto found = values->find(name);
  return found == values->end() ? Variant() : found->second;
}

std::optional<FakeAttributes> FakeDirectory::Values(const std::string& path) const {
  const auto found = state_->entries.find(RequireKey(path));
  if (found == state_->entries.end()) return std::nullopt;
  return found->second.attributes;
}

Ref<IADs> FakeDirectory::MakeNewObject(const std::string& path, std::vector<Guid> interfaces) {
  return Ref<IADs>::Adopt(
      new FakeDirectoryObject(state_, path, RequireKey(path), std::move(interfaces), true));
}

std::size_t FakeDirectory::CountOf(DirectoryCall::Kind kind) const { return Log(kind).size(); }

std::vector<std::string> FakeDirectory::Log() const {
  std::vector<std::string> lines;
  for (const DirectoryCall& call : state_->calls) lines.push_back(ToText(call));
  return lines;
}

std::vector<std::string> FakeDirectory::Log(DirectoryCall::Kind kind) const { return Log({kind}); }

std::vector<std::string> FakeDirectory::Log(
    std::initializer_list<DirectoryCall::Kind> kinds) const {
  std::vector<std::string> lines;
  for (const DirectoryCall& call : state_->calls) {
    if (std::find(kinds.begin(), kinds.end(), call.kind) != kinds.end()) {
      lines.push_back(ToText(call));
    }
  }
  return lines;
}

HRESULT FakeDirectory::ADsGetObject(const std::string& path, const Guid& iid, Ref<IADs>& object) {
  state_->calls.push_back({.kind = DirectoryCall::Kind::kGetObject, .path = path});
  return Bind(path, iid, object);
}

HRESULT FakeDirectory::ADsOpenObject(const std::string& path,
                                     const std::optional<std::string>& user_name,
                                     const std::optional<std::string>& password,
                                     std::uint32_t flags, const Guid& iid, Ref<IADs>& object) {
  state_->calls.push_back({.kind = DirectoryCall::Kind::kOpenObject,
                           .path = path,
                           .control = static_cast<std::int32_t>(flags)});
  object.Reset();
  // Whoever runs the program is who binds: nothing here has another name or a password to give.
  if (user_name || password) return E_ADS_BAD_PARAMETER;
  return Bind(path, iid, object);
}

HRESULT FakeDirectory::Bind(const std::string& path, const Guid& iid, Ref<IADs>& object) const {
  object.Reset();
  const std::optional<std::string> key = KeyOf(path);
  if (!key) return E_ADS_BAD_PATHNAME;
  const auto found = state_->entries.find(*key);
  if (found == state_->entries.end()) return kNoSuchObject;
  const auto bound = Ref<IADs>::Adopt(
      new FakeDirectoryObject(state_, path, found->first, found->second.interfaces, false));
  void* offered = nullptr;
  if (const HRESULT status = bound->QueryInterface(iid, &offered); FAILED(status)) return status;
  object = Ref<IADs>::Adopt(static_cast<IADs*>(offered));
  return S_OK;
}

}  // namespace pelora::testing
