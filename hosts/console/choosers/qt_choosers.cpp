// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/qt_choosers.h"

#include <QMessageBox>
#include <array>
#include <optional>
#include <utility>

#include "directory/utf.h"
#include "hosts/console/choosers/container_browser.h"
#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/selection/selection_data_object.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/selection_data_object.h"
#include "platform/dialog_controller.h"

namespace pelora::console {
namespace {

constexpr std::uint32_t kPickSeveral = 0x1;
constexpr std::uint32_t kQuerySingle = 0x4;
constexpr std::uint32_t kQueryHiddenObjects = 0x4;
constexpr std::uint32_t kComputers = 0x800;
constexpr std::int32_t kBrowserFailed = -1;
/// Scope types: the forest's other domains, its global catalog, and domains outside of it.
constexpr std::uint32_t kOtherDomains = 0x8 | 0x10 | 0x20;

/// What the types of a picker's scope are called.
struct TypeName {
  std::uint32_t bits;
  const char* name;
};
constexpr std::array kTypeNames = {TypeName{0x2, "User"}, TypeName{0x3F0, "Group"},
                                   TypeName{0x400, "Contact"}, TypeName{kComputers, "Computer"}};

std::uint32_t TypesOf(const ObjectPickerScope& scope) {
  return scope.up_level_both_modes | scope.up_level_native_mode;
}

QString TitleOf(const ObjectPickerScope& scope, bool multiple) {
  QStringList names;
  for (const TypeName& type : kTypeNames) {
    if ((TypesOf(scope) & type.bits) == 0) continue;
    names.append(QLatin1String(type.name) + QLatin1String(multiple ? "s" : ""));
  }
  return QStringLiteral("Select %1").arg(names.join(QStringLiteral(" or ")));
}

/// The path of a container, of which the name is cut out again. Behind a server it is taken whole,
/// whatever "/" it holds.
std::string ContainerPath(ldap::IDirectoryStore& store, const std::string& dn) {
  std::string server = "localhost";
  ldap::Entry root;
  if (store.ReadRoot(root).Ok()) {
    std::string name = ldap::FirstValue(root, "dnsHostName");
    if (!name.empty()) server = std::move(name);
  }
  return "LDAP://" + server + "/" + dn;
}

/// The objects that the administrator chose; none when the search was cancelled.
std::optional<std::vector<session::DirectoryObject>> RunSearch(SearchDialogInit init,
                                                               const ldap::StoreOpener& opener,
                                                               ChooserOwner owner) {
  SearchDialog dialog(std::move(init), opener, WindowOf(owner.dialog));
  if (RunModal(dialog) != QDialog::Accepted) return std::nullopt;
  return dialog.Chosen();
}

class ObjectPicker final : public IDsObjectPicker {
 public:
  ObjectPicker(ldap::StoreOpener opener, ChooserOptions options)
      : opener_(std::move(opener)), options_(options) {}

  [[nodiscard]] HRESULT Initialize(const ObjectPickerInit& init) override {
    init_ = init;
    return S_OK;
  }
  [[nodiscard]] HRESULT InvokeDialog(ChooserOwner owner, Ref<IDataObject>& chosen) override {
    chosen.Reset();
    if (!init_) return E_UNEXPECTED;
    const bool multiple = (init_->options & kPickSeveral) != 0;
    const bool looks_around = (init_->scope.types & kOtherDomains) != 0;
    auto objects = RunSearch({.title = TitleOf(init_->scope, multiple),
                              .type_filter = session::TypeFilter(init_->scope),
                              .multiple = multiple,
                              .shows_addresses = TypesOf(init_->scope) != kComputers,
                              .limit = options_.limit,
                              .typing_pause = options_.typing_pause,
                              .find_places = looks_around ? options_.find_places : nullptr},
                             opener_, owner);
    if (!objects) return S_FALSE;
    chosen = session::MakeChosenDataObject(*objects);
    return S_OK;
  }

 private:
  ldap::StoreOpener opener_;
  ChooserOptions options_;
  std::optional<ObjectPickerInit> init_;
};

class ContainerQuery final : public ICommonQuery {
 public:
  ContainerQuery(ldap::IDirectoryStore& store, ldap::StoreOpener opener, ChooserOptions options)
      : store_(store), opener_(std::move(opener)), options_(options) {}

  [[nodiscard]] HRESULT OpenQueryWindow(ChooserOwner owner, const QueryWindowInit& init,
                                        Ref<IDataObject>& chosen) override {
    chosen.Reset();
    const bool multiple = (init.window_flags & kQuerySingle) == 0;
    const bool with_hidden = (init.handler_flags & kQueryHiddenObjects) != 0;
    const auto objects =
        RunSearch({.title = multiple ? QStringLiteral("Select Containers")
                                     : QStringLiteral("Select Container"),
                   .type_filter = with_hidden ? session::ContainerFilter()
                                              : session::WithoutHidden(session::ContainerFilter()),
                   .multiple = multiple,
                   .shows_addresses = false,
                   .limit = options_.limit,
                   .typing_pause = options_.typing_pause},
                  opener_, owner);
    if (!objects) return S_FALSE;
    std::vector<SelectedObject> selected;
    for (const session::DirectoryObject& object : *objects) {
      selected.push_back({.path = ContainerPath(store_, object.dn),
                          .object_class = object.kind.class_name,
                          .is_container = object.kind.is_container});
    }
    chosen = MakeSelectedObjects(std::move(selected));
    return S_OK;
  }

 private:
  ldap::IDirectoryStore& store_;
  ldap::StoreOpener opener_;
  ChooserOptions options_;
};

}  // namespace

QtChoosers::QtChoosers(ldap::IDirectoryStore& store, ldap::StoreOpener opener,
                       ChooserOptions options)
    : store_(store), opener_(std::move(opener)), options_(options) {}

HRESULT QtChoosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser = std::make_unique<ObjectPicker>(opener_, options_);
  return S_OK;
}

HRESULT QtChoosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser = std::make_unique<ContainerQuery>(store_, opener_, options_);
  return S_OK;
}

std::int32_t QtChoosers::BrowseForContainer(const ContainerBrowserInit& init, std::string& path) {
  path.clear();
  session::DirectoryObject base;
  if (const ldap::StoreStatus status = session::DirectoryBrowser(store_).ReadBase(base);
      !status.Ok()) {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Select Container"), {}, QMessageBox::Ok,
                    WindowOf(nullptr));
    SetPlainTexts(box, QStringLiteral("The directory cannot be read."), ToQString(status.text));
    RunModal(box);
    return kBrowserFailed;
  }
  const auto refusal = [this, &init](const std::string& dn) {
    const std::size_t length = ToUtf16(ContainerPath(store_, dn)).size();
    if (length < init.path_capacity) return QString();
    return QStringLiteral("The name of this container is too long to be used here.");
  };
  ContainerBrowser dialog(opener_, std::move(base), refusal, WindowOf(nullptr));
  if (RunModal(dialog) != QDialog::Accepted) return kDialogCancel;
  path = ContainerPath(store_, dialog.Chosen());
  return kDialogOk;
}

}  // namespace pelora::console
