// SPDX-License-Identifier: Apache-2.0
// The console's compiler lays interfaces out as tables of functions. These calls go through the
// tables by number, without any of our declarations.
#include <ocidl.h>

#include "tests/windows/support/call_slot.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";

constexpr std::size_t kQueryInterface = 0;
constexpr std::size_t kAddRef = 1;
constexpr std::size_t kRelease = 2;

void* QuerySlot(void* interface_pointer, REFIID iid) {
  void* found = nullptr;
  CallSlot<HRESULT, const IID*, void**>(interface_pointer, kQueryInterface, &iid, &found);
  return found;
}

class SlotOrderTest : public ExtensionTest {
 protected:
  SlotOrderTest() {
    const CLSID class_id = ClassId("CPropPageUser");
    EXPECT_EQ(
        CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, ::IID_IClassFactory, &factory_),
        S_OK);
  }
  ~SlotOrderTest() override {
    EXPECT_EQ(CallSlot<ULONG>(factory_, kRelease), 0U);
    EXPECT_EQ(CanUnloadNow(), S_OK);
  }

  /// A new component's interface.
  void* Create(REFIID iid) {
    constexpr std::size_t kCreateInstance = 3;
    void* object = nullptr;
    const HRESULT status = CallSlot<HRESULT, void*, const IID*, void**>(factory_, kCreateInstance,
                                                                        nullptr, &iid, &object);
    EXPECT_EQ(status, S_OK);
    return object;
  }

  void* factory_ = nullptr;
};

TEST_F(SlotOrderTest, OfTheUnknownPartOfEveryInterface) {
  for (const IID& iid : {::IID_IShellExtInit, ::IID_IShellPropSheetExt, ::IID_IProvideClassInfo}) {
    void* const object = Create(iid);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(CallSlot<ULONG>(object, kAddRef), 2U);
    EXPECT_EQ(QuerySlot(object, iid), object);
    EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 2U);
    EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 1U);
    EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 0U);
  }
}

TEST_F(SlotOrderTest, OfTheClassFactory) {
  constexpr std::size_t kLockServer = 4;
  EXPECT_EQ((CallSlot<HRESULT, BOOL>(factory_, kLockServer, TRUE)), S_OK);
  EXPECT_EQ((CallSlot<HRESULT, BOOL>(factory_, kLockServer, FALSE)), S_OK);
}

TEST_F(SlotOrderTest, OfTheInitialisation) {
  constexpr std::size_t kInitialize = 3;
  Console console;
  console.directory().AddObject(kPath);
  console.Select({kPath});
  void* const init = Create(::IID_IShellExtInit);
  EXPECT_EQ((CallSlot<HRESULT, const void*, ::IDataObject*, HKEY>(init, kInitialize, nullptr,
                                                                  &console.selection(), nullptr)),
            S_OK);
  EXPECT_EQ(console.selection().rendered(), 1U);
  EXPECT_EQ((CallSlot<HRESULT, const void*, ::IDataObject*, HKEY>(init, kInitialize, nullptr,
                                                                  nullptr, nullptr)),
            E_INVALIDARG);
  CallSlot<ULONG>(init, kRelease);
}

TEST_F(SlotOrderTest, OfWhatFollowsTheInitialisation) {
  constexpr std::size_t kSetModified = 4;
  Console console;
  console.directory().AddObject(kPath);
  console.Select({kPath});
  void* const init = Create(::IID_IShellExtInit);
  // Without a page there is nobody to tell.
  CallSlot<void, BOOL>(init, kSetModified, TRUE);
  {
    const auto tab = Ref<::IShellExtInit>::Adopt(static_cast<::IShellExtInit*>(init));
    ASSERT_EQ(console.AddTab(*tab), S_OK);
    ASSERT_TRUE(console.Show());
    EXPECT_FALSE(console.sheet().IsApplyEnabled());
    CallSlot<void, BOOL>(init, kSetModified, TRUE);
    EXPECT_TRUE(console.sheet().IsApplyEnabled());
    CallSlot<void, BOOL>(init, kSetModified, FALSE);
    EXPECT_FALSE(console.sheet().IsApplyEnabled());
  }
  console.Close();
}

TEST_F(SlotOrderTest, OfTheSheetExtension) {
  constexpr std::size_t kAddPages = 3;
  constexpr std::size_t kReplacePage = 4;
  void* const extension = Create(::IID_IShellPropSheetExt);
  {
    PageCollector pages;
    EXPECT_EQ((CallSlot<HRESULT, LPFNADDPROPSHEETPAGE, LPARAM>(
                  extension, kAddPages, pages.function(), pages.parameter())),
              S_OK);
    EXPECT_EQ(pages.offered(), 1U);
  }
  EXPECT_EQ((CallSlot<HRESULT, UINT, LPFNADDPROPSHEETPAGE, LPARAM>(extension, kReplacePage, 0,
                                                                   nullptr, 0)),
            E_NOTIMPL);
  CallSlot<ULONG>(extension, kRelease);
}

TEST_F(SlotOrderTest, OfTheClassInformation) {
  constexpr std::size_t kGetClassInfo = 3;
  void* const provider = Create(::IID_IProvideClassInfo);
  Ref<ITypeInfo> info;
  EXPECT_EQ((CallSlot<HRESULT, ITypeInfo**>(provider, kGetClassInfo, info.Put())), S_OK);
  EXPECT_TRUE(info);
  CallSlot<ULONG>(provider, kRelease);
}

}  // namespace
}  // namespace pelora::windows::test
