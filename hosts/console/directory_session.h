// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <memory>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/ldap/store_opener.h"

namespace pelora::console {

/// A directory file that the console has open: its store, and the directory port over it.
/// Everything bound from it goes before it.
struct DirectorySession {
  DirectorySession(QString file_path, std::unique_ptr<ldap::IDirectoryStore> opened,
                   ldap::StoreOpener opener)
      : path(std::move(file_path)),
        store(std::move(opened)),
        service(*store),
        open_another(std::move(opener)) {}

  QString path;
  std::unique_ptr<ldap::IDirectoryStore> store;
  ldap::StoreDirectoryService service;
  /// What the directory says of its classes' tabs and wizards.
  ldap::DisplaySpecifiers specifiers;
  /// Opens the same directory for use on another thread.
  ldap::StoreOpener open_another;
};

/// A session, or one line that names the file and says why there is none.
struct SessionResult {
  std::unique_ptr<DirectorySession> session;
  QString error;
};

/// Opens a directory file. A file that cannot be opened stays as it is.
[[nodiscard]] SessionResult OpenDirectoryFile(const QString& path);

/// The sample company's file in the user's data folder.
[[nodiscard]] QString SampleDirectoryPath();
/// Opens the sample company's file, which is made when it is not there yet.
[[nodiscard]] SessionResult OpenSampleDirectory();

}  // namespace pelora::console
