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

SessionResult OpenSession(const QString& path, ldap::StoreOpener open) {
  std::unique_ptr<ldap::IDirectoryStore> store;
  ldap::DisplaySpecifiers specifiers;
  ldap::StoreStatus status = open(store);
  if (status.Ok()) status = ldap::DisplaySpecifiers::Read(*store, kLanguage, specifiers);
  if (!status.Ok()) return {.session = nullptr, .error = ToQString(status.text)};
  auto session = std::make_unique<DirectorySession>(path, std::move(store), std::move(open));
  session->specifiers = std::move(specifiers);
  return {.session = std::move(session), .error = {}};
}

}  // namespace

SessionResult OpenDirectoryFile(const QString& path) {
  // Names of files are byte strings and stay what they are.
  const std::string file = QFile::encodeName(path).toStdString();
  // The library shares its file between all stores of one process.
  ldap::StoreOpener open =
      ldap::SerializeStores([file](std::unique_ptr<ldap::IDirectoryStore>& opened) {
        return ldap::OpenLdbStore(file, {}, opened);
      });
  return OpenSession(path, std::move(open));
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
