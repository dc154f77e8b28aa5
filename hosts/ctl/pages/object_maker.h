// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/ctl/fields/wish_maker.h"
#include "hosts/ctl/pages/own_assignments.h"
#include "hosts/ctl/pages/page_platform.h"
#include "hosts/headless/headless_new_object_wizard.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/secret.h"

namespace pelora::ctl {

/// What a new object is to be.
struct NewObjectWish {
  const session::NewObjectKind* kind = nullptr;
  /// Its name in the container.
  std::string name;
  std::string container;
  std::vector<Assignment> assignments;
  /// None: the object gets no password.
  std::optional<session::Secret> password{};
};

/// Makes new objects through the wizards' pages in memory: fills them in, goes through them, and
/// finishes. What would be sent is recorded, and nothing is.
class ObjectMaker {
 public:
  /// All outlive the maker.
  ObjectMaker(session::DirectorySession& session, const resources::ResourceFile& module,
              FieldCatalogue& catalogue, ObjectFinder& finder);
  ObjectMaker(const ObjectMaker&) = delete;
  ObjectMaker& operator=(const ObjectMaker&) = delete;

  /// The addition of the object. Throws `Refusal`.
  [[nodiscard]] changes::Change Make(NewObjectWish wish);

 private:
  /// What can be filled in on the page of an extension, which lives as long as its wizard.
  using Page = std::vector<Field>;

  void FillIn(HeadlessNewObjectWizard& wizard, const std::vector<Page>& pages,
              std::vector<Assignment> assignments);
  void FillPage(HeadlessNewObjectWizard& wizard, const Page& page,
                std::vector<Assignment>& assignments);

  session::DirectorySession& session_;
  const resources::ResourceFile& module_;
  changes::RecordingDirectory recording_;
  PagePlatform platform_;
  WishMaker wishes_;
};

}  // namespace pelora::ctl
