// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/directory_browser.h"
#include "platform/choosers.h"

namespace pelora::ctl {

/// Choosers that answer with given objects, as somebody would who knows what to choose: only with
/// what the chooser would have offered.
class GivenChoosers final : public IChoosers {
 public:
  /// `store`, which is asked what a chooser would have offered, outlives the choosers; without one
  /// they offer nothing.
  explicit GivenChoosers(ldap::IDirectoryStore* store) : store_(store) {}

  /// The answer of the next chooser that is run.
  void AnswerNext(std::vector<session::DirectoryObject> objects);
  /// Why the last answer was not taken, as a sentence; empty when it was.
  [[nodiscard]] const std::string& refusal() const { return refusal_; }
  /// What kept the last answer from being looked at; success when nothing did.
  [[nodiscard]] const ldap::StoreStatus& failure() const { return failure_; }

  [[nodiscard]] HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) override;
  [[nodiscard]] HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) override;
  [[nodiscard]] std::int32_t BrowseForContainer(const ContainerBrowserInit& init,
                                                std::string& path) override;

  /// The answer, when a chooser of this filter would have offered all of it; else none, and the
  /// refusal says which object it would not.
  [[nodiscard]] std::vector<session::DirectoryObject> TakeAnswer(const std::string& filter);

 private:
  [[nodiscard]] bool Offers(const std::string& filter, const std::string& dn);

  ldap::IDirectoryStore* store_;
  std::vector<session::DirectoryObject> answer_;
  std::string refusal_;
  ldap::StoreStatus failure_;
  std::map<std::pair<std::string, std::string>, bool> known_;
};

}  // namespace pelora::ctl
