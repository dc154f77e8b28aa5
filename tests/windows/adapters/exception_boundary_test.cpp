// SPDX-License-Identifier: Apache-2.0
// Exceptions end where the system's code begins: at the functions of windows and of components.
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "hosts/windows/com/property_page_shell.h"
#include "hosts/windows/dialogs/dialog_host.h"
#include "hosts/windows/module/win32_classes_registry.h"
#include "hosts/windows/module/win32_module_file.h"
#include "hosts/windows/module/win32_thread_locale.h"
#include "hosts/windows/windows_platform.h"
#include "platform/counted.h"
#include "tests/contract/contract_ids.h"
#include "tests/windows/support/page_collector.h"
#include "tests/windows/support/selection.h"

namespace pelora::windows {
namespace {

using test::PageCollector;
using test::Selection;

/// Throws whatever it is told, and counts.
class ThrowingController final : public IDialogController {
 public:
  [[nodiscard]] int told() const { return told_; }

  std::int32_t OnInitDialog(IDialog&) override { return Throw(); }
  std::int32_t OnCommand(ControlId, ControlNotification) override { return Throw(); }
  void OnListViewItemChanged(ControlId, const ListViewItemChange&) override { (void)Throw(); }
  void OnListViewDoubleClick(ControlId, RowIndex) override { (void)Throw(); }
  TextRole ListViewTextRole(ControlId, RowIndex, std::size_t) const override {
    throw std::runtime_error("drawing");
  }
  std::int32_t OnPageNotification(PageNotification) override { return Throw(); }
  void OnDestroy() override { (void)Throw(); }

 private:
  std::int32_t Throw() {
    ++told_;
    throw std::runtime_error("told");
  }

  int told_ = 0;
};

/// A window with a list view in it, to send messages to a host about.
class DialogHostTest : public ::testing::Test {
 protected:
  DialogHostTest()
      : window_(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_CONTRACT_MODAL),
                                   nullptr, nullptr, 0)) {
    EXPECT_NE(window_, nullptr);
    EXPECT_EQ(Send(WM_INITDIALOG), FALSE);
    EXPECT_EQ(controller_.told(), 1);
  }
  ~DialogHostTest() override { DestroyWindow(window_); }

  INT_PTR Send(UINT message, WPARAM wide = 0, LPARAM narrow = 0) {
    return host_.OnMessage(window_, message, wide, narrow);
  }
  INT_PTR Notify(NMHDR& notification) {
    return Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  }
  /// The answer to a notification of the sheet.
  LRESULT AnswerTo(PageNotification code) {
    NMHDR notification = {window_, 0, static_cast<UINT>(code)};
    // What stood there before is not the answer.
    SetWindowLongPtrW(window_, DWLP_MSGRESULT, 7);
    EXPECT_EQ(Notify(notification), TRUE);
    return GetWindowLongPtrW(window_, DWLP_MSGRESULT);
  }

  ThrowingController controller_;
  DialogHost host_{controller_, DialogRole::kPage};
  HWND window_;
};

TEST_F(DialogHostTest, ACommandThatThrowsIsLeftToTheSystem) {
  EXPECT_EQ(Send(WM_COMMAND, MAKEWPARAM(IDC_CONTRACT_BUTTON, BN_CLICKED)), FALSE);
  EXPECT_EQ(controller_.told(), 2);
}

TEST_F(DialogHostTest, APageThatThrowsWhileItAppliesStays) {
  EXPECT_EQ(AnswerTo(PageNotification::kApply), PSNRET_INVALID_NOCHANGEPAGE);
  EXPECT_EQ(controller_.told(), 2);
}

TEST_F(DialogHostTest, APageThatThrowsMayBeLeft) {
  for (const PageNotification code :
       {PageNotification::kSetActive, PageNotification::kKillActive, PageNotification::kQueryCancel,
        PageNotification::kReset, PageNotification::kWizardNext}) {
    EXPECT_EQ(AnswerTo(code), 0);
  }
  EXPECT_EQ(controller_.told(), 6);
}

TEST_F(DialogHostTest, AListViewGetsItsAnswerWhenTheControllerThrows) {
  const HWND view = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 50, 50,
                                    window_, nullptr, nullptr, nullptr);
  NMLISTVIEW change = {};
  change.hdr = {view, 1, LVN_ITEMCHANGED};
  change.uChanged = LVIF_STATE;
  EXPECT_EQ(Notify(change.hdr), FALSE);
  NMITEMACTIVATE click = {};
  click.hdr = {view, 1, static_cast<UINT>(NM_DBLCLK)};
  EXPECT_EQ(Notify(click.hdr), FALSE);
  NMLVCUSTOMDRAW draw = {};
  draw.nmcd.hdr = {view, 1, static_cast<UINT>(NM_CUSTOMDRAW)};
  draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT | CDDS_SUBITEM;
  EXPECT_EQ(Notify(draw.nmcd.hdr), FALSE);
  EXPECT_EQ(controller_.told(), 3);
}

TEST_F(DialogHostTest, AWindowThatWentIsForgottenWhenTheControllerThrows) {
  EXPECT_EQ(Send(WM_DESTROY), FALSE);
  EXPECT_EQ(controller_.told(), 2);
  EXPECT_EQ(Send(WM_COMMAND, MAKEWPARAM(IDC_CONTRACT_BUTTON, BN_CLICKED)), FALSE);
  EXPECT_EQ(controller_.told(), 2);
}

/// A tab whose every operation throws. It lives on the stack of a test, which has one reference.
class ThrowingTab final
    : public pelora::Counted<pelora::IShellExtInit, pelora::IShellPropSheetExt> {
 public:
  using CountedBy::references;

  HRESULT QueryInterface(const Guid&, void**) override { return E_NOINTERFACE; }
  HRESULT Initialize(pelora::IDataObject*) override { throw std::bad_alloc(); }
  HRESULT AddPages(const AddPropSheetPage&) override { throw std::runtime_error("pages"); }
};

/// What objects of the module are made with, outside of any module.
class ModuleParts {
 public:
  [[nodiscard]] const ModuleContext& context() const { return context_; }
  [[nodiscard]] const CPeloraPropModule& module() const { return module_; }

 private:
  WindowsPlatform platform_{GetModuleHandleW(nullptr)};
  Win32ClassesRegistry registry_;
  Win32ThreadLocale locale_;
  Win32ModuleFile file_{nullptr, L""};
  CPeloraPropModule module_{{registry_, locale_, file_}};
  ModuleContext context_{GetModuleHandleW(nullptr), platform_.platform(), module_};
};

constexpr ComponentClass kRow = {};

TEST(ComponentBoundary, ATabThatThrowsAnswersWithACode) {
  ModuleParts parts;
  ThrowingTab tab;
  {
    Ref<::IShellExtInit> shell;
    ASSERT_EQ(CreateComObject<PropertyPageShell>(
                  ::IID_IShellExtInit, reinterpret_cast<void**>(shell.Put()), parts.context(), kRow,
                  Ref<pelora::IShellExtInit>(&tab), Ref<pelora::IShellPropSheetExt>(&tab)),
              S_OK);
    EXPECT_EQ(tab.references(), 3U);
    EXPECT_EQ(parts.module().CanUnloadNow(), S_FALSE);
    Selection selection({});
    EXPECT_EQ(shell->Initialize(nullptr, &selection, nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(selection.references(), 0U);
    Ref<::IShellPropSheetExt> pages;
    ASSERT_EQ(
        shell->QueryInterface(::IID_IShellPropSheetExt, reinterpret_cast<void**>(pages.Put())),
        S_OK);
    PageCollector collector;
    EXPECT_EQ(pages->AddPages(collector.function(), collector.parameter()), E_UNEXPECTED);
    EXPECT_EQ(collector.offered(), 0U);
  }
  EXPECT_EQ(tab.references(), 1U);
  EXPECT_EQ(parts.module().CanUnloadNow(), S_OK);
}

HRESULT ThrowInstead(const ModuleContext& /*context*/, const ComponentClass& /*component_class*/,
                     REFIID /*iid*/, void** /*object*/) {
  throw std::bad_alloc();
}

TEST(ComponentBoundary, AFactoryThatCannotMakeItsObjectAnswersWithACode) {
  ModuleParts parts;
  Ref<::IClassFactory> factory;
  ASSERT_EQ(CreateComObject<CComClassFactory>(::IID_IClassFactory,
                                              reinterpret_cast<void**>(factory.Put()),
                                              parts.context(), kRow, &ThrowInstead),
            S_OK);
  void* object = &factory;
  EXPECT_EQ(factory->CreateInstance(nullptr, ::IID_IUnknown, &object), E_OUTOFMEMORY);
  EXPECT_EQ(object, nullptr);
  factory.Reset();
  EXPECT_EQ(parts.module().CanUnloadNow(), S_OK);
}

TEST(ComponentBoundary, AnObjectThatLacksTheInterfaceIsGoneAtOnce) {
  ModuleParts parts;
  ThrowingTab tab;
  void* object = &tab;
  EXPECT_EQ(CreateComObject<PropertyPageShell>(::IID_IDataObject, &object, parts.context(), kRow,
                                               Ref<pelora::IShellExtInit>(&tab),
                                               Ref<pelora::IShellPropSheetExt>(&tab)),
            E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(tab.references(), 1U);
  EXPECT_EQ(parts.module().CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace pelora::windows
