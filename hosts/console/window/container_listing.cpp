// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/container_listing.h"

#include <QElapsedTimer>
#include <QTreeView>
#include <utility>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_list_pane.h"

namespace pelora::console {
namespace {

/// Showing what has arrived costs a walk over all that is there: at most one part in so many of the
/// time goes by with it, unless so much has arrived that putting it in order would be felt.
constexpr int kPartOfTime = 8;
constexpr std::size_t kMostUnseen = 4000;

}  // namespace

ContainerListing::ContainerListing(ObjectListPane& list) : list_(list) {
  show_.setSingleShot(true);
  QObject::connect(&show_, &QTimer::timeout, [this] {
    if (list_.GatheredCount() > 0) ShowArrived();
  });
}

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
  Empty();
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
  Empty();
  list_.view().scrollToTop();
  Start(true);
}

void ContainerListing::Refresh() {
  if (has_order_) Start(false);
}

void ContainerListing::Clear() {
  reading_.Stop();
  has_order_ = false;
  ending_ = std::make_shared<session::ListingEnd>();
  Empty();
  Enter(State::kWhole);
}

void ContainerListing::Stop() {
  if (!reading_.IsRunning()) return;
  reading_.Stop();
  show_.stop();
  if (shows_at_once_) {
    list_.ShowGathered();
  } else {
    list_.DropGathered();
  }
  Enter(State::kStopped);
}

void ContainerListing::Empty() {
  show_.stop();
  list_.DropGathered();
  list_.ShowGatheredOnly();
}

void ContainerListing::Start(bool at_once) {
  if (reader_ == nullptr) return;
  show_.stop();
  list_.DropGathered();
  shows_at_once_ = at_once;
  arrived_count_ = 0;
  // Of a reading of its own: one that was stopped may still be writing into its.
  ending_ = std::make_shared<session::ListingEnd>();
  reading_ = reader_->StartWork<session::ListedObject>(
      [listing = order_.listing, columns = columns_, check_fields = check_fields_,
       ending = ending_](ldap::IDirectoryStore& store, const session::ListedSink& take) {
        *ending = session::ListObjects(store, listing, *columns, *check_fields, take);
        return ending->end;
      },
      [this](std::vector<session::ListedObject> objects) { Take(std::move(objects)); },
      [this](const session::SearchEnd& end) { Finish(end); });
  Enter(State::kReading);
}

void ContainerListing::Take(std::vector<session::ListedObject> objects) {
  arrived_count_ += objects.size();
  list_.Gather(std::move(objects));
  const bool is_time = !show_.isActive() || list_.GatheredCount() >= kMostUnseen;
  if (shows_at_once_ && is_time) ShowArrived();
  Enter(State::kReading);
}

void ContainerListing::ShowArrived() {
  QElapsedTimer time;
  time.start();
  list_.ShowGathered();
  const qint64 pause = time.elapsed() * (kPartOfTime - 1);
  if (pause > 0) show_.start(static_cast<int>(pause));
}

void ContainerListing::Finish(const session::SearchEnd& end) {
  using enum session::SearchEnd::Reason;
  const bool is_usable = end.reason != kFailed;
  show_.stop();
  try {
    if (shows_at_once_) {
      list_.ShowGathered();
    } else if (is_usable) {
      list_.ShowGatheredOnly();
    } else {
      list_.DropGathered();
    }
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
