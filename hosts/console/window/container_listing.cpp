// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/container_listing.h"

#include <QTreeView>
#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_list_pane.h"

namespace pelora::console {

void ContainerListing::SetReader(DirectoryReader* reader, session::FieldCatalogue* fields) {
  reading_.Stop();
  reader_ = reader;
  fields_ = fields;
  columns_.reset();
  check_fields_ = std::make_shared<session::CheckFields>(
      fields == nullptr ? session::CheckFields(session::CheckFields::RowsByClass())
                        : session::CheckFieldsOf(*fields));
  order_ = {};
  has_order_ = false;
  *ending_ = {};
  list_.SetObjects({});
  Enter(State::kWhole);
}

void ContainerListing::Show(ListOrder order) {
  if (has_order_ && order == order_) return Refresh();
  reading_.Stop();
  const bool same_columns = columns_ && order.columns == order_.columns;
  order_ = std::move(order);
  has_order_ = true;
  if (!same_columns) {
    std::vector<std::string> names = {"name"};
    names.insert(names.end(), order_.columns.begin(), order_.columns.end());
    columns_ = std::make_shared<session::ListColumns>(names, fields_);
    list_.SetColumns(columns_->columns());
  }
  list_.SetObjects({});
  list_.view().scrollToTop();
  Start(true);
}

void ContainerListing::Refresh() {
  if (has_order_) Start(false);
}

void ContainerListing::Stop() {
  if (!reading_.IsRunning()) return;
  reading_.Stop();
  arrived_.clear();
  Enter(State::kStopped);
}

void ContainerListing::Start(bool at_once) {
  if (reader_ == nullptr) return;
  arrived_.clear();
  arrived_count_ = 0;
  // Of a reading of its own: one that was stopped may still be writing into its.
  ending_ = std::make_shared<session::ListingEnd>();
  reading_ = reader_->StartWork<session::ListedObject>(
      [listing = order_.listing, columns = columns_, check_fields = check_fields_,
       ending = ending_](ldap::IDirectoryStore& store, const session::ListedSink& take) {
        *ending = session::ListObjects(store, listing, *columns, *check_fields, take);
        return ending->end;
      },
      [this, at_once](std::vector<session::ListedObject> objects) {
        Take(std::move(objects), at_once);
      },
      [this, at_once](const session::SearchEnd& end) { Finish(end, at_once); });
  Enter(State::kReading);
}

void ContainerListing::Take(std::vector<session::ListedObject> objects, bool at_once) {
  arrived_count_ += objects.size();
  if (at_once) {
    list_.AddObjects(std::move(objects));
  } else {
    std::ranges::move(objects, std::back_inserter(arrived_));
  }
  Enter(State::kReading);
}

void ContainerListing::Finish(const session::SearchEnd& end, bool at_once) {
  using enum session::SearchEnd::Reason;
  const bool is_usable = end.reason != kFailed;
  try {
    if (!at_once && is_usable) list_.SetObjects(std::exchange(arrived_, {}));
  } catch (...) {
    Enter(State::kFailed);
    throw;
  }
  Enter(end.reason == kComplete         ? State::kWhole
        : end.reason == kDirectoryLimit ? State::kCutShort
        : end.reason == kOwnLimit       ? State::kTooMany
                                        : State::kFailed);
  if (end.reason == kFailed && on_failed) on_failed(ToQString(end.text));
}

void ContainerListing::Enter(State state) {
  state_ = state;
  if (on_changed) on_changed();
}

}  // namespace pelora::console
