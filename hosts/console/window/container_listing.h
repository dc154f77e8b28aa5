// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

#include "hosts/console/reading/directory_reader.h"

namespace pelora::console {

class ObjectListPane;

/// Fills the list of objects with what a container holds, as it is read.
class ContainerListing final {
 public:
  /// How much of the container the list shows.
  enum class State : std::uint8_t { kWhole, kReading, kStopped, kCutShort, kFailed };

  /// `list` outlives the listing.
  explicit ContainerListing(ObjectListPane& list) : list_(list) {}

  /// The reader of the directory that is shown; null, to which the listing falls back before the
  /// reader ends, lists nothing.
  void SetReader(DirectoryReader* reader);

  /// Lists a container: the list is emptied and fills. One that is shown already is refreshed.
  void Show(session::ListRequest request);
  /// Lists the container again. What the list shows stays until everything has arrived; selected
  /// objects stay selected.
  void Refresh();
  /// Ends the reading; the list keeps what it shows.
  void Stop();

  [[nodiscard]] State state() const { return state_; }
  /// How many objects have arrived in a reading under way.
  [[nodiscard]] std::size_t ArrivedCount() const { return arrived_count_; }

  /// The state has changed, or more has arrived.
  std::function<void()> on_changed;
  std::function<void(const QString& reason)> on_failed;

 private:
  void Start(bool at_once);
  void Take(std::vector<session::DirectoryObject> objects, bool at_once);
  void Finish(const session::SearchEnd& end, bool at_once);
  void Enter(State state);

  ObjectListPane& list_;
  DirectoryReader* reader_ = nullptr;
  session::ListRequest request_;
  State state_ = State::kWhole;
  std::size_t arrived_count_ = 0;
  /// Of a refresh under way.
  std::vector<session::DirectoryObject> arrived_;
  DirectoryReader::Reading reading_;
};

}  // namespace pelora::console
