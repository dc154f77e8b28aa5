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
  const auto read = [this, dn = selection.front().dn] {
    ldap::Entry entry;
    ldap::StoreStatus status{.code = -1, .text = "No directory is open."};
    if (directory_) status = directory_->store.Read(dn, {}, entry);
    if (!status.Ok()) {
      ReportLater(QStringLiteral("The attributes cannot be read."), ToQString(status.text));
      return std::vector<session::AttributeRow>();
    }
    return session::AttributeRowsOf(directory_->store.schema(), entry);
  };
  auto* const window = new AttributesWindow(ToQString(selection.front().name), read, this);
  window->show();
}

}  // namespace pelora::console
