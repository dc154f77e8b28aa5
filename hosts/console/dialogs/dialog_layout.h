// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "hosts/console/dialogs/dialog_control.h"
#include "hosts/console/dialogs/dialog_units.h"
#include "hosts/console/dialogs/stretch.h"

namespace pelora::console {

/// A dialog's controls, in the order of its template's items.
using DialogControls = std::vector<std::unique_ptr<DialogControl>>;

/// The units in which `controls` are to be placed: those of `font`, widened where a control's own
/// text or frame would otherwise be cut off. Fonts and styles differ in their proportions; the
/// template's layout stays what it is, everything grows alike, by half at most.
[[nodiscard]] DialogUnits FittingUnits(const resources::DialogTemplate& dialog,
                                       const DialogControls& controls, const QFont& font);

/// Where the controls of a dialog lie, whatever its size: as its template says in the size that the
/// template gives, stretched by what kind of control each is where there is more room, and turned
/// round where people read from right to left.
class DialogLayout {
 public:
  /// Puts group boxes behind the other controls, larger ones behind smaller; places nothing yet.
  /// `controls` outlive the layout.
  DialogLayout(const resources::DialogTemplate& dialog, const DialogControls& controls,
               const DialogUnits& units);

  /// The size that the template gives. In a smaller one the controls reach over the edge.
  [[nodiscard]] QSize TemplateSize() const { return size_; }
  /// Whether more height is of any use.
  [[nodiscard]] bool GrowsDown() const { return console::GrowsDown(stretchables_); }
  void Place(QSize size, Qt::LayoutDirection direction) const;

 private:
  const DialogControls& controls_;
  QSize size_;
  std::vector<Stretchable> stretchables_;
};

/// Joins labels with what they name, gives every control its accessible name, and a key that leads
/// to it with Alt: its template's, or else one that is not in `taken_keys`.
void ConnectControls(const resources::DialogTemplate& dialog, const DialogControls& controls,
                     const QString& taken_keys);

/// Marks in each control's text the letter that leads to it with Alt: its own, or else one that is
/// not in `taken`. To be done again when texts were changed.
void GiveKeys(const DialogControls& controls, const QString& taken);

}  // namespace pelora::console
