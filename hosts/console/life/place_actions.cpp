// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/life/place_actions.h"

#include <QAction>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "hosts/console/choosers/container_browser.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/life/place_dialog.h"
#include "hosts/console/life/rename_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/directory_pane.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/life/write_plan.h"

namespace pelora::console {
namespace {

std::vector<std::string> NamesOf(const std::vector<session::DirectoryObject>& objects) {
  std::vector<std::string> dns;
  for (const session::DirectoryObject& object : objects) dns.push_back(object.dn);
  return dns;
}

/// Why objects cannot be put into a container; empty when they can.
QString WhyNotThere(const std::vector<std::string>& dns, const std::string& container) {
  const std::string there = ldap::NameKey(container);
  bool is_any_moved = false;
  for (const std::string& dn : dns) {
    const std::string key = ldap::NameKey(dn);
    if (key == there || ldap::LiesBelow(there, key)) {
      return QStringLiteral("A container cannot be moved into itself.");
    }
    is_any_moved = is_any_moved || ldap::NameKey(ldap::ContainerOf(dn)) != there;
  }
  return is_any_moved ? QString() : QStringLiteral("The selected objects lie there already.");
}

/// What a container is called, by its name.
QString NameOfContainer(ldap::IDirectoryStore& store, const std::string& dn) {
  session::DirectoryObject object;
  if (!session::DirectoryBrowser(store).ReadObject(dn, object).Ok()) return ToQString(dn);
  return ToQString(object.name);
}

}  // namespace

PlaceActions::PlaceActions(DirectoryPane& pane, QtErrands& errands, session::IWritingDesk& desk,
                           std::function<std::optional<PlaceContext>()> context)
    : QObject(&pane), pane_(pane), errands_(errands), desk_(desk), context_(std::move(context)) {
  rename_ = Make("R&ename...", "Give the selected object another name", QKeySequence(Qt::Key_F2));
  move_ = Make("&Move...", "Put the selected objects into another container", {});
  delete_ = Make("&Delete...", "Delete the selected objects, after a look at what refers to them",
                 QKeySequence::Delete);
  connect(rename_, &QAction::triggered, this, &PlaceActions::Rename);
  connect(move_, &QAction::triggered, this, &PlaceActions::Move);
  connect(delete_, &QAction::triggered, this, &PlaceActions::Delete);
}

QAction* PlaceActions::Make(const char* text, const char* tip, const QKeySequence& key) {
  auto* action = new QAction(QString::fromLatin1(text), this);
  action->setStatusTip(QString::fromLatin1(tip));
  action->setShortcut(key);
  // In the lists alone: the keys belong to the text where one is typed.
  action->setShortcutContext(Qt::WidgetShortcut);
  return action;
}

void PlaceActions::Update() {
  const std::vector<session::DirectoryObject> selection = pane_.Selection();
  const bool has_base = std::ranges::any_of(selection, [](const session::DirectoryObject& object) {
    return object.kind.icon == session::ObjectIcon::kDomain;
  });
  const bool is_some = !selection.empty() && !has_base && context_().has_value();
  rename_->setEnabled(is_some && selection.size() == 1);
  move_->setEnabled(is_some);
  delete_->setEnabled(is_some);
}

std::optional<session::PlacePlan> PlaceActions::Read(const PlaceContext& context,
                                                     const Plan& plan) {
  const std::vector<session::ReferringAttribute> attributes =
      session::ReferringAttributes(*context.fields, context.store->schema());
  session::PlacePlan read;
  ldap::StoreStatus status;
  errands_.Run("Looking for what refers to it...", [&](session::IErrand& errand) {
    context.store->StopOn(errand.stop());
    status = plan(*context.store, attributes, read);
    context.store->StopOn({});
  });
  if (status.code == ldap::kLdapUserCancelled) return std::nullopt;
  if (status.Ok()) return read;
  if (on_failure) {
    on_failure(QStringLiteral("The objects cannot be read."), ToQString(status.text));
  }
  return std::nullopt;
}

bool PlaceActions::Ask(const session::PlaceQuestion& question) {
  PlaceDialog dialog(question, pane_.window());
  return RunModal(dialog) == QDialog::Accepted;
}

void PlaceActions::Rename() {
  const std::vector<session::DirectoryObject> selection = pane_.Selection();
  const std::optional<PlaceContext> context = context_();
  if (!context || selection.size() != 1) return;
  const std::string dn = selection.front().dn;
  RenameDialog dialog(ToQString(selection.front().name), pane_.window());
  if (RunModal(dialog) != QDialog::Accepted) return;
  const std::string name = ToUtf8(dialog.Name());
  std::optional<session::PlacePlan> plan =
      Read(*context, [&](ldap::IDirectoryStore& store, const auto& attributes, auto& read) {
        return session::PlanRenaming(store, dn, name, attributes, read);
      });
  if (!plan) return;
  if (!plan->references.empty() && !Ask(session::AskOfRenaming(*plan, name))) return;
  Write(*context, std::move(*plan), "renamed");
}

void PlaceActions::Move() {
  const std::vector<std::string> dns = NamesOf(pane_.Selection());
  const std::optional<PlaceContext> context = context_();
  session::DirectoryObject base;
  if (!context || dns.empty()) return;
  if (!session::DirectoryBrowser(*context->store).ReadBase(base).Ok()) return;
  ContainerBrowser browser(
      context->open_another, std::move(base),
      [&dns](const std::string& container) { return WhyNotThere(dns, container); }, pane_.window());
  browser.setWindowTitle(QStringLiteral("Move To"));
  if (RunModal(browser) == QDialog::Accepted) MoveTo(dns, browser.Chosen());
}

void PlaceActions::MoveTo(const std::vector<std::string>& dns, const std::string& container) {
  const std::optional<PlaceContext> context = context_();
  if (!context || !WhyNotThere(dns, container).isEmpty()) return;
  std::optional<session::PlacePlan> plan =
      Read(*context, [&](ldap::IDirectoryStore& store, const auto& attributes, auto& read) {
        return session::PlanMoving(store, dns, container, attributes, read);
      });
  if (!plan || plan->changes.empty()) return;
  const std::string name = ToUtf8(NameOfContainer(*context->store, container));
  if (Ask(session::AskOfMoving(*plan, name))) Write(*context, std::move(*plan), "moved");
}

void PlaceActions::Delete() {
  const std::vector<std::string> dns = NamesOf(pane_.Selection());
  const std::optional<PlaceContext> context = context_();
  if (!context || dns.empty()) return;
  std::optional<session::PlacePlan> plan =
      Read(*context, [&](ldap::IDirectoryStore& store, const auto& attributes, auto& read) {
        return session::PlanRemoval(store, dns, attributes, read);
      });
  if (plan && Ask(session::AskOfRemoval(*plan))) Write(*context, std::move(*plan), "deleted");
}

void PlaceActions::Write(const PlaceContext& context, session::PlacePlan plan,
                         const std::string& done) {
  std::vector<std::string> dns;
  for (const changes::Change& change : plan.changes) dns.push_back(change.dn);
  if (may_change && !may_change(dns)) return;
  const session::PlacePlan whole = plan;
  bool tries_again = true;
  while (tries_again) {
    const std::vector<changes::Result> results =
        session::WritePlan(*context.store, plan, context.history, errands_);
    tries_again = false;
    Tell(plan, results, session::PlaceOf(*context.store), done, tries_again);
    if (const std::string& failure = context.history->failure(); !failure.empty() && on_lost) {
      on_lost(ToQString(failure));
    }
    if (tries_again) session::KeepWhatIsLeft(results, plan);
  }
  ShowWhatIsThere(whole);
}

void PlaceActions::Tell(const session::PlacePlan& plan, const std::vector<changes::Result>& results,
                        session::DirectoryPlace place, const std::string& done, bool& tries_again) {
  const bool is_all_done = std::ranges::all_of(results, &changes::Result::IsDone);
  const bool is_one = plan.names.size() == 1;
  if (is_all_done) {
    const QString who = is_one ? Readable(ToQString(plan.names.front()))
                               : QStringLiteral("%1 objects").arg(plan.names.size());
    const QString verb = is_one ? QStringLiteral("was") : QStringLiteral("were");
    if (on_done) on_done(QStringLiteral("%1 %2 %3.").arg(who, verb, ToQString(done)));
    return;
  }
  if (is_one) {
    return desk_.ShowFailure(
        nullptr, session::PlaceFailure(plan.names.front(), done, results.front(), place));
  }
  std::vector<session::WrittenChange> told;
  for (std::size_t at = 0; at < results.size(); ++at) {
    const bool is_done = results[at].IsDone();
    told.push_back({.name = plan.names[at],
                    .result = results[at],
                    .reason = is_done ? std::string() : session::PlaceReason(results[at], place)});
  }
  tries_again = desk_.ShowResults(nullptr, told);
}

void PlaceActions::ShowWhatIsThere(const session::PlacePlan& plan) {
  const session::DirectoryObject* const container = pane_.Container();
  std::string there = container == nullptr ? std::string() : container->dn;
  for (const changes::Change& change : plan.changes) {
    const std::string top = ldap::NameKey(change.dn);
    const std::string key = ldap::NameKey(there);
    const bool is_there = key == top || ldap::LiesBelow(key, top);
    // The container that is shown is called otherwise now, or there is none any more.
    if (is_there) {
      there = change.kind == changes::Change::Kind::kRename
                  ? change.new_dn
                  : std::string(ldap::ContainerOf(change.dn));
    } else if (!change.new_dn.empty()) {
      pane_.SelectWhenRead(change.new_dn);
    }
  }
  pane_.RefreshAt(there);
}

}  // namespace pelora::console
