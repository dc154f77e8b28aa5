// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/page_view.h"

#include <QApplication>
#include <QVBoxLayout>

namespace pelora::console {
namespace {

/// Of a page that has to be scrolled at least so much is to be seen, in lines and in letters.
constexpr int kLeastLines = 4;
constexpr int kLeastLetters = 30;

}  // namespace

PageView::PageView(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  // Tab is to go from control to control, not to the page as a whole.
  setFocusPolicy(Qt::NoFocus);
  auto* const holder = new QWidget;
  holder->setFocusPolicy(Qt::TabFocus);
  auto* const layout = new QVBoxLayout(holder);
  layout->setContentsMargins({});
  setWidget(holder);
  // The tab's own ground shows through.
  holder->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  // Keys lead to controls in other ways than Tab, too.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
    if (now != nullptr && widget()->isAncestorOf(now)) ensureWidgetVisible(now, 0, 0);
  });
}

PageView::~PageView() {
  // The focus moves on while the page goes.
  disconnect(qApp, nullptr, this, nullptr);
}

void PageView::Hold(QWidget& page) {
  holder().layout()->addWidget(&page);
  holder().setFocusPolicy(Qt::NoFocus);
  updateGeometry();
}

QSize PageView::Lacking() const {
  return (holder().minimumSizeHint() - viewport()->size()).expandedTo({0, 0});
}

QSize PageView::sizeHint() const { return holder().minimumSizeHint(); }

QSize PageView::minimumSizeHint() const {
  const QSize least(kLeastLetters * fontMetrics().averageCharWidth(),
                    kLeastLines * fontMetrics().lineSpacing());
  return least.boundedTo(sizeHint());
}

}  // namespace pelora::console
