// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_opener.h"
#include "platform/choosers.h"

namespace pelora::console {

/// How the console's choosers search.
struct ChooserOptions {
  /// At most so many objects are shown for one search.
  std::size_t limit = 1000;
  /// A search begins when nothing has been typed for so long.
  std::chrono::milliseconds typing_pause{250};
  /// Where else than in the directory's own domain objects may be looked for; none: nowhere.
  ldap::PlaceFinder find_places{};
};

/// The console's own directory choosers: a search for objects, one for containers, and the tree of
/// containers, all of the directory that is shown. They hand over what the platform's hand over.
///
/// Of an object picker's set-up the up-level filter bits and the choice of several count, and
/// whether other domains than the directory's own are a place to look in. Of a query window's
/// set-up the choice of a single object and that of hidden ones count.
class QtChoosers final : public IChoosers {
 public:
  /// `store` outlives the choosers; searches run on a thread of their own over stores from
  /// `opener`.
  QtChoosers(ldap::IDirectoryStore& store, ldap::StoreOpener opener, ChooserOptions options = {});

  [[nodiscard]] HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) override;
  [[nodiscard]] HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) override;
  /// A path that does not fit is not taken: the tree says so and stays. A
  /// directory that cannot be read is shown and answers -1.
  [[nodiscard]] std::int32_t BrowseForContainer(const ContainerBrowserInit& init,
                                                std::string& path) override;

 private:
  ldap::IDirectoryStore& store_;
  ldap::StoreOpener opener_;
  ChooserOptions options_;
};

}  // namespace pelora::console
