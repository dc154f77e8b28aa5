// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/session/find/ready_views.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace pelora::console {

/// The line above the list of objects: what is to be found, where, and in which view. As long as
/// nothing is asked, the list shows the container that is chosen in the tree.
///
/// A search begins when nothing has been typed for a moment, or at once with Enter; Enter without a
/// text finds everything that the view has, and Enter once more leads to what is found. Escape asks
/// for nothing any more.
class FindBar final : public QWidget {
 public:
  explicit FindBar(QWidget* parent);

  /// The views that the user has made, beside those that everybody has.
  void SetUserViews(std::vector<session::View> views);
  [[nodiscard]] const std::vector<session::View>& user_views() const { return user_views_; }
  /// What the chosen container is called.
  void SetContainer(const QString& name);

  /// Whether something is asked.
  [[nodiscard]] bool IsAsking() const { return is_asking_; }
  /// Nothing is asked any more; nobody is told.
  void Clear();
  /// Shows a view of that name, in any case, with an answer to its question; without one, with its
  /// preset. A sentence when there is no such view; empty otherwise.
  [[nodiscard]] QString ShowView(const QString& name, const std::optional<QString>& answer);

  [[nodiscard]] std::string Text() const;
  /// The chosen view with its answer put in, or why that cannot be.
  [[nodiscard]] session::AnsweredView View() const;
  /// The name under which the view's columns are remembered.
  [[nodiscard]] QString ViewName() const;

  enum class Where : int { kDirectory, kBelow, kContainer };
  [[nodiscard]] Where where() const;

  [[nodiscard]] QLineEdit& text() const { return *text_; }
  [[nodiscard]] QComboBox& views() const { return *views_; }
  [[nodiscard]] QLineEdit& answer() const { return *answer_; }

  /// Something else is asked, or nothing any more.
  std::function<void()> on_asked;
  /// Down in the text, or Enter for what is asked already: the list is to have the keyboard.
  std::function<void()> on_down;

 private:
  void FillViews();
  void Ask(bool asks);
  void OnEntered();
  void OnViewChosen();
  void ShowQuestion();
  [[nodiscard]] const session::ReadyView* Ready() const;

  std::vector<session::View> check_views_;
  std::vector<session::View> user_views_;
  bool is_asking_ = false;
  /// What stood in the lines when it was asked last.
  QStringList asked_;
  QTimer pause_;
  QLineEdit* text_;
  QComboBox* where_;
  QComboBox* views_;
  QLabel* question_;
  QLineEdit* answer_;
};

}  // namespace pelora::console
