// SPDX-License-Identifier: Apache-2.0
// Objects that are renamed, moved and deleted, and looked at as the directory has them.
#include <QStatusBar>

#include "hosts/console/attributes/attributes_window.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"

namespace pelora::console {

void MainWindow::MakePlaces() {
  const auto context = [this]() -> std::optional<PlaceContext> {
    if (!directory_) return std::nullopt;
    return PlaceContext{.store = &directory_->store,
                        .history = &directory_->history,
                        .fields = &directory_->fields,
                        .open_another = directory_->session->open_another};
  };
  places_ = new PlaceActions(*pane_, errands_, desk_, context);
  places_->on_done = [this](const QString& text) { statusBar()->showMessage(text); };
  places_->may_change = [this](const std::vector<std::string>& dns) {
    if (sheets_.CloseSheetsOf(dns)) return true;
    statusBar()->showMessage(
        QStringLiteral("Nothing was done: there are changes that were not applied."));
    return false;
  };
  places_->on_lost = [this](const QString& reason) { SayItIsForGood(reason); };
  places_->on_failure = [this](const QString& text, const QString& reason) {
    ReportLater(text, reason);
  };
  pane_->TakeDrops([this](const std::vector<std::string>& dns, const std::string& container) {
    places_->MoveTo(dns, container);
  });
}

void MainWindow::ShowAttributes() {
  const std::vector<session::DirectoryObject> selection = Selection();
  if (!directory_ || selection.size() != 1) return;
  const auto shown = std::make_shared<ldap::Entry>();
  const auto writable = std::make_shared<session::WritableAttributes>();
  const auto read = [this, shown, writable, dn = selection.front().dn] {
    *shown = {};
    ldap::StoreStatus status{.code = -1, .text = "No directory is open."};
    if (directory_) status = directory_->store.Read(dn, {}, *shown);
    if (!status.Ok()) {
      ReportLater(QStringLiteral("The attributes cannot be read."), ToQString(status.text));
      return std::vector<session::AttributeRow>();
    }
    *writable = session::ReadWritable(directory_->store, dn);
    return session::AttributeRowsOf(directory_->store.schema(), *shown);
  };
  auto* const window = new AttributesWindow(ToQString(selection.front().name), read, this,
                                            EditorOf(shown, writable));
  window->show();
}

AttributeEditor MainWindow::EditorOf(std::shared_ptr<ldap::Entry> shown,
                                     std::shared_ptr<session::WritableAttributes> writable) {
  // The window with the attributes may be there longer than the directory.
  const auto schema = [this]() -> const ldap::Schema& {
    static const ldap::Schema kNone;
    return directory_ ? directory_->store.schema() : kNone;
  };
  return {.why_read_only =
              [schema, shown, writable](const std::string& attribute) {
                return session::WhyNotEditable(schema(), *writable, *shown, attribute);
              },
          .edited =
              [schema, shown](const std::string& attribute) {
                return session::Editable(schema(), *shown, attribute);
              },
          .settable = [schema, shown,
                       writable] { return session::Settable(schema(), *writable, *shown); },
          .why_not_taken =
              [schema](const std::string& attribute, const ldap::AttributeValues& values) {
                return session::WhyNotTaken(schema(), attribute, values);
              },
          .write =
              [this, shown](const session::EditableAttribute& seen, ldap::AttributeValues wanted) {
                if (!directory_) return false;
                const bool is_written = session::WriteAttribute({.store = directory_->store,
                                                                 .errands = errands_,
                                                                 .message_box = message_box_,
                                                                 .desk = &desk_,
                                                                 .history = &directory_->history},
                                                                shown->dn, seen, std::move(wanted));
                OnApplied();
                return is_written;
              }};
}

}  // namespace pelora::console
