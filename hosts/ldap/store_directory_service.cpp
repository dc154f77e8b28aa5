// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/store_directory_service.h"

#include <array>
#include <utility>

#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

namespace {

/// The interface `iid` of an object that has just been made.
HRESULT Offer(const Ref<StoreObject>& made, const Guid& iid, Ref<IADs>& object) {
  void* offered = nullptr;
  const HRESULT status = made->QueryInterface(iid, &offered);
  if (SUCCEEDED(status)) object = Ref<IADs>::Adopt(static_cast<IADs*>(offered));
  return status;
}

}  // namespace

StoreDirectoryService::StoreDirectoryService(IDirectoryStore& store,
                                             std::shared_ptr<StoreStatus> last_failure,
                                             BindingOptions options)
    : store_(store), last_failure_(std::move(last_failure)) {
  if (!options.attributes.empty()) options.attributes.emplace_back("objectClass");
  options_ = std::make_shared<const BindingOptions>(std::move(options));
}

StoreDirectoryService::~StoreDirectoryService() = default;

HRESULT StoreDirectoryService::ADsGetObject(const std::string& path, const Guid& iid,
                                            Ref<IADs>& object) {
  object.Reset();
  AdsPath parsed;
  if (const HRESULT status = ParseAdsPath(path, parsed); FAILED(status)) return status;

  Entry entry;
  const std::array<std::string, 1> attributes = {"objectClass"};
  StoreStatus read =
      parsed.is_root ? store_.ReadRoot(entry) : store_.Read(parsed.dn, attributes, entry);
  if (!read.Ok()) return Answer(std::move(read));

  StoreObject::Identity identity{.dn = parsed.dn, .is_root = parsed.is_root, .classes = {}};
  if (!parsed.is_root) identity.classes = std::move(entry.attributes["objectClass"]);
  const auto made = Ref<StoreObject>::Adopt(
      new StoreObject(store_, std::move(identity), last_failure_, options_));
  return Offer(made, iid, object);
}

HRESULT StoreDirectoryService::BindPaths(std::span<const std::string> paths, const Guid& iid,
                                         std::vector<Ref<IADs>>& objects) {
  objects.clear();
  std::vector<Ref<IADs>> bound;
  bound.reserve(paths.size());
  // Names are gathered as far as a path that names none: what comes before it fails first.
  std::vector<std::string> names;
  for (const std::string& path : paths) {
    AdsPath parsed;
    const HRESULT well_formed = ParseAdsPath(path, parsed);
    if (SUCCEEDED(well_formed) && !parsed.is_root) {
      names.push_back(std::move(parsed.dn));
      continue;
    }
    HRESULT status = BindNames(std::exchange(names, {}), iid, bound);
    if (status != S_OK || FAILED(well_formed)) return status != S_OK ? status : well_formed;
    Ref<IADs> root;
    status = ADsGetObject(path, iid, root);
    if (status != S_OK) return status;
    bound.push_back(std::move(root));
  }
  if (const HRESULT status = BindNames(names, iid, bound); status != S_OK) return status;
  objects = std::move(bound);
  return S_OK;
}

HRESULT StoreDirectoryService::BindNames(std::span<const std::string> dns, const Guid& iid,
                                         std::vector<Ref<IADs>>& objects) {
  HRESULT answer = S_OK;
  std::size_t at = 0;
  const auto take = [&](StoreStatus read, Entry entry) {
    if (!read.Ok()) {
      answer = Answer(std::move(read));
      return false;
    }
    StoreObject::Identity identity{
        .dn = dns[at++], .is_root = false, .classes = entry.attributes["objectClass"]};
    const auto made = Ref<StoreObject>::Adopt(new StoreObject(
        store_, std::move(identity), last_failure_, std::move(entry.attributes), options_));
    Ref<IADs> object;
    answer = Offer(made, iid, object);
    if (object) objects.push_back(std::move(object));
    return answer == S_OK;
  };
  StoreStatus status = store_.ReadMany(dns, options_->attributes, take);
  return status.Ok() ? answer : Answer(std::move(status));
}

HRESULT StoreDirectoryService::ADsOpenObject(const std::string& path,
                                             const std::optional<std::string>& user_name,
                                             const std::optional<std::string>& password,
                                             std::uint32_t /*flags*/, const Guid& iid,
                                             Ref<IADs>& object) {
  object.Reset();
  if (user_name || password) return E_ADS_BAD_PARAMETER;
  return ADsGetObject(path, iid, object);
}

HRESULT StoreDirectoryService::Answer(StoreStatus status) {
  *last_failure_ = std::move(status);
  return HresultOfLdap(last_failure_->code);
}

const StoreStatus& StoreDirectoryService::last_failure() const { return *last_failure_; }

}  // namespace pelora::ldap
