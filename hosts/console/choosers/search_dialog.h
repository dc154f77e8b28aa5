// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QTimer>
#include <chrono>
#include <span>
#include <vector>

#include "hosts/console/choosers/found_object_model.h"
#include "hosts/console/choosers/object_search.h"

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;
class QVBoxLayout;

namespace pelora::console {

class NameLabel;

/// What a search dialog offers.
struct SearchDialogInit {
  QString title;
  /// LDAP filter of the objects that may be chosen.
  std::string type_filter;
  bool multiple = false;
  /// What is searched for may have a logon name and a mail address.
  bool shows_addresses = true;
  /// At most so many objects are shown for one search.
  std::size_t limit = 1000;
  /// The search begins when nothing has been typed for so long.
  std::chrono::milliseconds typing_pause{250};
  /// Where else may be looked; none: nowhere.
  ldap::PlaceFinder find_places{};
};

/// Finds directory objects by what is typed or pasted (`FindText`) and lets the administrator
/// choose one or several. Without any text it shows what there is. The search never holds up the
/// window, shows what it finds at once, and says so when there is more than it shows. Where there
/// is more than one domain, the administrator says in which to look; what was chosen stays.
///
/// Where several may be chosen they are gathered in a list of their own, over any number of
/// searches; what is selected when OK is clicked counts as well, and what a list finds is selected.
/// Keys: Down and Enter go from the
/// text to what was found, Enter there takes the selected objects, Delete takes chosen ones out.
class SearchDialog final : public QDialog {
 public:
  SearchDialog(SearchDialogInit init, ldap::StoreOpener opener, QWidget* parent);
  ~SearchDialog() override;

  /// The chosen objects in the order in which they were chosen; those that were merely selected
  /// last, in the order shown.
  [[nodiscard]] std::vector<session::DirectoryObject> Chosen() const;

 private:
  void MakePlaces(QVBoxLayout& layout);
  void OnPlaces(const std::vector<std::string>& domains);
  void MakeText(QVBoxLayout& layout);
  void MakeResults(QVBoxLayout& layout);
  /// Sets the widths of the first columns, in average characters; 0 hides one.
  void SetColumns(std::span<const int> widths);
  void MakeChosen(QVBoxLayout& layout);
  void MakeButtons(QVBoxLayout& layout);

  void OnTextEdited();
  void OnTextEntered();
  void StartSearch();
  void OnFound(std::vector<session::FoundObject> objects);
  void OnFinished(const session::ListingEnd& ending);
  void GoToResults();

  /// Enter or a double click on what was found.
  void TakeSelected();
  void AddSelected();
  void RemoveChosen();
  void UpdateButtons();
  [[nodiscard]] std::vector<session::DirectoryObject> Selected() const;
  [[nodiscard]] bool IsChosen(const std::string& dn) const;

  SearchDialogInit init_;
  std::vector<session::DirectoryObject> chosen_;
  QTimer pause_;
  FoundObjectModel* found_;
  QSortFilterProxyModel* shown_;
  /// In view once there is a choice.
  QLabel* places_label_ = nullptr;
  QComboBox* places_ = nullptr;
  QLineEdit* text_ = nullptr;
  QTreeView* results_ = nullptr;
  NameLabel* status_ = nullptr;
  /// These three only where several may be chosen.
  QListWidget* chosen_list_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* remove_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
  // Last: nothing arrives any more when the rest goes.
  ObjectSearch search_;
};

}  // namespace pelora::console
