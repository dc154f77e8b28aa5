// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/check_notes.h"

#include <utility>

#include "hosts/ldap/case_fold.h"

namespace pelora::session {

changes::ValueChange TakingOut(std::string_view attribute, ldap::AttributeValues values) {
  return {.attribute = std::string(attribute), .is_list = true, .seen = std::move(values)};
}

void CheckNotes::Begin(const CheckRule& rule, const CheckedObject& object) {
  rule_ = &rule;
  looked_at_ = &object;
}

CheckNotes::ObjectIndex CheckNotes::Object() {
  if (objects_.empty() || objects_.back() != looked_at_->dn()) {
    objects_.push_back(looked_at_->dn());
  }
  return static_cast<ObjectIndex>(objects_.size() - 1);
}

void CheckNotes::Found(std::string message, std::optional<changes::ValueChange> mend) {
  notes_.push_back(
      {.rule = rule_, .object = Object(), .message = std::move(message), .mend = std::move(mend)});
}

void CheckNotes::HasAddress(const std::string& address) {
  address_rule_ = rule_;
  std::vector<ObjectIndex>& objects = addresses_[ldap::FoldCase(address)];
  const ObjectIndex object = Object();
  if (objects.empty() || objects.back() != object) objects.push_back(object);
}

void CheckNotes::IsServer(const std::string& cn) { servers_.insert(ldap::FoldCase(cn)); }

}  // namespace pelora::session
