// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hosts/console/fields/page_care.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/reading/directory_questions.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/session/directory_browser.h"

namespace pelora::console {

/// Shows the settings of an object; `from` is the window in which somebody asked for them.
using ShowObject = std::function<void(const session::DirectoryObject& object, QWidget& from)>;

/// What the line below the pages of a window says of the fields on them, what it offers to do about
/// it, and what the directory is asked for that, beside the window.
class FieldNotes final {
 public:
  /// `foot` and every page outlive the object. Without `opener` nothing is looked up.
  FieldNotes(const PageFoot& foot, ldap::StoreOpener opener);

  /// May be none.
  ShowObject show_object;
  /// Called when the directory has answered something of a page. May be none.
  std::function<void()> on_answer;
  /// Names of the objects whose own addresses are not somebody else's.
  std::vector<std::string> own;

  /// What there is to say: of the field with the keyboard, or of the one that is worst.
  [[nodiscard]] FootNote NoteOf(PageCare& page);
  /// The keyboard has moved on a page that shows. A field that it leaves shows what is meant by
  /// what was typed.
  void OnFocusMoved(PageCare& page, const QWidget* now);
  /// Asks who has the addresses, and whether there are the servers, that stand on a page now and
  /// were not asked for yet. Addresses once the typing pauses.
  void LookUp(PageCare& page);

  [[nodiscard]] const ldap::StoreOpener& opener() const { return opener_; }
  /// Null without `opener`.
  [[nodiscard]] DirectoryQuestions* questions() { return questions_ ? &*questions_ : nullptr; }
  [[nodiscard]] bool IsAsking() const;

 private:
  using Place = std::pair<PageCare*, std::size_t>;

  /// The offers that belong to a field, whatever is said of it.
  void AddOffer(FootNote& note, PageCare& page, std::size_t field);
  void AskForServer(const Place& place);
  void AskForOwners();
  /// Whether the text of a field is not what was asked for last.
  [[nodiscard]] bool IsAnother(const Place& place, const std::string& text);
  void FindObjects(PageCare& page, std::size_t field);

  const PageFoot& foot_;
  ldap::StoreOpener opener_;
  std::map<Place, std::string> asked_;
  /// Fields with addresses that are being typed.
  std::set<Place> typed_;
  std::optional<std::size_t> focused_;
  // What it is asked ends before the rest goes.
  std::optional<DirectoryQuestions> questions_;
  QTimer pause_;
};

}  // namespace pelora::console
