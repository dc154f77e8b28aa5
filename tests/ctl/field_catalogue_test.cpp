// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/fields/wish_maker.h"
#include "resources/resource.h"

namespace pelora::ctl {
namespace {

using ::testing::IsNull;
using ::testing::NotNull;

/// A tab with a field that no tab of the extension has.
class TabWithANewField final : public IShellExtInit, public IShellPropSheetExt, public IFieldRows {
 public:
  HRESULT QueryInterface(const Guid& iid, void** object) override {
    AddRef();
    if (iid == IID_IFieldRows) {
      *object = static_cast<IFieldRows*>(this);
    } else if (iid == IID_IShellPropSheetExt) {
      *object = static_cast<IShellPropSheetExt*>(this);
    } else {
      *object = static_cast<IShellExtInit*>(this);
    }
    return S_OK;
  }
  std::uint32_t AddRef() override { return ++references_; }
  std::uint32_t Release() override {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT Initialize(IDataObject* /*selection*/) override { return S_OK; }
  HRESULT AddPages(const AddPropSheetPage& add_page) override {
    add_page(std::make_unique<Page>());
    return S_OK;
  }
  [[nodiscard]] std::vector<FieldRow> Fields() const override {
    return {{.name = "peloraMotto",
             .kind = FieldKind::kText,
             .control = IDC_FILE_PATH,
             .attributes = {"peloraMotto"}},
            {.name = "peloraElsewhere",
             .kind = FieldKind::kText,
             .control = 9999,
             .attributes = {"peloraElsewhere"}}};
  }

 private:
  class Page final : public PropSheetPage {
   public:
    [[nodiscard]] DialogId Template() const override { return IDD_PROPPAGE_SERVER; }
    [[nodiscard]] std::string Title() const override { return "Motto"; }
    [[nodiscard]] IDialogController& Controller() override { throw std::logic_error("not shown"); }
  };
  ~TabWithANewField() = default;

  std::uint32_t references_ = 0;
};

class FieldCatalogueTest : public ::testing::Test {
 protected:
  resources::ResourceFile module_ =
      *resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value;
  OfflineCatalogue offline_{module_};
};

TEST_F(FieldCatalogueTest, AFieldThatIsAddedToATabIsAField) {
  FieldCatalogue catalogue(
      offline_.specifiers, offline_.platform.platform, module_,
      [](const Guid& /*class_id*/, const Platform& /*platform*/, const Guid& iid, void** object) {
        return (new TabWithANewField)->QueryInterface(iid, object);
      });
  const Field* field = catalogue.Find("user", "PELORAMOTTO");
  ASSERT_THAT(field, NotNull());
  EXPECT_EQ(field->tab, "Motto");
  EXPECT_EQ(field->place.label, "File path");
  EXPECT_EQ(field->KindText(), "text");
  EXPECT_THAT(catalogue.FindAnywhere("peloraMotto"), NotNull());
  // Its control is not on the page.
  EXPECT_THAT(catalogue.Find("user", "peloraElsewhere"), IsNull());
  const std::vector<Assignment> wanted = {{.field = "peloraMotto", .value = "x"}};
  EXPECT_NO_THROW(CheckAssignments(wanted, catalogue));
  EXPECT_ANY_THROW(CheckAssignments(wanted, offline_.catalogue));
}

TEST_F(FieldCatalogueTest, FieldsStandInTheOrderOfTheTabs) {
  const std::vector<Field>& fields = offline_.catalogue.FieldsOf("user");
  ASSERT_FALSE(fields.empty());
  EXPECT_EQ(fields.front().row.name, "peloraQuotaOverride");
  EXPECT_EQ(fields.front().place.group, "Quota");
  EXPECT_EQ(fields.back().tab, "Pelora Features");
}

TEST_F(FieldCatalogueTest, LimitsThatThePageDoesNotShowAreNoFields) {
  EXPECT_THAT(offline_.catalogue.Find("organizationalUnit", "peloraQuotaWarn"), NotNull());
  EXPECT_THAT(offline_.catalogue.Find("organizationalUnit", "peloraQuotaHard"), IsNull());
}

}  // namespace
}  // namespace pelora::ctl
