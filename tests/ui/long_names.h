// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "tests/ui/scripted_store.h"

namespace pelora::test {

/// A name without a place to break it, and one with many.
inline const std::string kLongWord(200, 'W');
inline const std::string kLongText = [] {
  std::string text;
  while (text.size() < 200) text += "Wide words ";
  return text;
}();

/// Finds one container and one user, both with long names.
inline ldap::StoreOpener OpenLongNames() {
  const auto script = [](const ldap::SearchRequest& /*request*/, const ldap::EntrySink& sink) {
    if (sink(ContainerEntry(kLongWord))) sink(UserEntry(kLongText));
    return ldap::StoreStatus{};
  };
  return [script](std::unique_ptr<ldap::IDirectoryStore>& store, const std::stop_token& /*stop*/) {
    store = std::make_unique<ScriptedStore>(script, true);
    return ldap::StoreStatus{};
  };
}

}  // namespace pelora::test
