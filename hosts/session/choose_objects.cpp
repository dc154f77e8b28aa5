// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/choose_objects.h"

#include <memory>

#include "directory/selection_reader.h"
#include "hosts/ldap/ads_path.h"

namespace pelora::session {

std::vector<std::string> ChooseObjects(IChoosers& choosers, IDialog* owner,
                                       const ObjectChoice& choice) {
  constexpr std::uint32_t kSeveral = 0x1;
  std::unique_ptr<IDsObjectPicker> picker;
  if (FAILED(choosers.CreateObjectPicker(picker))) return {};
  // Every kind of place but a workgroup.
  constexpr std::uint32_t kEverywhere = 0x37F;
  const ObjectPickerInit init = {
      .scope = {.types = kEverywhere, .up_level_both_modes = choice.types},
      .options = choice.takes_several ? kSeveral : 0};
  Ref<IDataObject> chosen;
  if (FAILED(picker->Initialize(init)) || FAILED(picker->InvokeDialog(owner, chosen))) return {};
  std::vector<std::string> paths;
  if (ReadSelection(chosen.Get(), kDsSelectionListFormat, paths) != S_OK) return {};
  std::vector<std::string> names;
  for (const std::string& path : paths) {
    ldap::AdsPath parsed;
    if (SUCCEEDED(ldap::ParseAdsPath(path, parsed)) && !parsed.dn.empty()) {
      names.push_back(std::move(parsed.dn));
    }
  }
  return names;
}

}  // namespace pelora::session
