// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/container_listing.h"

#include <QTreeView>
#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_list_pane.h"

namespace pelora::console {

void ContainerListing::SetReader(DirectoryReader* reader) {
  reading_.Stop();
  reader_ = reader;
  request_ = {};
  list_.SetObjects({});
  Enter(State::kWhole);
}

void ContainerListing::Show(session::ListRequest request) {
  if (request == request_) return Refresh();
  request_ = std::move(request);
  list_.SetObjects({});
  list_.view().scrollToTop();
  Start(true);
}

void ContainerListing::Refresh() {
  if (request_.container.empty()) return;
  Start(false);
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
  reading_ = reader_->Start(
      request_,
      [this, at_once](std::vector<session::DirectoryObject> objects) {
        Take(std::move(objects), at_once);
      },
      [this, at_once](const session::SearchEnd& end) { Finish(end, at_once); });
  Enter(State::kReading);
}

void ContainerListing::Take(std::vector<session::DirectoryObject> objects, bool at_once) {
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
  const bool is_usable = end.reason == kComplete || end.reason == kDirectoryLimit;
  if (!at_once && is_usable) list_.SetObjects(std::exchange(arrived_, {}));
  Enter(end.reason == kComplete         ? State::kWhole
        : end.reason == kDirectoryLimit ? State::kCutShort
                                        : State::kFailed);
  if (end.reason == kFailed && on_failed) on_failed(ToQString(end.text));
}

void ContainerListing::Enter(State state) {
  state_ = state;
  if (on_changed) on_changed();
}

}  // namespace pelora::console
