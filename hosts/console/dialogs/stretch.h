// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <cstdint>
#include <vector>

namespace pelora::console {

/// What a control makes of room that its template did not give it, in one direction.
enum class Growth : std::uint8_t {
  /// A label, a check box: its size means nothing to it.
  kNone,
  /// A button, a picture: it is not to be drawn out, nor torn from what stands around it.
  kRigid,
  /// A field, a list: the more the better.
  kGrows,
};

/// One control where its template has it.
struct Stretchable {
  QRect place;
  Growth across = Growth::kNone;
  Growth down = Growth::kNone;
  /// A frame holds the controls that stand within it, and grows with them.
  bool is_frame = false;
};

/// Where controls go when there is more room than their template asks for. `places` are those of
/// the template, within `room`; the answer has them in the same order, within a room that is larger
/// by `extra` (which is not negative).
///
/// Nothing overlaps that did not before, and what stood in a line still does:
/// - Controls beside one another share what there is across, those below one another what there is
///   down. Each such row or column is stretched for itself, where a growing control lies and no
///   rigid one: a button at the end of a field's row goes to the end, the buttons beside a list
///   stay at its top.
/// - A row without anything that grows keeps to the edge of the room to which it is nearer.
/// - Frames are as wide as there is room, and as high as their contents want; within them the same
///   holds as without.
[[nodiscard]] std::vector<QRect> Stretched(const std::vector<Stretchable>& controls,
                                           const QRect& room, QSize extra);

/// Whether anything would grow in height.
[[nodiscard]] bool GrowsDown(const std::vector<Stretchable>& controls);

}  // namespace pelora::console
