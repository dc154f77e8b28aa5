// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/directory_session.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "hosts/console/qt_text.h"
#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/ldap/serialized_store.h"

namespace pelora::console {
namespace {

/// The folder of the display specifiers in the console's language.
constexpr std::string_view kLanguage = "409";

/// Adds what every session knows of its directory.
SessionResult Complete(std::unique_ptr<DirectorySession> session) {
  const ldap::StoreStatus status =
      ldap::DisplaySpecifiers::Read(*session->store, kLanguage, session->specifiers);
  if (!status.Ok()) return {.session = nullptr, .error = ToQString(status.text)};
  return {.session = std::move(session), .error = {}};
}

}  // namespace

DirectorySession::DirectorySession(const QString& file_path,
                                   std::unique_ptr<ldap::IDirectoryStore> opened,
                                   ldap::StoreOpener opener)
    : file_store_(std::move(opened)),
      file_service_(std::make_unique<ldap::StoreDirectoryService>(*file_store_)),
      path(file_path),
      store(file_store_.get()),
      service(*file_service_),
      open_another(std::move(opener)) {}

DirectorySession::DirectorySession(std::unique_ptr<ldap::NetworkSession> opened)
    : network_(std::move(opened)),
      path(ToQString(network_->server())),
      is_file(false),
      store(&network_->store()),
      service(network_->service()),
      open_another(network_->open_another()) {}

DirectorySession::~DirectorySession() = default;

SessionResult OpenDirectoryFile(const QString& path) {
  // Names of files are byte strings and stay what they are.
  const std::string file = QFile::encodeName(path).toStdString();
  // The library shares its file between all stores of one process.
  ldap::StoreOpener open = ldap::SerializeStores(
      [file](std::unique_ptr<ldap::IDirectoryStore>& opened, const std::stop_token& /*stop*/) {
        return ldap::OpenLdbStore(file, {}, opened);
      });
  std::unique_ptr<ldap::IDirectoryStore> store;
  const ldap::StoreStatus status = open(store, {});
  if (!status.Ok()) return {.session = nullptr, .error = ToQString(status.text)};
  return Complete(std::make_unique<DirectorySession>(path, std::move(store), std::move(open)));
}

SessionResult OpenServer(const QString& server, const std::stop_token& stop) {
  std::unique_ptr<ldap::NetworkSession> network;
  const ldap::StoreStatus status =
      ldap::NetworkSession::Open({.server = ToUtf8(server)}, network, stop);
  if (!status.Ok()) return {.session = nullptr, .error = ToQString(status.text)};
  SessionResult result = Complete(std::make_unique<DirectorySession>(std::move(network)));
  if (result.session) result.session->store->StopOn({});
  return result;
}

QString SampleDirectoryPath() {
  const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  return folder.filePath(QStringLiteral("sample-company.ldb"));
}

SessionResult OpenSampleDirectory() {
  const QString path = SampleDirectoryPath();
  if (!QFileInfo::exists(path)) {
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
      return {.session = nullptr,
              .error = QStringLiteral("%1: the folder cannot be made").arg(folder)};
    }
    const std::string file = QFile::encodeName(path).toStdString();
    const ldap::StoreStatus status = ldap::CreateLdbDirectory(file, ldap::SampleCompanyLdif());
    if (!status.Ok()) return {.session = nullptr, .error = ToQString(status.text)};
  }
  return OpenDirectoryFile(path);
}

}  // namespace pelora::console
