// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/values/automation_variant.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "hosts/windows/values/bstr.h"
#include "tests/support/variant_text.h"
#include "tests/windows/support/malloc_counter.h"

namespace pelora::windows {
namespace {

using test::MallocCounter;

VARIANT SystemInteger(LONG value) {
  VARIANT variant = {};
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

/// A copy of the text lies in the array.
void PutText(SAFEARRAY* array, LONG index, const char* text) {
  VARIANT element = {};
  element.vt = VT_BSTR;
  const UniqueBstr bstr = MakeBstr(text);
  element.bstrVal = bstr.Get();
  ASSERT_EQ(SafeArrayPutElement(array, &index, &element), S_OK);
}

VARIANT SystemArray(SAFEARRAY* array) {
  VARIANT variant = {};
  variant.vt = kVariantArray;
  variant.parray = array;
  return variant;
}

UniqueSafeArray MakeArray(LONG lower_bound, ULONG count) {
  SAFEARRAYBOUND bound = {count, lower_bound};
  return UniqueSafeArray(SafeArrayCreate(VARENUM::VT_VARIANT, 1, &bound));
}

TEST(AutomationVariant, ReadsIntegersAndNothing) {
  Variant value = Variant::String("before");
  EXPECT_EQ(FromSystem(SystemInteger(-2147483647 - 1), value), S_OK);
  EXPECT_EQ(value, Variant::Integer(-2147483647 - 1));
  EXPECT_EQ(FromSystem(VARIANT{}, value), S_OK);
  EXPECT_TRUE(value.IsEmpty());
}

TEST(AutomationVariant, ReadsAStringOverItsWholeLength) {
  const std::wstring text(L"a\0b \x00E4\x6F22\xD83C\xDF33", 8);
  const UniqueBstr bstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
  VARIANT source = {};
  source.vt = VT_BSTR;
  source.bstrVal = bstr.Get();
  Variant value;
  EXPECT_EQ(FromSystem(source, value), S_OK);
  EXPECT_EQ(value, Variant::String(std::string("a\0b ä漢\U0001F333", 13)));
}

TEST(AutomationVariant, TheNullStringIsTheEmptyOne) {
  VARIANT source = {};
  source.vt = VT_BSTR;
  Variant value;
  EXPECT_EQ(FromSystem(source, value), S_OK);
  EXPECT_EQ(value, Variant::String(""));
}

TEST(AutomationVariant, ALoneSurrogateComesBackAsItWas) {
  const std::array<wchar_t, 3> text = {L'x', 0xD800, L'y'};
  const UniqueBstr bstr(SysAllocStringLen(text.data(), text.size()));
  VARIANT source = {};
  source.vt = VT_BSTR;
  source.bstrVal = bstr.Get();
  Variant value;
  UniqueVariant back;
  ASSERT_EQ(FromSystem(source, value), S_OK);
  ASSERT_EQ(ToSystem(value, back), S_OK);
  EXPECT_EQ(std::wstring(back.Get().bstrVal, SysStringLen(back.Get().bstrVal)),
            std::wstring(text.data(), text.size()));
}

TEST(AutomationVariant, ReadsAnArrayFromWhateverLowerBound) {
  for (const LONG lower_bound : {-3, 0, 1, 1000}) {
    const UniqueSafeArray array = MakeArray(lower_bound, 3);
    PutText(array.Get(), lower_bound, "one");
    PutText(array.Get(), lower_bound + 1, "two");
    PutText(array.Get(), lower_bound + 2, "three");
    Variant value;
    EXPECT_EQ(FromSystem(SystemArray(array.Get()), value), S_OK);
    EXPECT_EQ(value, Variant::StringArray({"one", "two", "three"})) << lower_bound;
    EXPECT_EQ(array.Get()->cLocks, 0U);
  }
}

TEST(AutomationVariant, ReadsAnArrayWithoutElements) {
  const UniqueSafeArray array = MakeArray(4, 0);
  Variant value;
  EXPECT_EQ(FromSystem(SystemArray(array.Get()), value), S_OK);
  EXPECT_EQ(value, Variant::Array({}));
  EXPECT_EQ(FromSystem(SystemArray(nullptr), value), S_OK);
  EXPECT_EQ(value, Variant::Array({}));
}

TEST(AutomationVariant, RefusesAnArrayOfSeveralDimensions) {
  std::array<SAFEARRAYBOUND, 2> bounds = {{{2, 0}, {2, 0}}};
  const UniqueSafeArray array(SafeArrayCreate(VARENUM::VT_VARIANT, bounds.size(), bounds.data()));
  Variant value = Variant::Integer(1);
  EXPECT_EQ(FromSystem(SystemArray(array.Get()), value), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_TRUE(value.IsEmpty());
}

TEST(AutomationVariant, KeepsTheCodeOfEveryOtherType) {
  for (const VarType type : {VT_BOOL, VT_DATE, static_cast<VarType>(VT_ARRAY | VT_UI1),
                             static_cast<VarType>(VARENUM::VT_I8)}) {
    VARIANT source = {};
    source.vt = type;
    Variant value;
    EXPECT_EQ(FromSystem(source, value), S_OK);
    EXPECT_EQ(value, Variant::OtherType(type));
  }
}

TEST(AutomationVariant, WritesWhatItReads) {
  const std::array values = {
      Variant(),
      Variant::Integer(7),
      Variant::String(""),
      Variant::String("Größe \U0001F333"),
      Variant::Array({}),
      Variant::StringArray({"a", ""}),
      Variant::Array({Variant::Integer(1), Variant(), Variant::StringArray({"nested"})})};
  for (const Variant& value : values) {
    UniqueVariant written;
    ASSERT_EQ(ToSystem(value, written), S_OK);
    EXPECT_EQ(written.Get().vt, value.type());
    Variant read;
    EXPECT_EQ(FromSystem(written.Get(), read), S_OK);
    EXPECT_EQ(read, value);
  }
}

TEST(AutomationVariant, WritesAnArrayFromZero) {
  UniqueVariant written;
  ASSERT_EQ(ToSystem(Variant::StringArray({"a", "b"}), written), S_OK);
  LONG lower_bound = -1;
  LONG upper_bound = -1;
  EXPECT_EQ(SafeArrayGetDim(written.Get().parray), 1U);
  EXPECT_EQ(SafeArrayGetLBound(written.Get().parray, 1, &lower_bound), S_OK);
  EXPECT_EQ(SafeArrayGetUBound(written.Get().parray, 1, &upper_bound), S_OK);
  EXPECT_EQ(lower_bound, 0);
  EXPECT_EQ(upper_bound, 1);
}

TEST(AutomationVariant, RefusesToWriteAValueThatItDoesNotHold) {
  const Variant unknown = Variant::OtherType(VT_DATE);
  UniqueVariant written;
  EXPECT_EQ(ToSystem(unknown, written), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(written.Get().vt, VT_EMPTY);
  EXPECT_EQ(ToSystem(Variant::Array({Variant::String("a"), unknown}), written),
            E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(written.Get().vt, VT_EMPTY);
}

TEST(AutomationVariant, EveryBlockOfMemoryIsGivenBack) {
  const MallocCounter memory;
  for (int round = 0; round < 10; ++round) {
    UniqueVariant written;
    ASSERT_EQ(ToSystem(Variant::StringArray({"one", "two", "three"}), written), S_OK);
    EXPECT_GT(memory.live(), 0);
    Variant read;
    ASSERT_EQ(FromSystem(written.Get(), read), S_OK);
    ASSERT_EQ(ToSystem(Variant::String("replaces the array"), written), S_OK);
    UniqueVariant moved = std::move(written);
    EXPECT_EQ(ToSystem(Variant::Array({Variant::String("a"), Variant::OtherType(VT_DATE)}), moved),
              E_ADS_CANT_CONVERT_DATATYPE);
  }
  EXPECT_EQ(memory.live(), 0);
  EXPECT_EQ(memory.freed_twice(), 0);
}

TEST(MallocCounter, NoticesABlockThatIsKeptOrFreedTwice) {
  const MallocCounter memory;
  void* const kept = CoTaskMemAlloc(8);
  void* const twice = CoTaskMemAlloc(8);
  EXPECT_EQ(memory.live(), 2);
  CoTaskMemFree(twice);
  EXPECT_EQ(memory.freed_twice(), 0);
  CoTaskMemFree(twice);
  EXPECT_EQ(memory.freed_twice(), 1);
  EXPECT_EQ(memory.live(), 1);
  CoTaskMemFree(kept);
  EXPECT_EQ(memory.live(), 0);
  EXPECT_EQ(memory.freed_twice(), 1);
}

}  // namespace
}  // namespace pelora::windows
