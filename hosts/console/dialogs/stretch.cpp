// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/stretch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>

namespace pelora::console {
namespace {

/// A stretch of one axis, its end behind it.
struct Span {
  int begin = 0;
  int end = 0;

  [[nodiscard]] bool Overlaps(const Span& other) const {
    return begin < other.end && other.begin < end;
  }
  [[nodiscard]] bool Covers(const Span& other) const {
    return begin <= other.begin && other.end <= end;
  }
};

Span Across(const QRect& place) { return {place.left(), place.left() + place.width()}; }
Span Down(const QRect& place) { return {place.top(), place.top() + place.height()}; }

/// One control, or a frame with all that is in it, as one axis sees it.
struct Part {
  /// On the axis that is stretched, and on the other one.
  Span along;
  Span beside;
  Growth growth = Growth::kNone;
};

/// Numbers of parts that lie beside one another, directly or by way of others.
using Band = std::vector<std::size_t>;

std::vector<Band> BandsOf(const std::vector<Part>& parts) {
  std::vector<std::size_t> order(parts.size());
  for (std::size_t at = 0; at < order.size(); ++at) order[at] = at;
  std::ranges::sort(order, {}, [&parts](std::size_t at) { return parts[at].beside.begin; });
  std::vector<Band> bands;
  int end = 0;
  for (const std::size_t at : order) {
    if (bands.empty() || parts[at].beside.begin >= end) {
      bands.emplace_back();
      end = parts[at].beside.end;
    }
    bands.back().push_back(at);
    end = std::max(end, parts[at].beside.end);
  }
  return bands;
}

/// The stretches of a band in which it can be drawn out, from its beginning on.
std::vector<Span> SoftSpans(const std::vector<Part>& parts, const Band& band) {
  std::set<int> cuts;
  for (const std::size_t at : band) cuts.insert({parts[at].along.begin, parts[at].along.end});
  std::vector<Span> soft;
  for (auto cut = cuts.begin(); cut != cuts.end() && std::next(cut) != cuts.end(); ++cut) {
    const Span span{*cut, *std::next(cut)};
    const auto has = [&](Growth growth) {
      return std::ranges::any_of(band, [&](std::size_t at) {
        return parts[at].growth == growth && parts[at].along.Covers(span);
      });
    };
    if (has(Growth::kGrows) && !has(Growth::kRigid)) soft.push_back(span);
  }
  return soft;
}

/// Where a place comes to lie when the soft stretches are drawn out by so much altogether.
int Moved(int place, const std::vector<Span>& soft, int extra) {
  std::int64_t before = 0;
  std::int64_t total = 0;
  for (const Span& span : soft) {
    total += span.end - span.begin;
    before += std::clamp(place, span.begin, span.end) - span.begin;
  }
  return place + static_cast<int>(before * extra / total);
}

/// The parts' places along the axis in a room that is larger by `extra`. Bands without anything
/// that grows stay, or go to the end with `keeps_to_edges` where that is nearer.
std::vector<Span> StretchedAlong(const std::vector<Part>& parts, const Span& room, int extra,
                                 bool keeps_to_edges) {
  std::vector<Span> places(parts.size());
  for (const Band& band : BandsOf(parts)) {
    const std::vector<Span> soft = SoftSpans(parts, band);
    int begin = room.end;
    int end = room.begin;
    for (const std::size_t at : band) {
      begin = std::min(begin, parts[at].along.begin);
      end = std::max(end, parts[at].along.end);
    }
    const bool goes_to_end = keeps_to_edges && room.end - end < begin - room.begin;
    for (const std::size_t at : band) {
      const Span& along = parts[at].along;
      if (soft.empty()) {
        const int moved = goes_to_end ? extra : 0;
        places[at] = {along.begin + moved, along.end + moved};
      } else {
        places[at] = {Moved(along.begin, soft, extra), Moved(along.end, soft, extra)};
      }
    }
  }
  return places;
}

/// Lays out what is in one frame, or outside of all of them.
class Room {
 public:
  Room(const std::vector<Stretchable>& controls, std::vector<QRect>& places)
      : controls_(controls), places_(places) {}

  void Stretch(const std::vector<std::size_t>& members, const QRect& room, QSize extra,
               QPoint origin) {
    const std::vector<std::size_t> outer = Outermost(members);
    std::vector<Part> across;
    std::vector<Part> down;
    for (const std::size_t at : outer) {
      const QRect& place = controls_[at].place;
      across.push_back({Across(place), Down(place), GrowthAcross(at)});
      down.push_back({Down(place), Across(place), GrowthDown(at, members)});
    }
    const std::vector<Span> columns = StretchedAlong(across, Across(room), extra.width(), true);
    const std::vector<Span> rows = StretchedAlong(down, Down(room), extra.height(), false);
    for (std::size_t i = 0; i < outer.size(); ++i) {
      const std::size_t at = outer[i];
      const QPoint corner(columns[i].begin, rows[i].begin);
      const QSize size(columns[i].end - columns[i].begin, rows[i].end - rows[i].begin);
      places_[at] = QRect(corner + origin, size);
      if (!controls_[at].is_frame) continue;
      const QRect& place = controls_[at].place;
      Stretch(Within(at, members), place, size - place.size(), origin + corner - place.topLeft());
    }
  }

 private:
  [[nodiscard]] bool Holds(std::size_t frame, std::size_t at) const {
    return frame != at && controls_[frame].is_frame &&
           controls_[frame].place.contains(controls_[at].place);
  }
  [[nodiscard]] std::vector<std::size_t> Within(std::size_t frame,
                                                const std::vector<std::size_t>& members) const {
    std::vector<std::size_t> within;
    std::ranges::copy_if(members, std::back_inserter(within),
                         [&](std::size_t at) { return Holds(frame, at); });
    return within;
  }
  [[nodiscard]] std::vector<std::size_t> Outermost(const std::vector<std::size_t>& members) const {
    std::vector<std::size_t> outer;
    std::ranges::copy_if(members, std::back_inserter(outer), [&](std::size_t at) {
      return std::ranges::none_of(members, [&](std::size_t frame) { return Holds(frame, at); });
    });
    return outer;
  }
  [[nodiscard]] Growth GrowthAcross(std::size_t at) const {
    return controls_[at].is_frame ? Growth::kGrows : controls_[at].across;
  }
  [[nodiscard]] Growth GrowthDown(std::size_t at, const std::vector<std::size_t>& members) const {
    if (!controls_[at].is_frame) return controls_[at].down;
    const std::vector<std::size_t> within = Within(at, members);
    const bool grows = std::ranges::any_of(
        within, [&](std::size_t inner) { return controls_[inner].down == Growth::kGrows; });
    return grows ? Growth::kGrows : Growth::kRigid;
  }

  const std::vector<Stretchable>& controls_;
  std::vector<QRect>& places_;
};

}  // namespace

std::vector<QRect> Stretched(const std::vector<Stretchable>& controls, const QRect& room,
                             QSize extra) {
  std::vector<QRect> places(controls.size());
  std::vector<std::size_t> all(controls.size());
  for (std::size_t at = 0; at < all.size(); ++at) all[at] = at;
  Room(controls, places).Stretch(all, room, extra, {});
  return places;
}

bool GrowsDown(const std::vector<Stretchable>& controls) {
  return std::ranges::any_of(
      controls, [](const Stretchable& control) { return control.down == Growth::kGrows; });
}

}  // namespace pelora::console
