// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/remembered.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/name_key.h"

namespace pelora::console {
namespace {

constexpr qsizetype kMostColumns = 100;
constexpr const char* kLogonName = "logon_name";
constexpr const char* kAddress = "address";

/// A view's name as a key: what stands in it is no path.
QString KeyOf(const QString& view, const char* what) {
  const QByteArray name = view.toUtf8().toPercentEncoding();
  return QStringLiteral("views/%1/%2").arg(QString::fromLatin1(name), QString::fromLatin1(what));
}

/// The same of a company's patterns. A name has more than a hyphen.
QString KeyOf(const std::string& directory, const std::string& company, const char* what) {
  const auto part = [](const std::string& name) {
    return QString::fromLatin1(QByteArray::fromStdString(name).toPercentEncoding());
  };
  return QStringLiteral("patterns/%1/%2/%3")
      .arg(part(directory), company.empty() ? QStringLiteral("-") : part(ldap::NameKey(company)),
           QString::fromLatin1(what));
}

}  // namespace

Remembered::Remembered()
    : settings_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("pelora-console"),
                QStringLiteral("console")) {}

std::optional<std::vector<std::string>> Remembered::Columns(const QString& view) const {
  const QStringList names = settings_.value(KeyOf(view, "columns")).toStringList();
  if (names.isEmpty() || names.size() > kMostColumns) return std::nullopt;
  std::vector<std::string> columns;
  for (const QString& name : names) columns.push_back(ToUtf8(name));
  return columns;
}

void Remembered::SetColumns(const QString& view, const std::vector<std::string>& columns) {
  QStringList names;
  for (const std::string& name : columns) names.append(ToQString(name));
  settings_.setValue(KeyOf(view, "columns"), names);
}

QByteArray Remembered::Layout(const QString& view) const {
  return settings_.value(KeyOf(view, "layout")).toByteArray();
}

void Remembered::SetLayout(const QString& view, const QByteArray& layout) {
  settings_.setValue(KeyOf(view, "layout"), layout);
}

QByteArray Remembered::Bytes(const QString& name) const {
  return settings_.value(name).toByteArray();
}

void Remembered::SetBytes(const QString& name, const QByteArray& bytes) {
  settings_.setValue(name, bytes);
}

session::NamePatterns Remembered::Patterns(const std::string& directory,
                                           const std::string& company) const {
  const auto text = [&](const char* what) {
    return ToUtf8(settings_.value(KeyOf(directory, company, what)).toString());
  };
  session::NamePatterns patterns{.logon_name = text(kLogonName), .address = text(kAddress)};
  // The file may have been written by hand.
  return session::WhyWrong(patterns).empty() ? patterns : session::NamePatterns{};
}

void Remembered::SetPatterns(const std::string& directory, const std::string& company,
                             const session::NamePatterns& patterns) {
  settings_.setValue(KeyOf(directory, company, kLogonName), ToQString(patterns.logon_name));
  settings_.setValue(KeyOf(directory, company, kAddress), ToQString(patterns.address));
}

std::string Remembered::ViewFile() const {
  const QString folder = QFileInfo(settings_.fileName()).path();
  return QFile::encodeName(folder + QStringLiteral("/views.json")).toStdString();
}

session::ReadViews Remembered::Views() const {
  const std::string file = ViewFile();
  if (!QFile::exists(QFile::decodeName(file.c_str()))) return {};
  return session::LoadViews(file);
}

QString Remembered::SetViews(const std::vector<session::View>& views) {
  QDir().mkpath(QFileInfo(settings_.fileName()).path());
  return ToQString(session::SaveViews(ViewFile(), views));
}

}  // namespace pelora::console
