// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/network/network_session.h"
#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/ldap/store_opener.h"

namespace pelora::session {

/// A directory that a program has open, in a file or on a server: the store for the thread that
/// works with it, and the directory port over it. Everything bound from it goes before it.
struct DirectorySession {
  /// A directory in a file.
  DirectorySession(std::string file_path, std::unique_ptr<ldap::IDirectoryStore> opened,
                   ldap::StoreOpener opener);
  /// A directory on a server.
  explicit DirectorySession(std::unique_ptr<ldap::NetworkSession> opened);
  ~DirectorySession();
  DirectorySession(const DirectorySession&) = delete;
  DirectorySession& operator=(const DirectorySession&) = delete;

  /// The server that is worked with now, and how it was chosen; none with a file. May be asked on
  /// any thread.
  [[nodiscard]] ldap::ChosenServer Server() const;

 private:
  std::unique_ptr<ldap::IDirectoryStore> file_store_;
  std::unique_ptr<ldap::StoreDirectoryService> file_service_;
  std::unique_ptr<ldap::NetworkSession> network_;

 public:
  /// The file's path, byte for byte as it was given, or the name of the server that it was opened
  /// on: another one may have taken over since (`Server`).
  std::string path;
  bool is_file = true;
  /// As whom it is worked with: `name@REALM`; empty with a file.
  std::string user;
  ldap::IDirectoryStore* store;
  IDirectoryService& service;
  /// What the directory says of its classes' tabs and wizards.
  ldap::DisplaySpecifiers specifiers;
  /// Opens the same directory for use on another thread.
  ldap::StoreOpener open_another;
  /// Finds the domains around the directory's own; none with a file.
  ldap::PlaceFinder find_places;
};

/// A session, or one line that names the directory and says why there is none.
struct SessionResult {
  std::unique_ptr<DirectorySession> session;
  std::string error;
};

/// Opens a directory file. A file that cannot be opened stays as it is.
[[nodiscard]] SessionResult OpenDirectoryFile(const std::string& path,
                                              const ldap::LdbStoreOptions& options = {});

/// Connects to a domain controller, with the user's Kerberos ticket; without a name, to one of
/// those of the ticket's domain: of `site`, or of this machine's site when that is empty, if one
/// can be had. Takes its time: seconds, when a server does not answer. The session may be opened on
/// one thread and used on another. `stop` ends the opening early, and has nothing to do with the
/// session afterwards.
[[nodiscard]] SessionResult OpenServer(const std::string& server, const std::stop_token& stop = {},
                                       const std::string& site = {});

/// The folder in the user's data folder where it is kept what was written; need not be there.
[[nodiscard]] std::string ChangesFolder();

/// The sample company's file in the user's data folder: the same for every program of ours.
[[nodiscard]] std::string SampleDirectoryPath();
/// Opens the sample company's file, which is made when it is not there yet.
[[nodiscard]] SessionResult OpenSampleDirectory(const ldap::LdbStoreOptions& options = {});

}  // namespace pelora::session
