// SPDX-License-Identifier: Apache-2.0
// What the pane finds, and in which columns it shows it.
#include <QLineEdit>
#include <QTreeView>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/finding/column_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/directory_pane.h"
#include "hosts/session/find/find_text.h"

namespace pelora::console {

void DirectoryPane::MakeFind() {
  session::ReadViews read = remembered_.Views();
  find_->SetUserViews(std::move(read.views));
  find_->on_asked = [this] { ShowAsked(); };
  find_->on_down = [this] {
    if (!list_->view().currentIndex().isValid()) {
      list_->view().setCurrentIndex(list_->view().model()->index(0, ObjectListModel::kName));
    }
    list_->view().setFocus();
  };
  view_actions_ = new ViewActions(*this);
}

void DirectoryPane::Find() {
  find_->text().setFocus();
  find_->text().selectAll();
}

QString DirectoryPane::ShowView(const QString& view) {
  const qsizetype equals = view.indexOf(QLatin1Char('='));
  if (equals < 0) return find_->ShowView(view, {});
  return find_->ShowView(view.left(equals), view.mid(equals + 1));
}

ListOrder DirectoryPane::ContainerOrder() const {
  ListOrder order{.listing = {.below = false, .advanced = is_advanced_},
                  .columns = {"type", "remark"}};
  if (const session::DirectoryObject* const container = Container(); container != nullptr) {
    order.listing.base = container->dn;
  }
  return order;
}

ListOrder DirectoryPane::OrderOf(const session::View& view) const {
  ListOrder order{.listing = {.base = view.base,
                              .below = view.below,
                              .text = find_->Text(),
                              .filter = view.filter,
                              .rule = view.rule,
                              .advanced = is_advanced_},
                  .columns = view.columns};
  const FindBar::Where where = find_->where();
  if (!view.base.empty() || where == FindBar::Where::kDirectory) return order;
  order.listing.base = ContainerOrder().listing.base;
  order.listing.below = where == FindBar::Where::kBelow;
  return order;
}

void DirectoryPane::ShowAsked() {
  const session::AnsweredView answered = find_->View();
  answer_error_ = find_->IsAsking() ? ToQString(answered.error) : QString();
  // What was asked before is no answer to this.
  if (!answer_error_.isEmpty()) return listing_->Clear();
  if (!find_->IsAsking() && Container() == nullptr) return;
  List(find_->IsAsking() ? OrderOf(answered.view) : ContainerOrder(), find_->ViewName());
}

void DirectoryPane::List(ListOrder order, const QString& name) {
  if (list_reader_ == nullptr) return;
  answer_error_.clear();
  if (const auto columns = remembered_.Columns(name); columns) order.columns = *columns;
  const bool is_same = name == listed_name_ && order.columns == listing_->order().columns;
  if (!is_same) RememberLayout();
  select_found_ = find_->IsAsking() && !order.listing.text.empty();
  listing_->Show(std::move(order));
  if (is_same) return;
  listed_name_ = name;
  list_->SetLayout(remembered_.Layout(name));
  listed_layout_ = list_->Layout();
}

void DirectoryPane::SelectFound() {
  const bool is_list = !session::FindText(find_->Text()).items().empty();
  const bool is_meant = list_->ShownCount() == 1 || is_list;
  if (!is_meant || list_->ShownCount() == 0 || !list_->Selection().empty()) return;
  list_->view().setCurrentIndex(list_->view().model()->index(0, ObjectListModel::kName));
  list_->view().selectAll();
}

void DirectoryPane::RememberLayout() {
  if (listed_name_.isEmpty() || list_->Layout() == listed_layout_) return;
  remembered_.SetLayout(listed_name_, list_->Layout());
  listed_layout_ = list_->Layout();
}

session::View DirectoryPane::ShownView() const {
  session::View view = find_->View().view;
  const ListOrder& order = listing_->order();
  view.base = order.listing.base;
  view.below = order.listing.below;
  view.columns = order.columns;
  return view;
}

void DirectoryPane::ChooseColumns() {
  if (fields_ == nullptr) return;
  ColumnDialog dialog(session::AllColumns(*fields_), list_->Lying(), this);
  if (RunModal(dialog) != QDialog::Accepted) return;
  const QString name = find_->ViewName();
  remembered_.SetColumns(name, dialog.Chosen());
  // What was moved by the mouse stands in the dialog's order, and is not moved once more.
  listed_layout_ = list_->Layout();
  remembered_.SetLayout(name, {});
  ShowAsked();
  list_->SetWidths(dialog.Widths());
  listed_layout_ = list_->Layout();
  remembered_.SetLayout(name, listed_layout_);
}

}  // namespace pelora::console
