// SPDX-License-Identifier: Apache-2.0
// The console and its wizard pages call one another through tables of functions. Here both sides do
// so by number, without any declaration of the interfaces.
#include <array>

#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/wide_text.h"
#include "resources/resource.h"
#include "tests/windows/support/call_slot.h"
#include "tests/windows/support/page_collector.h"
#include "tests/windows/support/sheet_window.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

constexpr IID kExtension = {
    0x6088EAE2, 0xE7BF, 0x11D2, {0x82, 0xAF, 0x00, 0xC0, 0x4F, 0x68, 0x92, 0x8B}};
constexpr IID kPrimarySite = {
    0xBE2B487E, 0xF904, 0x11D2, {0x82, 0xB9, 0x00, 0xC0, 0x4F, 0x68, 0x92, 0x8B}};

constexpr std::size_t kQueryInterface = 0;
constexpr std::size_t kAddRef = 1;
constexpr std::size_t kRelease = 2;
constexpr std::size_t kInitialize = 3;
constexpr std::size_t kAddPages = 4;
constexpr std::size_t kSetObject = 5;
constexpr std::size_t kWriteData = 6;
constexpr std::size_t kOnError = 7;
constexpr std::size_t kGetSummaryInfo = 8;

/// The console's wizard as two tables of functions, in the published order. Calls are taken down.
class TableSite {
 public:
  TableSite() = default;
  TableSite(const TableSite&) = delete;
  TableSite& operator=(const TableSite&) = delete;

  /// The interface that an extension is initialised with.
  [[nodiscard]] void* wizard() { return &wizard_; }
  [[nodiscard]] std::vector<std::string> TakeLog() { return std::exchange(log_, {}); }
  [[nodiscard]] int references() const { return references_; }

 private:
  struct Face {
    void** functions;
    TableSite* site;
  };

  static HRESULT STDMETHODCALLTYPE Query(Face* face, const IID* iid, void** object) {
    *object = IsEqualIID(*iid, kPrimarySite) ? &face->site->primary_ : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    ++face->site->references_;
    return S_OK;
  }
  static ULONG STDMETHODCALLTYPE AddReference(Face* face) {
    return static_cast<ULONG>(++face->site->references_);
  }
  static ULONG STDMETHODCALLTYPE GiveBack(Face* face) {
    return static_cast<ULONG>(--face->site->references_);
  }
  static HRESULT STDMETHODCALLTYPE SetButtons(Face* face, ULONG page, WINBOOL valid) {
    face->site->log_.push_back("SetButtons " + std::to_string(page) + " " + std::to_string(valid));
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE CreateNew(Face* face, LPCWSTR name) {
    face->site->log_.push_back("CreateNew " + ToNarrow(name));
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE NotToBeCalled(Face* face) {
    face->site->log_.emplace_back("something else");
    return E_NOTIMPL;
  }
  template <class Function>
  static void* Slot(Function* function) {
    return reinterpret_cast<void*>(function);
  }

  std::array<void*, 5> wizard_functions_ = {Slot(&Query), Slot(&AddReference), Slot(&GiveBack),
                                            Slot(&SetButtons), Slot(&NotToBeCalled)};
  std::array<void*, 5> primary_functions_ = {Slot(&Query), Slot(&AddReference), Slot(&GiveBack),
                                             Slot(&CreateNew), Slot(&NotToBeCalled)};
  Face wizard_ = {wizard_functions_.data(), this};
  Face primary_ = {primary_functions_.data(), this};
  std::vector<std::string> log_;
  int references_ = 0;
};

class WizardSlotOrderTest : public WizardTest {
 protected:
  ~WizardSlotOrderTest() override { EXPECT_EQ(site_.references(), 0); }

  /// A new wizard page of a class, initialised.
  void* Make(std::string_view class_name) {
    void* object = nullptr;
    const CLSID class_id = ClassId(class_name);
    EXPECT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, kExtension, &object), S_OK);
    EXPECT_EQ((CallSlot<HRESULT, void*, void*, LPCWSTR, void*, void*>(
                  object, kInitialize, nullptr, nullptr, nullptr, site_.wizard(), nullptr)),
              S_OK);
    EXPECT_EQ(site_.references(), 1);
    return object;
  }
  void AddPages(void* object) {
    EXPECT_EQ((CallSlot<HRESULT, LPFNADDPROPSHEETPAGE, LPARAM>(object, kAddPages, pages_.function(),
                                                               pages_.parameter())),
              S_OK);
    EXPECT_EQ(pages_.pages().size(), 1U);
  }

  TableSite site_;
  PageCollector pages_;
};

TEST_F(WizardSlotOrderTest, OfAPage) {
  void* const object = Make("CWizardExtUser");
  void* found = nullptr;
  EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(object, kQueryInterface, &kExtension, &found)),
            S_OK);
  EXPECT_EQ(found, object);
  EXPECT_EQ(CallSlot<ULONG>(object, kAddRef), 3U);
  EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 2U);
  EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 1U);
  AddPages(object);
  EXPECT_EQ((CallSlot<HRESULT, void*>(object, kSetObject, nullptr)), S_OK);
  EXPECT_EQ((CallSlot<HRESULT, HWND, ULONG>(object, kWriteData, nullptr, 3)), 1);
  EXPECT_EQ((CallSlot<HRESULT, HWND, HRESULT, ULONG>(object, kOnError, nullptr, S_OK, 2)), S_OK);
  EXPECT_EQ(TakeBoxes(), Lines{"warning: Unknown error occured"});
  UniqueBstr text;
  EXPECT_EQ((CallSlot<HRESULT, BSTR*>(object, kGetSummaryInfo, text.Put())), S_OK);
  EXPECT_EQ(TextOf(text.Get()), "Pelora disabled");
  // The page is gone with its sheet, and the wizard's reference with the page.
  EXPECT_EQ(site_.TakeLog(), Lines());
  { const SheetWindow sheet(pages_.Take()); }
  EXPECT_EQ(site_.TakeLog(), (Lines{"SetButtons 0 0", "SetButtons 0 1"}));
  EXPECT_EQ(site_.references(), 0);
  EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 0U);
}

TEST_F(WizardSlotOrderTest, OfTheWizardThatAPrimaryPageCalls) {
  void* const object = Make("CWizardAddresslist");
  AddPages(object);
  {
    const SheetWindow sheet(pages_.Take());
    EXPECT_EQ(site_.TakeLog(), (Lines{"SetButtons 0 0", "SetButtons 0 0"}));
    sheet.User().Type(IDC_OBJECT_NAME, "L");
    EXPECT_EQ(site_.TakeLog(), Lines{"SetButtons 0 1"});
    EXPECT_EQ((CallSlot<HRESULT, HWND, ULONG>(object, kWriteData, nullptr, 1)), 1);
    EXPECT_EQ(site_.TakeLog(), Lines{"CreateNew L"});
    EXPECT_EQ(site_.references(), 1);
  }
  EXPECT_EQ(site_.references(), 0);
  EXPECT_EQ(CallSlot<ULONG>(object, kRelease), 0U);
}

}  // namespace
}  // namespace pelora::windows::test
