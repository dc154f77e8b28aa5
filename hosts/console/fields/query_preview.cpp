// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/query_preview.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <array>
#include <limits>
#include <utility>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::size_t kShown = 100;
/// In average characters.
constexpr int kWidth = 110;
constexpr std::array kColumnWidths = {28, 14, 18, 30};
constexpr int kLines = 14;

QString EndText(const session::SearchEnd& end) {
  switch (end.reason) {
    case session::SearchEnd::Reason::kDirectoryLimit:
      return QStringLiteral(" The directory ended the search at a limit of its own.");
    case session::SearchEnd::Reason::kFailed:
      return QStringLiteral(" The search failed: %1").arg(ToQString(end.text));
    default:
      return {};
  }
}

}  // namespace

QueryPreview::QueryPreview(session::ObjectQuery query, ldap::StoreOpener opener, QWidget* parent)
    : QDialog(parent), found_(new FoundObjectModel(this)), search_(std::move(opener)) {
  setObjectName(QStringLiteral("query_preview"));
  setWindowTitle(QStringLiteral("Objects of the Search Query"));
  results_ = new QTreeView(this);
  results_->setObjectName(QStringLiteral("query_results"));
  results_->setAccessibleName(QStringLiteral("Found"));
  results_->setModel(found_);
  results_->setRootIsDecorated(false);
  results_->setUniformRowHeights(true);
  results_->setTextElideMode(Qt::ElideMiddle);
  for (int column = 0; column < static_cast<int>(kColumnWidths.size()); ++column) {
    results_->setColumnWidth(
        column, kColumnWidths[static_cast<std::size_t>(column)] * fontMetrics().averageCharWidth());
  }
  auto* label = new QLabel(QStringLiteral("Fou&nd:"), this);
  label->setBuddy(results_);
  status_ = new NameLabel(this);
  status_->setObjectName(QStringLiteral("query_status"));
  status_->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(results_);
  layout->addWidget(status_);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWidth * fontMetrics().averageCharWidth(), {{results_, kLines}});

  search_.on_found = [this](std::vector<session::FoundObject> objects) {
    OnFound(std::move(objects));
  };
  search_.on_finished = [this](const session::ListingEnd& ending) {
    ShowCount(EndText(ending.end));
  };
  ShowCount(QStringLiteral(" Searching..."));
  query.limit = std::numeric_limits<std::size_t>::max();
  search_.Start(std::move(query));
}

QueryPreview::~QueryPreview() = default;

void QueryPreview::OnFound(std::vector<session::FoundObject> objects) {
  const std::size_t shown = std::min(count_, kShown);
  count_ += objects.size();
  if (objects.size() > kShown - shown) {
    objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(kShown - shown), objects.end());
  }
  if (!objects.empty()) found_->Append(std::move(objects));
  ShowCount(QStringLiteral(" Searching..."));
}

void QueryPreview::ShowCount(const QString& end) {
  const QString count = count_ == 1 ? QStringLiteral("1 object found.")
                                    : QStringLiteral("%1 objects found.").arg(count_);
  const QString first =
      count_ > kShown ? QStringLiteral(" The first %1 are shown.").arg(kShown) : QString();
  status_->setText(Readable(count + first + end));
}

}  // namespace pelora::console
