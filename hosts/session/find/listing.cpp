// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/listing.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/run_check.h"
#include "hosts/session/find/entry_finder.h"

namespace pelora::session {
namespace {

/// How many objects of a rule's findings are read by one call.
constexpr std::size_t kObjectsAtATime = 500;

/// The attribute that a finding is about: messages begin with it where a rule looks at several.
std::string AttributeOf(const Finding& finding, const CheckRule& rule, const CheckFields& fields) {
  constexpr std::string_view kAccount = "peloraAccount";
  std::string first;
  for (const std::string& attribute : AttributesOf(rule, fields)) {
    if (finding.message.starts_with(attribute + ":")) return attribute;
    if (first.empty() && attribute != kAccount) first = attribute;
  }
  return first;
}

/// One listing under way.
class Run {
 public:
  Run(ldap::IDirectoryStore& store, const Listing& listing, const ListColumns& columns,
      const ListedSink& sink)
      : store_(store),
        listing_(listing),
        finder_(store, {.base = listing.base,
                        .below = listing.below,
                        .text = listing.text,
                        .filter = listing.filter,
                        .advanced = listing.advanced,
                        .attributes = columns.Attributes()}),
        columns_(columns),
        sink_(sink) {}

  [[nodiscard]] ListingEnd List(const CheckFields& check_fields) {
    ldap::StoreStatus status = finder_.Begin();
    if (status.Ok()) status = listing_.rule.empty() ? Search() : Check(check_fields);
    return finder_.EndBy(status, has_more_);
  }

 private:
  ldap::StoreStatus Search() {
    return finder_.Find([this](const ldap::Entry& entry) {
      return Hand(columns_.ObjectOf(entry, store_.schema()));
    });
  }

  bool Hand(ListedObject listed) {
    has_more_ = count_ == listing_.limit;
    if (has_more_) return false;
    ++count_;
    is_ended_ = !sink_(std::move(listed));
    return !is_ended_;
  }

  /// What a rule finds, as far as text and filter admit the objects.
  ldap::StoreStatus Check(const CheckFields& check_fields) {
    const CheckRule* const rule = FindCheckRule(listing_.rule);
    if (rule == nullptr) {
      return {.code = ldap::kLdapParamError, .text = "there is no rule \"" + listing_.rule + "\""};
    }
    std::unordered_set<std::string> admitted;
    const bool is_narrowed = finder_.IsNarrowed();
    if (is_narrowed) {
      ldap::StoreStatus status = finder_.Find([&](const ldap::Entry& entry) {
        admitted.insert(ldap::NameKey(entry.dn));
        return true;
      });
      if (!status.Ok()) return status;
    }
    std::vector<Finding> findings;
    ldap::StoreStatus status = RunCheck(
        store_, {.base = finder_.base(), .rules = {rule}}, check_fields, [&](Finding finding) {
          if (is_narrowed && !admitted.contains(ldap::NameKey(finding.dn))) return;
          findings.push_back(std::move(finding));
        });
    const auto is_over = [this] { return has_more_ || is_ended_; };
    for (std::size_t first = 0; status.Ok() && !is_over() && first < findings.size();
         first += kObjectsAtATime) {
      const std::size_t count = std::min(kObjectsAtATime, findings.size() - first);
      status = GiveFindings(std::span(findings).subspan(first, count), *rule, check_fields);
    }
    return status;
  }

  ldap::StoreStatus GiveFindings(std::span<const Finding> findings, const CheckRule& rule,
                                 const CheckFields& check_fields) {
    std::vector<std::string> names;
    for (const Finding& finding : findings) names.push_back(finding.dn);
    std::size_t at = 0;
    return store_.ReadMany(names, columns_.Attributes(),
                           [&](const ldap::StoreStatus& status, const ldap::Entry& entry) {
                             const Finding& finding = findings[at++];
                             // What has gone meanwhile has nothing wrong any more.
                             if (!status.Ok()) return true;
                             ListedObject listed = columns_.ObjectOf(entry, store_.schema());
                             listed.attribute = AttributeOf(finding, rule, check_fields);
                             columns_.SetCell(listed, "field", columns_.TitleOf(listed.attribute));
                             columns_.SetCell(listed, "problem", finding.message);
                             return Hand(std::move(listed));
                           });
  }

  ldap::IDirectoryStore& store_;
  const Listing& listing_;
  EntryFinder finder_;
  const ListColumns& columns_;
  const ListedSink& sink_;
  std::size_t count_ = 0;
  bool has_more_ = false;
  /// The sink wants no more.
  bool is_ended_ = false;
};

}  // namespace

ListingEnd ListObjects(ldap::IDirectoryStore& store, const Listing& listing,
                       const ListColumns& columns, const CheckFields& check_fields,
                       const ListedSink& sink) {
  return Run(store, listing, columns, sink).List(check_fields);
}

}  // namespace pelora::session
