// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/directory_session.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/network/kerberos_ticket.h"
#include "hosts/ldap/sample_company.h"

namespace pelora::session {
namespace {

/// The folder of the display specifiers in the programs' language.
constexpr std::string_view kLanguage = "409";

SessionResult Refused(std::string error) { return {.session = nullptr, .error = std::move(error)}; }

/// Adds what every session knows of its directory.
SessionResult Complete(std::unique_ptr<DirectorySession> session) {
  ldap::StoreStatus status =
      ldap::DisplaySpecifiers::Read(*session->store, kLanguage, session->specifiers);
  if (!status.Ok()) return Refused(std::move(status.text));
  return {.session = std::move(session), .error = {}};
}

/// Where the desktop keeps the data of a user's programs.
std::filesystem::path UserDataFolder() {
  const char* const data = std::getenv("XDG_DATA_HOME");
  const std::filesystem::path folder(data != nullptr ? data : "");
  // A relative folder is none, by the desktop's rules.
  if (folder.is_absolute()) return folder;
  const char* const home = std::getenv("HOME");
  return std::filesystem::path(home != nullptr ? home : "/") / ".local" / "share";
}

}  // namespace

DirectorySession::DirectorySession(std::string file_path,
                                   std::unique_ptr<ldap::IDirectoryStore> opened,
                                   ldap::StoreOpener opener)
    : file_store_(std::move(opened)),
      file_service_(std::make_unique<ldap::StoreDirectoryService>(*file_store_)),
      path(std::move(file_path)),
      store(file_store_.get()),
      service(*file_service_),
      open_another(std::move(opener)) {}

DirectorySession::DirectorySession(std::unique_ptr<ldap::NetworkSession> opened)
    : network_(std::move(opened)),
      path(network_->server()),
      is_file(false),
      store(&network_->store()),
      service(network_->service()),
      open_another(network_->open_another()),
      find_places(network_->find_places()) {}

DirectorySession::~DirectorySession() = default;

ldap::ChosenServer DirectorySession::Server() const {
  return network_ ? network_->chosen() : ldap::ChosenServer();
}

SessionResult OpenDirectoryFile(const std::string& path, const ldap::LdbStoreOptions& options) {
  ldap::StoreOpener open = [path, options](std::unique_ptr<ldap::IDirectoryStore>& opened,
                                           const std::stop_token& /*stop*/) {
    return ldap::OpenLdbStore(path, options, opened);
  };
  std::unique_ptr<ldap::IDirectoryStore> store;
  ldap::StoreStatus status = open(store, {});
  if (!status.Ok()) return Refused(std::move(status.text));
  return Complete(std::make_unique<DirectorySession>(path, std::move(store), std::move(open)));
}

SessionResult OpenServer(const std::string& server, const std::stop_token& stop,
                         const std::string& site) {
  std::unique_ptr<ldap::NetworkSession> network;
  ldap::StoreStatus status =
      ldap::NetworkSession::Open({.server = server, .site = site}, network, stop);
  if (!status.Ok()) return Refused(std::move(status.text));
  SessionResult result = Complete(std::make_unique<DirectorySession>(std::move(network)));
  if (!result.session) return result;
  result.session->store->StopOn({});
  // It has just been signed in with.
  ldap::KerberosTicket ticket;
  if (ldap::ReadKerberosTicket(ticket).Ok()) result.session->user = ticket.principal;
  return result;
}

std::string ChangesFolder() { return UserDataFolder() / "pelora-console" / "changes"; }

std::string SampleDirectoryPath() {
  // The folder carries the name of the program that made the first of these files.
  return UserDataFolder() / "pelora-console" / "sample-company.ldb";
}

SessionResult OpenSampleDirectory(const ldap::LdbStoreOptions& options) {
  const std::filesystem::path path = SampleDirectoryPath();
  std::error_code failure;
  if (!std::filesystem::exists(path, failure)) {
    std::filesystem::create_directories(path.parent_path(), failure);
    if (failure) return Refused(path.parent_path().string() + ": the folder cannot be made");
    ldap::StoreStatus status = ldap::CreateLdbDirectory(path.string(), ldap::SampleCompanyLdif());
    if (!status.Ok()) return Refused(std::move(status.text));
  }
  return OpenDirectoryFile(path.string(), options);
}

}  // namespace pelora::session
