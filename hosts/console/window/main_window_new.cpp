// SPDX-License-Identifier: Apache-2.0
// The making of new objects.
#include <algorithm>
#include <array>
#include <optional>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/new_object/make_new_object_wizard.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/company.h"
#include "hosts/session/distinguished_name.h"
#include "hosts/session/noted_additions.h"

namespace pelora::console {

void MainWindow::MakeNewObject(const session::NewObjectKind& kind) {
  const std::optional<session::DirectoryObject> container = pane_->PlaceForNew();
  if (directory_ && container) MakeNewObjectIn(*container, kind, nullptr);
}

const session::NewObjectKind* MainWindow::KindOfNewLike() const {
  const std::vector<session::DirectoryObject> selection = Selection();
  if (selection.size() != 1 || session::ParentName(selection.front().dn).empty()) return nullptr;
  const auto kinds = session::NewObjectKinds();
  const auto found = std::ranges::find(kinds, selection.front().kind.class_name,
                                       &session::NewObjectKind::class_name);
  return found == kinds.end() ? nullptr : &*found;
}

void MainWindow::MakeNewLikeThis() {
  const session::NewObjectKind* const kind = KindOfNewLike();
  if (!directory_ || kind == nullptr) return;
  const session::DirectoryObject object = Selection().front();
  const std::vector<session::Field>& fields = directory_->fields.FieldsOf(kind->class_name);
  ldap::IDirectoryStore& store = directory_->store;
  ldap::Entry entry;
  session::DirectoryObject container;
  ldap::StoreStatus status = store.Read(object.dn, session::ModelObject::Attributes(fields), entry);
  if (status.Ok()) {
    status = session::DirectoryBrowser(store).ReadObject(
        std::string(session::ParentName(object.dn)), container);
  }
  if (!status.Ok()) {
    return ReportLater(QStringLiteral("The object cannot be read."), ToQString(status.text));
  }
  MakeNewObjectIn(container, *kind,
                  std::make_shared<session::ModelObject>(object.name, std::move(entry), fields,
                                                         store.schema()));
}

KeptPatterns MainWindow::PatternsAt(const session::DirectoryObject& container) {
  const std::optional<ldap::Entry> company = session::FindCompany(directory_->store, container.dn);
  const std::string directory = directory_->name;
  const std::string whose = company ? company->dn : std::string();
  Remembered& remembered = pane_->remembered();
  return {.patterns = remembered.Patterns(directory, whose),
          .company = company ? ToQString(ldap::FirstValue(*company, "name"))
                             : QStringLiteral("what belongs to no company"),
          .keep = [&remembered, directory, whose](const session::NamePatterns& patterns) {
            remembered.SetPatterns(directory, whose, patterns);
          }};
}

void MainWindow::MakeNewObjectIn(const session::DirectoryObject& container,
                                 const session::NewObjectKind& kind,
                                 std::shared_ptr<const session::ModelObject> model) {
  session::NotedAdditions store(directory_->store, directory_->history);
  NewObjectStart start{.model = std::move(model)};
  if (kind.account == session::AccountForm::kUser) start.patterns = PatternsAt(container);
  WizardResult made =
      MakeNewObjectWizard(kind, container,
                          {.store = store,
                           .specifiers = directory_->session->specifiers,
                           .open_another = directory_->session->open_another,
                           .find_places = directory_->session->find_places},
                          directory_->platform.platform(), module_, this, std::move(start));
  if (!made.wizard) return ReportLater(QStringLiteral("There is no wizard."), made.error);
  made.wizard->notes().show_object = [this](const session::DirectoryObject& object, QWidget& from) {
    ShowAnother(object, from);
  };
  const bool is_made = RunModal(*made.wizard) == QDialog::Accepted;
  if (is_made) ShowNewObject(kind, container.dn, made.wizard->created_name());
  made.wizard.reset();
  // A directory that was opened meanwhile need not wait any longer.
  openings_.ShowOpened();
}

void MainWindow::ShowNewObject(const session::NewObjectKind& kind, const std::string& container,
                               const std::string& dn) {
  pane_->SelectWhenRead(dn);
  const session::DirectoryObject* const shown = pane_->Container();
  if (shown == nullptr || shown->dn != container) return pane_->RefreshAt(container);
  // A container stands in the tree as well.
  const std::array classes = {std::string(kind.class_name)};
  session::KindOf(classes).is_container ? pane_->Refresh() : pane_->RefreshList();
}

}  // namespace pelora::console
