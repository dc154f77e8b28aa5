// SPDX-License-Identifier: Apache-2.0
// What the system's object picker hands over, read and given back: sound memory and damaged.
#include "hosts/windows/choosers/gathered_selection.h"

#include <gmock/gmock.h>

#include "hosts/windows/choosers/object_picker.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/choosers/object_picker_test.h"

namespace pelora::windows::test {
namespace {

using ::testing::ElementsAre;

using GatheredSelectionTest = ObjectPickerTest;

TEST_F(GatheredSelectionTest, ARenderingThatFailsGivesItsStatus) {
  PickedObjects picked({kAda});
  picked.FailWith(DV_E_CLIPFORMAT);
  ExpectFailure(picked, DV_E_CLIPFORMAT);
}

TEST_F(GatheredSelectionTest, AMediumThatIsNoMemoryIsReleasedAndRefused) {
  PickedObjects picked({kAda});
  picked.RenderAs(TYMED_ENHMF);
  ExpectFailure(picked, DV_E_TYMED);
  EXPECT_EQ(picked.released(), 1U);
}

TEST_F(GatheredSelectionTest, MemoryThatCannotBeReachedIsReleasedAllTheSame) {
  PickedObjects picked({kAda});
  picked.HideMemory();
  ExpectFailure(picked, static_cast<HRESULT>(0x80004003));
  EXPECT_EQ(picked.released(), 1U);
}

TEST_F(GatheredSelectionTest, AListCutShortIsRefused) {
  for (const std::size_t size : {sizeof(ULONG), std::size_t{8}, std::size_t{8 + 48}}) {
    PickedObjects picked({kAda, kMoon});
    picked.Cut(size);
    ExpectFailure(picked, E_INVALIDARG);
  }
}

TEST_F(GatheredSelectionTest, ACountBeyondTheEntriesIsRefused) {
  for (const ULONG count : {2UL, 0x7FFFFFFFUL, 0xFFFFFFFFUL}) {
    PickedObjects picked({kAda});
    picked.list().cItems = count;
    ExpectFailure(picked, E_INVALIDARG);
  }
}

TEST_F(GatheredSelectionTest, AnEntryWithoutAPathIsRefused) {
  PickedObjects picked({kAda, kMoon});
  picked.list().aDsSelection[1].pwzADsPath = nullptr;
  ExpectFailure(picked, E_INVALIDARG);
}

TEST_F(GatheredSelectionTest, APathThatRunsOverTheListsEndIsRefused) {
  PickedObjects picked({kAda});
  picked.MoveStringsInside();
  picked.LoseTheEnd();
  ExpectFailure(picked, E_INVALIDARG);
}

/// Two pages of memory, of which only the first can be read.
class HalfReadable {
 public:
  HalfReadable()
      : pages_(VirtualAlloc(nullptr, 2 * kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {
    DWORD before = 0;
    VirtualProtect(static_cast<std::byte*>(pages_) + kPage, kPage, PAGE_NOACCESS, &before);
  }
  ~HalfReadable() { VirtualFree(pages_, 0, MEM_RELEASE); }
  HalfReadable(const HalfReadable&) = delete;
  HalfReadable& operator=(const HalfReadable&) = delete;

  /// Characters up to the end of what can be read.
  [[nodiscard]] wchar_t* Last(std::size_t count) { return End() - count; }
  [[nodiscard]] wchar_t* End() {
    return reinterpret_cast<wchar_t*>(static_cast<std::byte*>(pages_) + kPage);
  }

 private:
  static constexpr std::size_t kPage = 4096;
  void* pages_;
};

TEST_F(GatheredSelectionTest, APathInMemoryThatCannotBeReadIsRefused) {
  HalfReadable memory;
  PickedObjects picked({kAda});
  picked.list().aDsSelection[0].pwzADsPath = memory.End();
  ExpectFailure(picked, E_INVALIDARG);
}

TEST_F(GatheredSelectionTest, APathThatRunsIntoMemoryThatCannotBeReadIsRefused) {
  HalfReadable memory;
  std::fill(memory.Last(5), memory.End(), L'x');
  PickedObjects picked({kAda});
  picked.list().aDsSelection[0].pwzADsPath = memory.Last(5);
  ExpectFailure(picked, E_INVALIDARG);
}

TEST_F(GatheredSelectionTest, APathMayEndWhereReadableMemoryEnds) {
  constexpr std::wstring_view kPath(L"LDAP://CN=x\0", 12);
  HalfReadable memory;
  std::copy(kPath.begin(), kPath.end(), memory.Last(kPath.size()));
  directory_.AddObject("LDAP://CN=x", {{"distinguishedName", Variant::String("CN=x")}});
  PickedObjects picked({kAda});
  picked.list().aDsSelection[0].pwzADsPath = memory.Last(kPath.size());
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=x"));
}

TEST_F(GatheredSelectionTest, OnlyThePathsAreLookedAt) {
  PickedObjects picked({kAda});
  auto* const nowhere = reinterpret_cast<wchar_t*>(std::uintptr_t{8});
  DS_SELECTION& entry = picked.list().aDsSelection[0];
  entry.pwzName = entry.pwzClass = entry.pwzUPN = nowhere;
  entry.pvarFetchedAttributes = reinterpret_cast<VARIANT*>(nowhere);
  picked.list().cFetchedAttributes = 7;
  picker_.Choose(picked);
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=Ada,OU=Größe,DC=x"));
}

/// What the port hands out by itself.
class ObjectPickerPortTest : public ObjectPickerTest {
 protected:
  Ref<pelora::IDataObject> Pick(PickedObjects& picked) {
    picker_.Choose(picked);
    std::unique_ptr<pelora::IDsObjectPicker> port;
    EXPECT_EQ(ObjectPicker::Create(port), S_OK);
    Ref<pelora::IDataObject> chosen;
    EXPECT_EQ(port->InvokeDialog(dialog(), chosen), S_OK);
    return chosen;
  }
};

TEST_F(ObjectPickerPortTest, KnowsNoOtherFormat) {
  PickedObjects picked({kAda});
  const Ref<pelora::IDataObject> chosen = Pick(picked);
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(chosen->GetData({.format = kDsObjectNamesFormat}, medium), DV_E_FORMATETC);
  EXPECT_EQ(medium, nullptr);
  EXPECT_EQ(picked.rendered(), 0U);
}

TEST_F(ObjectPickerPortTest, HoldsTheSystemsObjectAndNoneOfItsMemory) {
  PickedObjects picked({kAda});
  Ref<pelora::IDataObject> chosen = Pick(picked);
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(chosen->GetData({.format = kDsSelectionListFormat}, medium), S_OK);
  EXPECT_EQ(picked.references(), 1U);
  EXPECT_EQ(picked.released(), 1U);
  EXPECT_EQ(picked.locks(), 0U);
  ASSERT_NE(medium, nullptr);
  // An entry's other texts are there, and empty.
  EXPECT_EQ(medium->Lock().size(), 8 + 48 + (ToWide(kAda).size() + 4) * sizeof(wchar_t));
  medium->Unlock();
  medium->Release();
  chosen.Reset();
  EXPECT_EQ(picked.references(), 0U);
  EXPECT_EQ(picked.released(), 1U);
}

}  // namespace
}  // namespace pelora::windows::test
