// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/field_menu.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/fields/page_care.h"
#include "hosts/console/fields/value_list.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/field_values.h"

namespace pelora::console {
namespace {

const QKeySequence& BackKey() {
  static const QKeySequence key(Qt::CTRL | Qt::Key_R);
  return key;
}

/// Gives every entry a letter of its own, whoever brought it.
void GiveLetters(const QMenu& menu) {
  // Behind it stands the entry's key.
  constexpr QChar kTab(u'\t');
  QStringList texts;
  for (const QAction* const action : menu.actions()) {
    texts.append(action->text().section(kTab, 0, 0));
  }
  const QStringList marked = WithMnemonics(texts, {});
  for (qsizetype at = 0; at < texts.size(); ++at) {
    QAction& action = *menu.actions().at(at);
    action.setText(marked.at(at) + action.text().mid(texts.at(at).size()));
  }
}

}  // namespace

FieldMenu::FieldMenu(PageCare& page) : page_(page) {}

void FieldMenu::Watch(QWidget& control) { control.installEventFilter(this); }

bool FieldMenu::eventFilter(QObject* object, QEvent* event) {
  auto* const control = qobject_cast<QWidget*>(object);
  const bool is_key = event->type() == QEvent::KeyPress;
  if (control == nullptr || (!is_key && event->type() != QEvent::ContextMenu)) return false;
  const std::optional<std::size_t> field = page_.FieldAt(control);
  if (!field || !page_.fields().IsShown()) return false;
  if (!is_key) {
    Open(*control, *field, static_cast<const QContextMenuEvent*>(event)->globalPos());
    return true;
  }
  const auto* const key = static_cast<const QKeyEvent*>(event);
  if (QKeySequence(key->keyCombination()) == BackKey()) {
    page_.SetBack(*field);
    return true;
  }
  if (key->key() != Qt::Key_F2 || key->modifiers() != Qt::NoModifier) return false;
  ShowValues(*control, *field);
  return true;
}

void FieldMenu::Open(QWidget& control, std::size_t field, const QPoint& place) {
  auto* const edit = qobject_cast<QLineEdit*>(&control);
  QMenu* const menu = edit != nullptr ? edit->createStandardContextMenu() : new QMenu(&control);
  menu->setObjectName(QStringLiteral("field_menu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (!menu->isEmpty()) menu->addSeparator();
  const session::TouchedFields& touched = page_.fields().touched;
  QAction* const back = menu->addAction(QStringLiteral("&Back to what was read"), BackKey(), this,
                                        [this, field] { page_.SetBack(field); });
  back->setEnabled(touched.CanSetBack(field) && touched.IsChanged(field));
  const std::size_t count = page_.fields().selection.size();
  if (count > 1 && !session::ValuesOf(page_.fields(), field).empty()) {
    menu->addAction(QStringLiteral("&Values of the objects..."), QKeySequence(Qt::Key_F2), this,
                    [this, &control, field] { ShowValues(control, field); });
  }
  if (page_.CanRemove(field)) {
    menu->addAction(count > 1 ? QStringLiteral("&Remove the value from %1 objects").arg(count)
                              : QStringLiteral("&Remove the value"),
                    this, [this, field] { page_.RemoveValue(field); });
  }
  GiveLetters(*menu);
  menu->popup(place);
}

void FieldMenu::ShowValues(QWidget& control, std::size_t field) {
  const std::span<const session::HeldValue> values = session::ValuesOf(page_.fields(), field);
  if (values.empty()) return;
  auto* const list =
      new ValueList(ToQString(page_.fields().labels.at(field)), values, control.window());
  list->setAttribute(Qt::WA_DeleteOnClose);
  list->show();
}

}  // namespace pelora::console
