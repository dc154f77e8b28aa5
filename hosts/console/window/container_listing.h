// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/reading/directory_reader.h"
#include "hosts/session/find/listing.h"

namespace pelora::console {

class ObjectListPane;

/// What a list is to show: which objects, and what of them.
struct ListOrder {
  session::Listing listing;
  /// `ListColumn::name` of each column; the name comes first, named or not.
  std::vector<std::string> columns;

  [[nodiscard]] bool operator==(const ListOrder&) const = default;
};

/// Fills the list of objects with what a container holds or a search finds, as it is read.
class ContainerListing final {
 public:
  /// How much of what was asked for the list shows.
  enum class State : std::uint8_t { kWhole, kReading, kStopped, kCutShort, kTooMany, kFailed };

  /// `list` outlives the listing.
  explicit ContainerListing(ObjectListPane& list);

  /// The reader of the directory that is shown, and the fields of its objects, which outlive the
  /// reading; null, to which the listing falls back before the reader ends, lists nothing. Without
  /// fields only what every object has can be shown.
  void SetReader(DirectoryReader* reader, session::FieldCatalogue* fields = nullptr);

  /// Lists what is asked for: the list is emptied and fills. What is shown already is refreshed.
  void Show(ListOrder order);
  /// Lists it again. What the list shows stays until everything has arrived; selected objects stay
  /// selected.
  void Refresh();
  /// Lists nothing until something is asked for again.
  void Clear();
  /// Ends the reading; the list keeps what it shows.
  void Stop();

  [[nodiscard]] State state() const { return state_; }
  [[nodiscard]] const ListOrder& order() const { return order_; }
  /// How many objects have arrived in a reading under way.
  [[nodiscard]] std::size_t ArrivedCount() const { return arrived_count_; }
  /// Items of a pasted list that were not found, and how many were not looked for.
  [[nodiscard]] const session::ListingEnd& ending() const { return *ending_; }

  /// The state has changed, or more has arrived.
  std::function<void()> on_changed;
  std::function<void(const QString& reason)> on_failed;

 private:
  /// The list is left without objects.
  void Empty();
  void Start(bool at_once);
  void Take(std::vector<session::ListedObject> objects);
  void ShowArrived();
  void Finish(const session::SearchEnd& end);
  void Enter(State state);

  ObjectListPane& list_;
  DirectoryReader* reader_ = nullptr;
  session::FieldCatalogue* fields_ = nullptr;
  std::shared_ptr<const session::CheckFields> check_fields_;
  std::shared_ptr<const session::ListColumns> columns_;
  ListOrder order_;
  bool has_order_ = false;
  State state_ = State::kWhole;
  std::size_t arrived_count_ = 0;
  std::shared_ptr<session::ListingEnd> ending_ = std::make_shared<session::ListingEnd>();
  /// What arrives is shown as it does; otherwise when it is all there, in place of what is shown.
  bool shows_at_once_ = true;
  /// Runs after what had arrived was shown, until more is.
  QTimer show_;
  DirectoryReader::Reading reading_;
};

}  // namespace pelora::console
