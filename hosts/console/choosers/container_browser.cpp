// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/container_browser.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

#include "hosts/console/choosers/key_shortcuts.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// In average characters and in lines.
constexpr int kWidth = 60;
constexpr int kTreeLines = 20;

}  // namespace

ContainerBrowser::ContainerBrowser(ldap::StoreOpener opener, session::DirectoryObject base,
                                   Refusal refusal, QWidget* parent)
    : QDialog(parent),
      refusal_(std::move(refusal)),
      reader_(std::move(opener)),
      model_(reader_, std::move(base),
             [this](const session::DirectoryObject& container, const QString& reason) {
               status_->setText(QStringLiteral("The contents of %1 cannot be read: %2")
                                    .arg(ToQString(container.name), reason));
             }),
      status_(new NameLabel(this)) {
  setObjectName(QStringLiteral("container_browser"));
  setWindowTitle(QStringLiteral("Select Container"));
  status_->setObjectName(QStringLiteral("browser_status"));
  status_->setWordWrap(true);
  MakeTree();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &ContainerBrowser::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ContainerBrowser::reject);

  auto* label = new QLabel(QStringLiteral("Con&tainer:"), this);
  label->setBuddy(tree_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(tree_);
  layout->addWidget(status_);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWidth * fontMetrics().averageCharWidth(), {{tree_, kTreeLines}});
}

ContainerBrowser::~ContainerBrowser() {
  // The tree still looks at its model.
  tree_->setModel(nullptr);
}

void ContainerBrowser::MakeTree() {
  tree_ = new QTreeView(this);
  tree_->setObjectName(QStringLiteral("container_tree"));
  tree_->setAccessibleName(QStringLiteral("Container"));
  tree_->setModel(&model_);
  tree_->setHeaderHidden(true);
  tree_->setUniformRowHeights(true);
  tree_->setCurrentIndex(model_.BaseIndex());
  tree_->expand(model_.BaseIndex());
  OfferNames(*tree_, [this] { return QStringList{ToQString(Chosen())}; });
  OnKeys(*tree_, {Qt::Key_Return, Qt::Key_Enter}, [this] { accept(); });
}

std::string ContainerBrowser::Chosen() const {
  const QModelIndex chosen = tree_->currentIndex();
  return chosen.isValid() ? model_.ObjectAt(chosen).dn : std::string();
}

void ContainerBrowser::accept() {
  const std::string chosen = Chosen();
  if (chosen.empty()) return;
  const QString reason = refusal_(chosen);
  if (reason.isEmpty()) return QDialog::accept();
  status_->setText(reason);
}

}  // namespace pelora::console
