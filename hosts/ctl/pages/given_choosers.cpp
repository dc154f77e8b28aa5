// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/given_choosers.h"

#include <memory>

#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/selection/selection_data_object.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/selection_data_object.h"
#include "platform/dialog_controller.h"

namespace pelora::ctl {
namespace {

class GivenPicker final : public IDsObjectPicker {
 public:
  explicit GivenPicker(GivenChoosers& choosers) : choosers_(choosers) {}

  [[nodiscard]] HRESULT Initialize(const ObjectPickerInit& init) override {
    filter_ = session::TypeFilter(init.scope);
    return S_OK;
  }

  [[nodiscard]] HRESULT InvokeDialog(ChooserOwner /*owner*/, Ref<IDataObject>& chosen) override {
    const auto objects = choosers_.TakeAnswer(filter_);
    if (objects.empty()) return S_FALSE;
    chosen = session::MakeChosenDataObject(objects);
    return S_OK;
  }

 private:
  GivenChoosers& choosers_;
  std::string filter_;
};

class GivenQuery final : public ICommonQuery {
 public:
  explicit GivenQuery(GivenChoosers& choosers) : choosers_(choosers) {}

  [[nodiscard]] HRESULT OpenQueryWindow(ChooserOwner /*owner*/, const QueryWindowInit& /*init*/,
                                        Ref<IDataObject>& chosen) override {
    const auto objects = choosers_.TakeAnswer(session::ContainerFilter());
    if (objects.empty()) return S_FALSE;
    chosen = session::MakeSelectionDataObject(objects);
    return S_OK;
  }

 private:
  GivenChoosers& choosers_;
};

}  // namespace

void GivenChoosers::AnswerNext(std::vector<session::DirectoryObject> objects) {
  answer_ = std::move(objects);
  refusal_.clear();
  failure_ = {};
}

HRESULT GivenChoosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser = std::make_unique<GivenPicker>(*this);
  return S_OK;
}

HRESULT GivenChoosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser = std::make_unique<GivenQuery>(*this);
  return S_OK;
}

std::int32_t GivenChoosers::BrowseForContainer(const ContainerBrowserInit& /*init*/,
                                               std::string& path) {
  path.clear();
  const auto objects = TakeAnswer(session::ContainerFilter());
  if (objects.empty()) return kDialogCancel;
  path = ldap::AdsPathOf(objects.front().dn);
  return kDialogOk;
}

std::vector<session::DirectoryObject> GivenChoosers::TakeAnswer(const std::string& filter) {
  for (const session::DirectoryObject& object : answer_) {
    if (Offers(filter, object.dn)) continue;
    refusal_ = object.dn + " is nothing that can be chosen here";
    answer_.clear();
  }
  return std::exchange(answer_, {});
}

bool GivenChoosers::Offers(const std::string& filter, const std::string& dn) {
  if (store_ == nullptr) return false;
  const auto known = known_.find({filter, dn});
  if (known != known_.end()) return known->second;
  bool is_offered = false;
  const ldap::StoreStatus status = store_->Search({.base = dn,
                                                   .scope = ldap::SearchScope::kBase,
                                                   .filter = filter,
                                                   .attributes = {"objectClass"}},
                                                  [&is_offered](const ldap::Entry& /*entry*/) {
                                                    is_offered = true;
                                                    return true;
                                                  });
  if (!status.Ok() && status.code != ldap::kLdapNoSuchObject) failure_ = status;
  if (status.Ok()) known_.emplace(std::pair(filter, dn), is_offered);
  return is_offered;
}

}  // namespace pelora::ctl
