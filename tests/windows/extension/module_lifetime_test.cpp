// SPDX-License-Identifier: Apache-2.0
// Activation, references, and what keeps the module loaded.
#include <gmock/gmock.h>
#include <ocidl.h>

#include <array>
#include <string>

#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/wizard_headers.h"
#include "server/class_table.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";
constexpr const char* kUserPage = "CPropPageUser";

class ModuleLifetimeTest : public ExtensionTest {
 protected:
  void TearDown() override {
    if (IsLoaded()) {
      EXPECT_EQ(CanUnloadNow(), S_OK);
    }
    UnloadUnused();
    EXPECT_FALSE(IsLoaded());
  }
};

/// What an object says its class is; empty when it does not say.
std::string ClassNameOf(::IUnknown& object) {
  const auto provider = QueryFor<::IProvideClassInfo>(object);
  Ref<ITypeInfo> info;
  if (!provider || provider->GetClassInfo(info.Put()) != S_OK) return {};
  UniqueBstr name;
  if (FAILED(info->GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr))) {
    return {};
  }
  return TextOf(name.Get());
}

/// Uses a tab as a console does whose sheet is closed before the tab is shown.
void UseTab(::IUnknown& component, Console& console, PageCollector& pages) {
  const auto init = QueryFor<::IShellExtInit>(component);
  const auto sheet = QueryFor<::IShellPropSheetExt>(component);
  ASSERT_TRUE(init && sheet);
  EXPECT_EQ(init->Initialize(nullptr, &console.selection(), nullptr), S_OK);
  EXPECT_EQ(sheet->AddPages(pages.function(), pages.parameter()), S_OK);
}

/// Uses a wizard page as a console does whose wizard is cancelled before the page is shown.
void UseWizardPage(::IUnknown& component, PageCollector& pages) {
  const auto wizard = QueryFor<::IDsAdminNewObjExt>(component);
  ASSERT_TRUE(wizard);
  EXPECT_EQ(wizard->Initialize(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(wizard->AddPages(pages.function(), pages.parameter()), S_OK);
  EXPECT_EQ(wizard->SetObject(nullptr), S_OK);
  UniqueBstr summary;
  EXPECT_EQ(wizard->GetSummaryInfo(summary.Put()), S_OK);
  EXPECT_EQ(wizard->WriteData(nullptr, DSA_NEWOBJ_CTX_POSTCOMMIT), 1);
}

TEST_F(ModuleLifetimeTest, EveryClassIsCreatedUsedAndReleased) {
  const UniqueLibrary loaded(LoadLibraryW(ExtensionPath().c_str()));
  ASSERT_TRUE(static_cast<bool>(loaded));
  Console console;
  console.directory().AddObject(kPath);
  console.Select({kPath});
  int created = 0;
  for (const ComponentClass& row : ClassTable()) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(CanUnloadNow(), S_OK);
    PageCollector pages;
    {
      Ref<::IUnknown> component;
      ASSERT_EQ(Activate(ToSystem(row.class_id), component), S_OK);
      EXPECT_EQ(CanUnloadNow(), S_FALSE);
      EXPECT_EQ(ClassNameOf(*component), row.name);
      if (row.name.starts_with("CPropPage")) {
        UseTab(*component, console, pages);
      } else {
        UseWizardPage(*component, pages);
      }
    }
    EXPECT_EQ(pages.offered(), 1U);
    // The page keeps its component.
    EXPECT_EQ(CanUnloadNow(), S_FALSE);
    for (const HPROPSHEETPAGE page : pages.Take()) DestroyPropertySheetPage(page);
    EXPECT_EQ(CanUnloadNow(), S_OK);
    ++created;
  }
  EXPECT_EQ(created, 21);
  EXPECT_EQ(console.selection().references(), 0U);
  EXPECT_EQ(console.directory().live_objects(), 0U);
}

TEST_F(ModuleLifetimeTest, AClassFactoryHoldsTheModule) {
  Ref<::IClassFactory> factory;
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  factory.Reset();
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(ModuleLifetimeTest, ALockHoldsTheModuleWithoutAnyObject) {
  Ref<::IClassFactory> factory;
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  factory.Reset();
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  UnloadUnused();
  EXPECT_TRUE(IsLoaded());
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
}

TEST_F(ModuleLifetimeTest, AggregationIsRefused) {
  Ref<::IClassFactory> factory;
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  Selection outer({});
  void* object = &outer;
  EXPECT_EQ(factory->CreateInstance(&outer, ::IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(outer.references(), 0U);
}

TEST_F(ModuleLifetimeTest, AFactoryRefusesWhatItDoesNotOffer) {
  Ref<::IClassFactory> factory;
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  void* object = &factory;
  EXPECT_EQ(factory->CreateInstance(nullptr, ::IID_IDataObject, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, ::IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(factory->QueryInterface(::IID_IUnknown, nullptr), E_POINTER);
  object = &factory;
  EXPECT_EQ(factory->QueryInterface(::IID_IDataObject, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ModuleLifetimeTest, TheModuleKnowsNoOtherClass) {
  Ref<::IClassFactory> factory;
  ASSERT_EQ(GetClassFactory(ClassId(kUserPage), factory), S_OK);
  const auto get_class_object =
      reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(reinterpret_cast<void*>(
          GetProcAddress(GetModuleHandleW(L"PeloraADS.DLL"), "DllGetClassObject")));
  void* object = &factory;
  EXPECT_EQ(get_class_object(::IID_IDataObject, ::IID_IClassFactory, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  object = &factory;
  EXPECT_EQ(get_class_object(ClassId(kUserPage), ::IID_IDataObject, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(get_class_object(ClassId(kUserPage), ::IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(ModuleLifetimeTest, EveryInterfaceLeadsToEveryOther) {
  Ref<::IShellExtInit> init;
  ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
  const auto identity = QueryFor<::IUnknown>(*init);
  const auto pages = QueryFor<::IShellPropSheetExt>(*init);
  const auto info = QueryFor<::IProvideClassInfo>(*init);
  ASSERT_TRUE(pages);
  ASSERT_TRUE(info);
  for (::IUnknown* const face : std::array<::IUnknown*, 3>{init.Get(), pages.Get(), info.Get()}) {
    EXPECT_EQ(QueryFor<::IUnknown>(*face), identity);
    EXPECT_EQ(QueryFor<::IShellExtInit>(*face), init);
    EXPECT_EQ(QueryFor<::IShellPropSheetExt>(*face), pages);
    EXPECT_EQ(QueryFor<::IProvideClassInfo>(*face), info);
    EXPECT_FALSE(QueryFor<::IDataObject>(*face));
  }
}

TEST_F(ModuleLifetimeTest, AnObjectTellsItsClass) {
  Ref<::IProvideClassInfo> provider;
  ASSERT_EQ(Activate(ClassId(kUserPage), provider), S_OK);
  EXPECT_EQ(ClassNameOf(*provider), kUserPage);
  EXPECT_EQ(provider->GetClassInfo(nullptr), E_POINTER);
}

TEST_F(ModuleLifetimeTest, APageHoldsItsComponentUntilItIsReleased) {
  Console console;
  console.directory().AddObject(kPath);
  console.Select({kPath});
  {
    PageCollector pages;
    {
      Ref<::IShellExtInit> init;
      ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
      EXPECT_EQ(init->Initialize(nullptr, &console.selection(), nullptr), S_OK);
      EXPECT_EQ(
          QueryFor<::IShellPropSheetExt>(*init)->AddPages(pages.function(), pages.parameter()),
          S_OK);
    }
    EXPECT_EQ(pages.offered(), 1U);
    EXPECT_EQ(CanUnloadNow(), S_FALSE);
    UnloadUnused();
    EXPECT_TRUE(IsLoaded());
  }
  // The page was never shown.
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(ModuleLifetimeTest, APageIsTheConsolesWhateverItAnswers) {
  Console console;
  console.directory().AddObject(kPath);
  console.Select({kPath});
  Ref<::IShellExtInit> init;
  ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
  ASSERT_EQ(init->Initialize(nullptr, &console.selection(), nullptr), S_OK);
  const auto extension = QueryFor<::IShellPropSheetExt>(*init);
  PageCollector pages;
  pages.Refuse();
  EXPECT_EQ(extension->AddPages(pages.function(), pages.parameter()), S_OK);
  ASSERT_EQ(pages.pages().size(), 1U);
  const ULONG held = extension->AddRef() - 1;
  extension->Release();
  EXPECT_EQ(held, 3U) << "two references here, and the page's";
  {
    // It can be shown.
    const SheetWindow sheet(pages.Take());
    EXPECT_NE(sheet.Page(), nullptr);
  }
  extension->AddRef();
  EXPECT_EQ(extension->Release(), 2U);
}

TEST_F(ModuleLifetimeTest, AddingPagesNeedsSomebodyToTakeThem) {
  Ref<::IShellPropSheetExt> extension;
  ASSERT_EQ(Activate(ClassId(kUserPage), extension), S_OK);
  EXPECT_EQ(extension->AddPages(nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(extension->ReplacePage(0, nullptr, 0), E_NOTIMPL);
}

TEST_F(ModuleLifetimeTest, IsUnloadedAndLoadedAgain) {
  for (int round = 0; round < 20; ++round) {
    Ref<::IShellExtInit> init;
    ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
    EXPECT_TRUE(IsLoaded());
    init.Reset();
    UnloadUnused();
    EXPECT_FALSE(IsLoaded());
  }
}

}  // namespace
}  // namespace pelora::windows::test
