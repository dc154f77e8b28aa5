// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/finding.h"

#include <map>
#include <utility>

#include "hosts/ldap/name_key.h"

namespace pelora::session {

std::vector<changes::Change> MendsOf(const std::vector<Finding>& findings) {
  std::map<std::string, changes::Change> by_name;
  for (const Finding& finding : findings) {
    if (!finding.mend) continue;
    changes::Change& change = by_name[ldap::NameKey(finding.dn)];
    change.dn = finding.dn;
    changes::ValueChange* const same = change.Find(finding.mend->attribute);
    if (same == nullptr) {
      change.attributes.push_back(*finding.mend);
    } else {
      same->seen.insert(same->seen.end(), finding.mend->seen.begin(), finding.mend->seen.end());
    }
  }
  std::vector<changes::Change> mends;
  mends.reserve(by_name.size());
  for (auto& [name, change] : by_name) mends.push_back(std::move(change));
  return mends;
}

}  // namespace pelora::session
