// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/shown_directory.h"

#include <filesystem>
#include <string>
#include <utility>

namespace pelora::console {
namespace {

/// By which the directory's history is found again, from wherever the console is started.
std::string NameOf(const session::DirectorySession& session) {
  return session.is_file ? std::filesystem::absolute(session.path).string() : session.path;
}

}  // namespace

ShownDirectory::ShownDirectory(std::unique_ptr<session::DirectorySession> opened,
                               session::IErrands& errands, IMessageBox& message_box,
                               const resources::ResourceFile& module)
    : session(std::move(opened)),
      store(*session->store, errands),
      history(session::ChangesFolder(), NameOf(*session), session->store->schema()),
      service(store),
      choosers(store, session->open_another, {.find_places = session->find_places}),
      platform(service, message_box, choosers, module),
      fields(session->specifiers, platform.platform(), module) {}

}  // namespace pelora::console
