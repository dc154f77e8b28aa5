// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/shown_directory.h"

#include <filesystem>
#include <string>
#include <utility>

#include "hosts/ldap/entry_values.h"

namespace pelora::console {
namespace {

std::string NameOf(const session::DirectorySession& session, ldap::IDirectoryStore& store) {
  if (session.is_file) return std::filesystem::absolute(session.path).string();
  ldap::Entry root;
  std::string domain;
  if (store.ReadRoot(root).Ok()) domain = ldap::FirstValue(root, "defaultNamingContext");
  return domain.empty() ? session.path : domain;
}

}  // namespace

ShownDirectory::ShownDirectory(std::unique_ptr<session::DirectorySession> opened,
                               session::IErrands& errands, IMessageBox& message_box,
                               const resources::ResourceFile& module)
    : session(std::move(opened)),
      beside(*session->store, errands),
      store(beside),
      name(NameOf(*session, store)),
      history(session::ChangesFolder(), name, session->store->schema()),
      service(store),
      choosers(store, session->open_another, {.find_places = session->find_places}),
      platform(service, message_box, choosers, module),
      fields(session->specifiers, platform.platform(), module) {}

}  // namespace pelora::console
