// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/errands.h"
#include "hosts/session/find_names.h"
#include "hosts/session/own_pages/own_field.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// What a page of members works on. All of it outlives the page.
struct MembersSurroundings {
  /// What the page stages is recorded there.
  changes::RecordingDirectory& recording;
  const Platform& platform;
  IErrands& errands;
  /// Finds the objects of pasted names. May be none.
  NameFinder find_names{};
  /// Why the members of the selected groups cannot be changed; empty when they can.
  std::string why_read_only{};
};

/// A page with the members of a group, or the groups that an object is in: they are chosen, or
/// found by a pasted list of names, and taken out; any number at a time. Either way it is the
/// groups that are written: what was put in and taken out, and nothing else of them, so that what
/// others do meanwhile stays.
///
/// What is listed is read when the page is shown first. Of several objects nothing is listed: what
/// is put in is put in for each of them.
class MembersPage final : public PropSheetPage, private IDialogController {
 public:
  /// `names` are the distinguished names of the selected objects.
  MembersPage(const OwnPageKind& kind, std::vector<std::string> names,
              MembersSurroundings surroundings);

  [[nodiscard]] DialogId Template() const override { return kind_.of_one; }
  [[nodiscard]] std::string Title() const override { return {}; }
  [[nodiscard]] IDialogController& Controller() override { return *this; }

  /// What was recorded has been written, or was to be. `is_done` says of which object it was
  /// written; what is neither written nor recorded any more is not to be written at all.
  void OnCommitted(const std::function<bool(const std::string& dn)>& is_done);

 private:
  /// Distinguished names by their keys. The rows of the list point at them.
  using Names = std::map<std::string, std::string>;

  std::int32_t OnInitDialog(IDialog& dialog) override;
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override;
  std::int32_t OnPageNotification(PageNotification notification) override;
  void OnDestroy() override { dialog_ = nullptr; }

  [[nodiscard]] bool ListsGroups() const { return kind_.lists == ListedObjects::kGroups; }
  [[nodiscard]] bool IsOfSeveral() const { return names_.size() > 1; }
  /// Reads what is listed; false when it cannot be read, which has been said then.
  [[nodiscard]] bool Read();
  void Fill();
  void AddRow(std::string& name);

  void Choose();
  void AddPasted();
  /// Puts in what is not there; those of the groups that the user has no right to change are left
  /// out and named.
  [[nodiscard]] std::string Add(std::vector<std::string> names);
  void AddOne(const std::string& name);
  void Remove();
  /// Takes away the groups that the user has no right to change, and names them.
  [[nodiscard]] std::string LeaveOutForeign(std::vector<std::string>& groups);
  void TellEdited();
  void UpdateButtons();
  void Note(const std::string& text);

  void Apply();
  void Record(const std::string& group, changes::AttributeValues out, changes::AttributeValues in);
  /// An edit has been written, or is not to be; whether the list shows that already.
  [[nodiscard]] bool SettleOne(const std::string& key, bool is_written);

  const OwnPageKind& kind_;
  std::vector<std::string> names_;
  MembersSurroundings surroundings_;
  /// What is in the directory; what was put in; and the keys of what was taken out of it.
  Names there_;
  Names put_in_;
  std::set<std::string> taken_out_;
  /// The groups of which something was recorded.
  Names recorded_;
  bool is_loaded_ = false;
  IDialog* dialog_ = nullptr;
};

}  // namespace pelora::session
