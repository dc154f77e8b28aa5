// SPDX-License-Identifier: Apache-2.0
// Name and description, on the General tabs.
#include "resources/resource.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using testing::FakeAttributes;
using testing::FaultPoint;
using testing::Lines;

const FakeAttributes kObject = {{"cn", Variant::String("Rooms & more")},
                                {"name", Variant::String("Rooms")},
                                {"description", Variant::String("All rooms")}};

class GeneralTabTest : public testing::TabTest, public ::testing::WithParamInterface<const char*> {
 protected:
  void OpenOn(const FakeAttributes& attributes) { Open(GetParam(), {attributes}); }
};

INSTANTIATE_TEST_SUITE_P(Both, GeneralTabTest,
                         ::testing::Values("CPropPageAddresslistGeneral",
                                           "CPropPageDynamicDistlistGeneral"),
                         [](const auto& row) { return std::string(row.param); });

TEST_P(GeneralTabTest, ShowsNamesAndDescription) {
  OpenOn(kObject);
  EXPECT_EQ(Text(IDC_NAME_CN), "Rooms & more");
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "Rooms");
  EXPECT_EQ(Text(IDC_DESCRIPTION), "All rooms");
  EXPECT_FALSE(page().IsModified());
}

TEST_P(GeneralTabTest, AnObjectWithoutThemKeepsWhatTheTemplateSays) {
  OpenOn({});
  EXPECT_EQ(Text(IDC_NAME_CN), "Unknown CN");
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "");
  EXPECT_EQ(Text(IDC_DESCRIPTION), "");
}

TEST_P(GeneralTabTest, ValuesThatAreNoSingleStringAreNotShown) {
  OpenOn({{"cn", Variant::StringArray({"a", "b"})},
          {"name", Variant::Integer(7)},
          {"description", Variant::StringArray({"a", "b"})}});
  EXPECT_EQ(Text(IDC_NAME_CN), "Unknown CN");
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "");
  EXPECT_EQ(Text(IDC_DESCRIPTION), "");
}

TEST_P(GeneralTabTest, ACommonNameIsShownAfterPlainSuccessOnly) {
  for (const HRESULT status : {E_FAIL, E_ADS_PROPERTY_NOT_FOUND, S_FALSE}) {
    bench_.faulty.plan().FailAttribute(FaultPoint::kGet, "cn", 1, status);
    OpenOn(kObject);
    EXPECT_EQ(bench_.faulty.plan().pending(), 0U);
    EXPECT_EQ(Text(IDC_NAME_CN), "Unknown CN");
    EXPECT_EQ(Text(IDC_OBJECT_NAME), "Rooms");
    EXPECT_TRUE(bench_.messages.records().empty());
  }
}

/// An object whose every value comes with a warning. It lives in the test.
class WarningObject final : public IADs {
 public:
  HRESULT QueryInterface(const Guid& /*iid*/, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
  HRESULT Get(std::string_view name, Variant& value) override {
    value = Variant::String(std::string(name));
    return S_ADS_ERRORSOCCURRED;
  }
  HRESULT Put(std::string_view /*name*/, const Variant& /*value*/) override { return E_FAIL; }
  HRESULT PutEx(std::int32_t /*control*/, std::string_view /*name*/,
                const Variant& /*value*/) override {
    return E_FAIL;
  }
  HRESULT SetInfo() override { return E_FAIL; }
};

TEST_P(GeneralTabTest, ACommonNameThatComesWithAWarningIsNotShown) {
  OpenOn({});
  WarningObject object;
  EXPECT_EQ(page().page().LoadAll({Ref<IADs>(&object)}), S_OK);
  EXPECT_EQ(Text(IDC_NAME_CN), "Unknown CN");
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "name");
}

TEST_P(GeneralTabTest, TheNameCannotBeTyped) {
  OpenOn(kObject);
  EXPECT_EQ(page().user().TypeText(IDC_OBJECT_NAME, "x"), UserAnswer::kDisabled);
}

TEST_P(GeneralTabTest, OnlyTheDescriptionIsEverWritten) {
  OpenOn(kObject);
  dialog().SetText(IDC_OBJECT_NAME, "other");
  dialog().SetText(IDC_NAME_CN, "other");
  EXPECT_EQ(Applied(), Lines{});
  page().Type(IDC_DESCRIPTION, "Every room");
  EXPECT_EQ(Applied(), Lines{R"(description "Every room")"});
  EXPECT_EQ(Applied(), Lines{}) << "only once";
}

TEST_P(GeneralTabTest, AnErasedDescriptionIsCleared) {
  OpenOn(kObject);
  EXPECT_EQ(page().user().EraseText(IDC_DESCRIPTION), UserAnswer::kDone);
  EXPECT_EQ(Applied(), Lines{"description cleared"});
}

TEST_P(GeneralTabTest, SeveralThatAgreeShowNeitherNameNorDescription) {
  Open(GetParam(), {kObject, kObject});
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "");
  EXPECT_EQ(Text(IDC_DESCRIPTION), "");
}

TEST_P(GeneralTabTest, SeveralShowNeitherNameNorDescriptionAndTakeOne) {
  Open(GetParam(), {kObject, kObject, {}});
  EXPECT_EQ(Text(IDC_NAME_CN), "Rooms & more") << "the first one's";
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "");
  EXPECT_EQ(Text(IDC_DESCRIPTION), "");
  EXPECT_EQ(Applied(), Lines{});
  page().Type(IDC_DESCRIPTION, "Same");
  const Lines written = {R"(description "Same")"};
  EXPECT_EQ(Applied(), written);
  EXPECT_EQ(Staged(1), written);
  EXPECT_EQ(Staged(2), written);
}

}  // namespace
}  // namespace pelora
