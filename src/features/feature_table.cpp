// SPDX-License-Identifier: Apache-2.0
#include "features/feature_table.h"

#include <algorithm>
#include <array>

#include "directory/attribute_catalogue.h"
#include "features/archiver_feature_props.h"
#include "resources/resource.h"

namespace pelora {
namespace {

template <class Props>
std::shared_ptr<IFeatureProps> Create(const Platform& platform) {
  return std::make_shared<Props>(platform);
}

constexpr std::array<std::string_view, 2> kPlainFeatures = {"imap", "pop3"};
constexpr std::array kFeaturesWithProps = {
    FeatureWithProps{.name = "archiver",
                     .create = &Create<ArchiverFeatureProps>,
                     .attribute = CatalogueEntry("peloraUserArchiveServers").name,
                     .typed_in = {.dialog = IDD_ARCHIVE_SERVERS,
                                  .text = IDC_ARCHIVER_NAME,
                                  .list = IDC_ARCHIVER_LIST,
                                  .add = IDC_ARCHIVER_ADD,
                                  .remove = IDC_ARCHIVER_REMOVE}},
};
constexpr FeatureTable kServerFeatures = {kPlainFeatures, kFeaturesWithProps};

}  // namespace

StringSet FeatureTable::Names() const {
  StringSet names(plain.begin(), plain.end());
  for (const FeatureWithProps& feature : with_props) names.emplace(feature.name);
  return names;
}

bool FeatureTable::IsPlain(std::string_view name) const {
  return std::ranges::find(plain, name) != plain.end();
}

FeaturePropsFactory FeatureTable::FactoryOf(std::string_view name) const {
  const auto found = std::ranges::find(with_props, name, &FeatureWithProps::name);
  return found == with_props.end() ? nullptr : found->create;
}

const FeatureTable& ServerFeatures() { return kServerFeatures; }

}  // namespace pelora
