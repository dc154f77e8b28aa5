// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>
#include <array>

#include "hosts/console/program/guarded_application.h"

namespace pelora::console {
namespace {

/// Pictures are drawn on a grid of this many steps each way.
constexpr double kGrid = 16;

void Outline(QPainter& painter, const QPainterPath& path) { painter.drawPath(path); }

void Person(QPainter& painter, double x, double y) {
  QPainterPath shoulders;
  shoulders.moveTo(x - 4.5, y + 10);
  shoulders.cubicTo(x - 4.5, y + 3.5, x + 4.5, y + 3.5, x + 4.5, y + 10);
  shoulders.closeSubpath();
  Outline(painter, shoulders);
  painter.drawEllipse(QPointF(x, y + 2), 2.4, 2.4);
}

void DrawUser(QPainter& painter) { Person(painter, 8, 2.5); }

void DrawContact(QPainter& painter) {
  painter.drawRect(QRectF(1.5, 3, 13, 10));
  painter.drawEllipse(QPointF(5, 6.5), 1.4, 1.4);
  painter.drawLine(QPointF(3, 10.5), QPointF(7, 10.5));
  painter.drawLine(QPointF(9.5, 6.5), QPointF(12.5, 6.5));
  painter.drawLine(QPointF(9.5, 9.5), QPointF(12.5, 9.5));
}

void DrawGroup(QPainter& painter) {
  Person(painter, 10.5, 1);
  Person(painter, 5.5, 4);
}

void DrawDynamicGroup(QPainter& painter) {
  Person(painter, 5.5, 1);
  QPainterPath funnel;
  funnel.moveTo(8, 8);
  funnel.lineTo(15, 8);
  funnel.lineTo(12.5, 11.5);
  funnel.lineTo(12.5, 15);
  funnel.lineTo(10.5, 14);
  funnel.lineTo(10.5, 11.5);
  funnel.closeSubpath();
  Outline(painter, funnel);
}

void DrawAddressList(QPainter& painter) {
  painter.drawRect(QRectF(3, 1.5, 11, 13));
  for (const double y : {4.5, 8.0, 11.5}) {
    painter.drawLine(QPointF(1.5, y), QPointF(4.5, y));
    painter.drawLine(QPointF(7, y), QPointF(11.5, y));
  }
}

void DrawComputer(QPainter& painter) {
  painter.drawRect(QRectF(1.5, 2.5, 13, 8.5));
  painter.drawLine(QPointF(8, 11), QPointF(8, 14));
  painter.drawLine(QPointF(4.5, 14), QPointF(11.5, 14));
}

void DrawContainer(QPainter& painter) {
  QPainterPath folder;
  folder.moveTo(1.5, 13);
  folder.lineTo(1.5, 3.5);
  folder.lineTo(6, 3.5);
  folder.lineTo(7.5, 5.5);
  folder.lineTo(14.5, 5.5);
  folder.lineTo(14.5, 13);
  folder.closeSubpath();
  Outline(painter, folder);
}

void DrawOrganizationalUnit(QPainter& painter) {
  DrawContainer(painter);
  painter.drawRect(QRectF(4.5, 8, 2.5, 2.5));
  painter.drawRect(QRectF(9, 8, 2.5, 2.5));
}

void DrawDomain(QPainter& painter) {
  painter.drawLine(QPointF(8, 5), QPointF(3.5, 11));
  painter.drawLine(QPointF(8, 5), QPointF(12.5, 11));
  painter.drawRect(QRectF(5.5, 1.5, 5, 4));
  painter.drawRect(QRectF(1.5, 10.5, 4.5, 4));
  painter.drawRect(QRectF(10, 10.5, 4.5, 4));
}

void DrawOther(QPainter& painter) {
  QPainterPath sheet;
  sheet.moveTo(3, 1.5);
  sheet.lineTo(9.5, 1.5);
  sheet.lineTo(13, 5);
  sheet.lineTo(13, 14.5);
  sheet.lineTo(3, 14.5);
  sheet.closeSubpath();
  Outline(painter, sheet);
  painter.drawLine(QPointF(9.5, 1.5), QPointF(9.5, 5));
  painter.drawLine(QPointF(9.5, 5), QPointF(13, 5));
}

/// A door that stands open.
void DrawRoom(QPainter& painter) {
  painter.drawRect(QRectF(3, 1.5, 10, 13));
  QPainterPath door;
  door.moveTo(3, 1.5);
  door.lineTo(9, 3.5);
  door.lineTo(9, 12.5);
  door.lineTo(3, 14.5);
  door.closeSubpath();
  Outline(painter, door);
  painter.drawEllipse(QPointF(7.2, 8), 0.5, 0.5);
}

/// A projector with its beam.
void DrawEquipment(QPainter& painter) {
  painter.drawRect(QRectF(1.5, 6, 8.5, 6));
  painter.drawEllipse(QPointF(7.5, 9), 1.4, 1.4);
  painter.drawLine(QPointF(11, 7.5), QPointF(14.5, 5));
  painter.drawLine(QPointF(11, 9), QPointF(14.5, 9));
  painter.drawLine(QPointF(11, 10.5), QPointF(14.5, 13));
  painter.drawLine(QPointF(3, 12), QPointF(3, 14));
  painter.drawLine(QPointF(8.5, 12), QPointF(8.5, 14));
}

/// A tray that several people use.
void DrawSharedStore(QPainter& painter) {
  QPainterPath tray;
  tray.moveTo(1.5, 9);
  tray.lineTo(5, 9);
  tray.lineTo(6.5, 11);
  tray.lineTo(9.5, 11);
  tray.lineTo(11, 9);
  tray.lineTo(14.5, 9);
  tray.lineTo(14.5, 14.5);
  tray.lineTo(1.5, 14.5);
  tray.closeSubpath();
  Outline(painter, tray);
  painter.drawEllipse(QPointF(5, 3.2), 1.7, 1.7);
  painter.drawEllipse(QPointF(11, 3.2), 1.7, 1.7);
  painter.drawLine(QPointF(3, 7), QPointF(7, 7));
  painter.drawLine(QPointF(9, 7), QPointF(13, 7));
}

/// A user behind a bar.
void DrawDisabled(QPainter& painter) {
  DrawUser(painter);
  painter.drawLine(QPointF(2, 14.5), QPointF(14, 1.5));
}

/// A user in outline only.
void DrawNoMailbox(QPainter& painter) {
  painter.setBrush(Qt::NoBrush);
  QPen dotted = painter.pen();
  dotted.setDashPattern({1.5, 1.5});
  painter.setPen(dotted);
  DrawUser(painter);
}

/// A computer that others are connected to.
void DrawServer(QPainter& painter) {
  for (const double y : {1.5, 6.0, 10.5}) {
    painter.drawRect(QRectF(2.5, y, 11, 4));
    painter.drawEllipse(QPointF(5, y + 2), 0.7, 0.7);
    painter.drawLine(QPointF(7.5, y + 2), QPointF(11.5, y + 2));
  }
}

using Drawing = void (*)(QPainter&);

struct MarkLook {
  session::ObjectMark mark;
  Drawing drawing;
  const char* text;
};

constexpr std::array kMarks = {
    MarkLook{session::ObjectMark::kRoom, &DrawRoom, "Room"},
    MarkLook{session::ObjectMark::kEquipment, &DrawEquipment, "Equipment"},
    MarkLook{session::ObjectMark::kSharedStore, &DrawSharedStore, "Shared store"},
    MarkLook{session::ObjectMark::kDisabled, &DrawDisabled, "Disabled account"},
    MarkLook{session::ObjectMark::kNoMailbox, &DrawNoMailbox, "No mailbox"},
    MarkLook{session::ObjectMark::kServer, &DrawServer, "Pelora server"},
};

const MarkLook* LookOf(session::ObjectMark mark) {
  const auto found = std::ranges::find(kMarks, mark, &MarkLook::mark);
  return found == kMarks.end() ? nullptr : &*found;
}

Drawing DrawingOf(session::ObjectIcon icon) {
  switch (icon) {
    case session::ObjectIcon::kUser:
      return DrawUser;
    case session::ObjectIcon::kContact:
      return DrawContact;
    case session::ObjectIcon::kGroup:
      return DrawGroup;
    case session::ObjectIcon::kDynamicGroup:
      return DrawDynamicGroup;
    case session::ObjectIcon::kAddressList:
      return DrawAddressList;
    case session::ObjectIcon::kComputer:
      return DrawComputer;
    case session::ObjectIcon::kOrganizationalUnit:
      return DrawOrganizationalUnit;
    case session::ObjectIcon::kContainer:
      return DrawContainer;
    case session::ObjectIcon::kDomain:
      return DrawDomain;
    case session::ObjectIcon::kOther:
      break;
  }
  return DrawOther;
}

class ObjectIconEngine final : public QIconEngine {
 public:
  ObjectIconEngine(session::ObjectIcon icon, session::ObjectMark mark) : icon_(icon), mark_(mark) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    DrawnOrNothing([&] { Draw(*painter, rect, mode); });
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return drawn;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new ObjectIconEngine(icon_, mark_); }

 private:
  void Draw(QPainter& painter, const QRect& rect, QIcon::Mode mode) const {
    const QPalette palette = QGuiApplication::palette();
    const bool selected = mode == QIcon::Selected;
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor line = palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    QColor fill = palette.color(group, selected ? QPalette::HighlightedText : QPalette::Highlight);
    constexpr float kFillOpacity = 0.45F;
    fill.setAlphaF(kFillOpacity);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / kGrid, rect.height() / kGrid);
    painter.setPen(QPen(line, 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(fill);
    const MarkLook* const look = LookOf(mark_);
    (look != nullptr ? look->drawing : DrawingOf(icon_))(painter);
    painter.restore();
  }

  session::ObjectIcon icon_;
  session::ObjectMark mark_;
};

}  // namespace

QIcon IconOf(session::ObjectIcon icon, session::ObjectMark mark) {
  return QIcon(new ObjectIconEngine(icon, mark));
}

QString TextOf(session::ObjectMark mark) {
  const MarkLook* const look = LookOf(mark);
  return look == nullptr ? QString() : QString::fromLatin1(look->text);
}

}  // namespace pelora::console
