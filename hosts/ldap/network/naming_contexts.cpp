// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/naming_contexts.h"

#include <algorithm>

#include "hosts/ldap/case_fold.h"

namespace pelora::ldap {

NamingContexts::NamingContexts(const std::vector<std::string>& bases) {
  for (const std::string& base : bases) {
    if (!base.empty()) contexts_.push_back({.base = base, .folded = FoldCase(base)});
  }
  std::ranges::sort(contexts_, std::ranges::greater{},
                    [](const Context& context) { return context.folded.size(); });
}

const std::string& NamingContexts::BaseOf(std::string_view dn) const {
  const std::string folded = FoldCase(dn);
  for (const Context& context : contexts_) {
    if (!folded.ends_with(context.folded)) continue;
    const std::size_t above = folded.size() - context.folded.size();
    if (above == 0 || folded[above - 1] == ',') return context.base;
  }
  return none_;
}

}  // namespace pelora::ldap
