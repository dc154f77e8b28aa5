// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/new_object_test.h"

#include <QCoreApplication>

#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {

using console::ToUtf8;

RecordedCompany::RecordedCompany(bool is_sealed) {
  std::unique_ptr<session::DirectorySession> session = OpenFile();
  std::unique_ptr<ldap::IDirectoryStore> opened;
  if (!session->open_another(opened, {}).Ok())
    throw std::runtime_error("it cannot be opened twice");
  auto store = std::make_unique<RecordingStore>(std::move(opened), adds_, is_sealed);
  store_ = store.get();
  recorded_ = std::make_unique<session::DirectorySession>(session->path, std::move(store),
                                                          session->open_another);
}

std::unique_ptr<session::DirectorySession> RecordedCompany::OpenFile() {
  session::SessionResult opened = session::OpenDirectoryFile(file());
  if (!opened.session) throw std::runtime_error(opened.error);
  return std::move(opened.session);
}

OpenWizard& NewObjectTest::Open(const char* kind, const char* container) {
  wizard_.emplace(*recorded_, module(), kind, Objects({container}).front());
  return *wizard_;
}

void NewObjectTest::OpenNamed(const session::NewObjectKind& kind) {
  Open(std::string(kind.class_name).c_str());
  const std::string name = "New " + session::TextOf(kind);
  kind.HasOwnPage() ? wizard().Write("own_name", name)
                    : wizard().user().Type(IDC_OBJECT_NAME, name);
  if (kind.account == session::AccountForm::kUser) wizard().Write("own_logon_name", "new");
}

NewObjectTest::Lines NewObjectTest::Stored(const std::string& dn) {
  Lines lines = SearchEntry(file(), dn);
  std::erase_if(lines, [](const std::string& line) {
    return line.starts_with("dn:") || line.starts_with("distinguishedName:") ||
           line.starts_with("name:") || line.starts_with("cn:") || line.starts_with("ou:");
  });
  return lines;
}

bool NewObjectTest::IsThere(const std::string& dn) {
  ldap::Entry entry;
  return OpenFile()->store->Read(dn, {}, entry).Ok();
}

void NewObjectTest::Picture(const std::string& name) { KeepPicture(wizard().wizard(), name); }

}  // namespace pelora::test
