// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/store_directory_service.h"

#include <array>
#include <utility>

#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/store_object.h"

namespace pelora::ldap {

StoreDirectoryService::StoreDirectoryService(IDirectoryStore& store)
    : store_(store), last_failure_(std::make_shared<StoreStatus>()) {}

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
  if (!read.Ok()) {
    *last_failure_ = std::move(read);
    return HresultOfLdap(last_failure_->code);
  }

  StoreObject::Identity identity{.dn = parsed.dn, .is_root = parsed.is_root, .classes = {}};
  if (!parsed.is_root) identity.classes = std::move(entry.attributes["objectClass"]);
  const auto bound =
      Ref<StoreObject>::Adopt(new StoreObject(store_, std::move(identity), last_failure_));
  void* offered = nullptr;
  if (const HRESULT status = bound->QueryInterface(iid, &offered); FAILED(status)) return status;
  object = Ref<IADs>::Adopt(static_cast<IADs*>(offered));
  return S_OK;
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

const StoreStatus& StoreDirectoryService::last_failure() const { return *last_failure_; }

}  // namespace pelora::ldap
