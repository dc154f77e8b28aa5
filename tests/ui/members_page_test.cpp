// SPDX-License-Identifier: Apache-2.0
// The pages Members and Member Of.
#include <gmock/gmock.h>

#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <cstddef>

#include "hosts/ldap/ads_path.h"
#include "hosts/session/change_history.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "tests/support/fault_store.h"
#include "tests/ui/own_pages.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

constexpr const char* kCircular =
    "CN=Rundschreiben,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kStefan =
    "CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kInsufficient = "You may not.";

std::string Member(const std::string& dn) { return "member: " + dn; }

/// Counts what is done beside the window, and how often the window may answer.
class CountedErrands final : public session::IErrands {
 public:
  std::vector<std::string> done;
  std::size_t breaths = 0;

  void Run(const std::string& what, const Work& work) override {
    done.push_back(what);
    at_once_.Run(what, work);
  }
  [[nodiscard]] bool IsWithin() const override { return at_once_.IsWithin(); }
  void Breathe() override { ++breaths; }

 private:
  session::ErrandsAtOnce at_once_;
};

class MembersPage : public OwnPages {
 protected:
  [[nodiscard]] Lines Rows() {
    Lines rows;
    const IListBox& list = Page().ListBox(IDC_OWN_MEMBERS);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }
  /// The names of the rows, without the folders.
  [[nodiscard]] Lines Names() {
    Lines names;
    for (const std::string& row : Rows()) names.push_back(row.substr(0, row.find('\t')));
    return names;
  }
  void Select(const Lines& names) {
    auto& list = Control<QListWidget>(IDC_OWN_MEMBERS);
    list.clearSelection();
    const Lines shown = Names();
    for (std::size_t row = 0; row < shown.size(); ++row) {
      const bool is_meant = std::ranges::find(names, shown[row]) != names.end();
      if (is_meant) list.item(static_cast<int>(row))->setSelected(true);
    }
    EXPECT_EQ(list.selectedItems().size(), static_cast<qsizetype>(names.size()));
  }
  void Paste(const std::string& text) {
    Control<QPlainTextEdit>(IDC_OWN_MEMBERS_PASTED).setPlainText(console::ToQString(text));
    Control<QPushButton>(IDC_OWN_MEMBERS_ADD_PASTED).click();
  }
  void Choose(OpenSheet& open, const Lines& names) {
    Lines paths;
    for (const std::string& name : names) paths.push_back(ldap::AdsPathOf(name));
    open.choosers().Choose(paths);
    open.user().Click(IDC_OWN_MEMBERS_ADD);
  }
  [[nodiscard]] std::string Note() { return Page().Text(IDC_OWN_MEMBERS_NOTE); }
  [[nodiscard]] Lines Written() {
    Lines written;
    for (const std::string& line : store().log) {
      if (line.starts_with("modify")) written.push_back(line);
    }
    return written;
  }
};

TEST_F(MembersPage, ListsNamesAndWhereTheyLie) {
  OpenSheet& open = Open({kGroup}, "Members");
  EXPECT_THAT(Rows(), AllOf(SizeIs(6), Contains("Birgit Krämer\tlinden-werke.example/"
                                                "Linden-Werke Chemnitz/Vertrieb")));
  EXPECT_FALSE(open.IsApplyEnabled());
  Keep("own-members");
  open.ClickOk();
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(MembersPage, AreReadWhenTheyAreShownFirst) {
  (void)Open({kGroup}, "General");
  EXPECT_THAT(store().log, Not(Contains(HasSubstr("search"))));
}

TEST_F(MembersPage, SeveralArePutInAndTakenOutInOneRequestAndTakenBack) {
  session::ChangeHistory history(file() + ".history", file(), session().store->schema());
  faults().history = &history;
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kGroup}, "Members");
  EXPECT_FALSE(Control<QPushButton>(IDC_OWN_MEMBERS_REMOVE).isEnabled());
  Choose(open, {kAnna, kBirgit, kContact, kServer});
  EXPECT_EQ(open.choosers().pickers().at(0).init.options, 1U) << "several";
  EXPECT_THAT(Names(), SizeIs(9)) << "one was there";
  Select({"Birgit Krämer", "Stefan Ebert", "Oliver Kühn"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  EXPECT_THAT(Names(), UnorderedElementsAre("Marie Dubois", "Jón Þórsson", "Vertrieb Info",
                                            "Meyer, Anna", "Dr. Renate Thiel", "mail01"));
  // Somebody who was taken out comes back.
  Choose(open, {kBirgit});
  open.ClickApply();
  EXPECT_THAT(
      Difference(before, Entry(kGroup)),
      UnorderedElementsAre("- " + Member(kStefan), HasSubstr("- member: CN=Oliver Kühn"),
                           "+ " + Member(kAnna), "+ " + Member(kContact), "+ " + Member(kServer)));
  EXPECT_THAT(Written(), ElementsAre(std::string("modify strictly ") + kGroup + ": member member"));
  EXPECT_FALSE(open.IsApplyEnabled());
  ASSERT_THAT(history.List(), SizeIs(1));
  EXPECT_THAT(history.List().front().fields, ElementsAre("Members"));
  session::ErrandsAtOnce errands;
  const auto undone = history.Undo(history.List().front().id, store(), errands);
  ASSERT_THAT(undone, SizeIs(1));
  EXPECT_TRUE(undone.front().IsDone()) << undone.front().message;
  EXPECT_THAT(Difference(before, Entry(kGroup)), IsEmpty());
}

TEST_F(MembersPage, WhatComesAfterAnApplyStartsFromIt) {
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kGroup}, "Members");
  Choose(open, {kAnna});
  open.ClickApply();
  Select({"Meyer, Anna"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)), IsEmpty());
  Choose(open, {kAnna});
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)), ElementsAre("+ " + Member(kAnna)));
}

TEST_F(MembersPage, PutInAndTakenOutAgainIsNoEdit) {
  OpenSheet& open = Open({kGroup}, "Members");
  Choose(open, {kAnna});
  EXPECT_TRUE(open.IsApplyEnabled());
  Select({"Meyer, Anna"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  EXPECT_FALSE(open.IsApplyEnabled());
  open.ClickOk();
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(MembersPage, APastedListIsPutInAndTheRestOfItStays) {
  OpenSheet& open = Open({kGroup}, "Members");
  Paste("a.meyer@linden-werke.example; nobody@example.org\n" + std::string(kHelga) +
        "\nBirgit Krämer\nVertrieb Alle");
  EXPECT_THAT(Names(), AllOf(SizeIs(8), Contains("Meyer, Anna"), Contains("Helga Önder")))
      << "nothing is a member of itself";
  EXPECT_EQ(Page().Text(IDC_OWN_MEMBERS_PASTED), "nobody@example.org\r\n");
  EXPECT_THAT(Note(), HasSubstr("There is nothing for: nobody@example.org."));
  open.ClickApply();
  EXPECT_THAT(Entry(kGroup), AllOf(Contains(Member(kAnna)), Contains(Member(kHelga))));
}

TEST_F(MembersPage, WhoIsPastedIsLookedForInOtherDomainsToo) {
  const std::string ann = "CN=Ann of north,DC=north,DC=example";
  session().find_places = [&ann](ldap::IDirectoryStore& /*store*/, auto& places) {
    const ldap::StoreOpener with_ann = OpenScripted([&ann](const auto& /*request*/, auto& sink) {
      sink({.dn = ann, .attributes = {{"name", {"Ann of north"}}}});
      return ldap::StoreStatus{};
    });
    const ldap::StoreOpener gone = [](auto& /*store*/, const std::stop_token& /*stop*/) {
      return ldap::StoreStatus{-1, "not reached"};
    };
    places.push_back({"linden-werke.example", {"DC=linden-werke,DC=example"}, {}});
    places.push_back({"north.example", {"DC=north,DC=example"}, with_ann});
    places.push_back({"gone.example", {"DC=gone,DC=example"}, gone});
    return ldap::StoreStatus{};
  };
  OpenSheet& open = Open({kGroup}, "Members");
  Paste("Ann of north; nobody@example.org");
  EXPECT_THAT(Rows(), Contains("Ann of north\tnorth.example"));
  EXPECT_EQ(Page().Text(IDC_OWN_MEMBERS_PASTED), "nobody@example.org\r\n");
  EXPECT_THAT(Note(), AllOf(HasSubstr("There is nothing for: nobody@example.org."),
                            HasSubstr("Nobody could be looked for in gone.example.")));
  EXPECT_TRUE(open.IsApplyEnabled());
}

TEST_F(MembersPage, WhatOthersDoMeanwhileStays) {
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kGroup}, "Members");
  Choose(open, {kAnna, kUrsula});
  Select({"Stefan Ebert"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  ModifyEntry(file(), std::string("dn: ") + kGroup + "\nchangetype: modify\nadd: member\n" +
                          Member(kHelga) + "\n" + Member(kUrsula) + "\n");
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)),
              UnorderedElementsAre("- " + Member(kStefan), "+ " + Member(kAnna),
                                   "+ " + Member(kUrsula), "+ " + Member(kHelga)));
  EXPECT_FALSE(open.IsApplyEnabled());
}

TEST_F(MembersPage, WhatWasRefusedIsKeptAndWrittenByTheNextApply) {
  pelora::testing::FaultStore faulty(*session().store);
  faults().store = &faulty;
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kGroup}, "Members");
  Choose(open, {kAnna});
  Select({"Stefan Ebert"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  faulty.FailChange(1, {50, kInsufficient});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_THAT(box.text, AllOf(HasSubstr("Members"), HasSubstr(kInsufficient)));
  EXPECT_THAT(Difference(before, Entry(kGroup)), IsEmpty());
  EXPECT_THAT(Names(), AllOf(Contains("Meyer, Anna"), Not(Contains("Stefan Ebert"))));
  EXPECT_TRUE(open.IsApplyEnabled());
  // One of the two is taken back: it is not written.
  Choose(open, {kStefan});
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)), ElementsAre("+ " + Member(kAnna)));
  EXPECT_FALSE(open.IsApplyEnabled());
}

TEST_F(MembersPage, WhatWasRefusedAndIsTakenBackThenIsNotWrittenAnyMore) {
  for (const bool lists_groups : {false, true}) {
    pelora::testing::FaultStore faulty(*session().store);
    faults().store = &faulty;
    const EntryLines before = Entry(kCircular);
    OpenSheet& open = lists_groups ? Open({kAnna}, "Member Of") : Open({kCircular}, "Members");
    Choose(open, {lists_groups ? kCircular : kAnna});
    faulty.FailChange(1, {50, kInsufficient});
    ShownBox box;
    modal_scripts().Add(Confirm(box));
    open.ClickApply();
    EXPECT_THAT(box.text, HasSubstr(kInsufficient));
    // Something else keeps the page to be applied.
    Choose(open, {lists_groups ? kGroup : kHelga});
    Select({lists_groups ? "Rundschreiben" : "Meyer, Anna"});
    open.user().Click(IDC_OWN_MEMBERS_REMOVE);
    open.ClickOk();
    const Lines written = lists_groups ? Lines() : Lines{"+ " + Member(kHelga)};
    EXPECT_EQ(Difference(before, Entry(kCircular)), written);
    Close();
  }
}

TEST_F(MembersPage, AListThatCannotBeReadCannotBeEdited) {
  pelora::testing::FaultStore faulty(*session().store);
  faults().store = &faulty;
  OpenSheet& open = Open({kGroup}, "General");
  faulty.FailReading({52, "not now"});
  open.sheet().SelectPage(2);
  console::QtDialog& page = *open.sheet().Dialog(2);
  EXPECT_THAT(page.Text(IDC_OWN_MEMBERS_NOTE), HasSubstr("cannot be read: not now"));
  EXPECT_FALSE(page.IsEnabled(IDC_OWN_MEMBERS_ADD));
  EXPECT_FALSE(page.IsEnabled(IDC_OWN_MEMBERS_ADD_PASTED));
}

TEST_F(MembersPage, SeveralGroupsGetThemAll) {
  const EntryLines sales = Entry(kGroup);
  const EntryLines circular = Entry(kCircular);
  OpenSheet& open = Open({kGroup, kCircular}, "Members");
  EXPECT_THAT(Rows(), IsEmpty());
  EXPECT_THAT(Page().Text(IDC_OWN_MEMBERS_LABEL), HasSubstr("each of the 2 groups"));
  Paste("Meyer, Anna; Birgit Krämer");
  EXPECT_THAT(Names(), UnorderedElementsAre("Meyer, Anna", "Birgit Krämer"));
  open.ClickApply();
  EXPECT_THAT(Difference(sales, Entry(kGroup)), ElementsAre("+ " + Member(kAnna)));
  EXPECT_THAT(Difference(circular, Entry(kCircular)),
              UnorderedElementsAre("+ " + Member(kAnna), "+ " + Member(kBirgit)));
  EXPECT_THAT(Rows(), IsEmpty());
  EXPECT_THAT(Note(), HasSubstr("has been put in"));
  EXPECT_FALSE(open.IsApplyEnabled());
}

TEST_F(MembersPage, MemberOfIsWrittenIntoTheGroups) {
  const EntryLines birgit = Entry(kBirgit);
  const EntryLines sales = Entry(kGroup);
  const EntryLines circular = Entry(kCircular);
  OpenSheet& open = Open({kBirgit}, "Member Of");
  EXPECT_THAT(Rows(), ElementsAre("Vertrieb Alle\tlinden-werke.example/Linden-Werke Chemnitz/"
                                  "Gruppen"));
  Keep("own-member-of");
  Paste("Rundschreiben; Meyer, Anna");
  EXPECT_THAT(Note(), HasSubstr("Meyer")) << "no group";
  Select({"Vertrieb Alle"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  open.ClickApply();
  EXPECT_THAT(Difference(sales, Entry(kGroup)), ElementsAre("- " + Member(kBirgit)));
  EXPECT_THAT(Difference(circular, Entry(kCircular)), ElementsAre("+ " + Member(kBirgit)));
  EXPECT_THAT(Difference(birgit, Entry(kBirgit)), IsEmpty());
  EXPECT_THAT(Names(), ElementsAre("Rundschreiben"));
  (void)Open({kBirgit}, "Member Of");
  EXPECT_THAT(Names(), ElementsAre("Rundschreiben"));
}

TEST_F(MembersPage, SeveralObjectsGoIntoAGroupTogether) {
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kAnna, kHelga, kBirgit}, "Member Of");
  Choose(open, {kGroup});
  EXPECT_EQ(open.choosers().pickers().at(0).init.scope.up_level_both_modes, 0x3F0U)
      << "groups alone";
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)),
              UnorderedElementsAre("+ " + Member(kAnna), "+ " + Member(kHelga)));
}

TEST_F(MembersPage, ThousandsAreReadBesideTheWindowAndOnlyWhatChangesIsSent) {
  constexpr std::size_t kMany = 3000;
  ldap::Modification all{
      .operation = ldap::Modification::Operation::kAdd, .attribute = "member", .values = {}};
  for (std::size_t at = 0; at < kMany; ++at) {
    all.values.push_back("CN=Person " + std::to_string(at) + ",OU=Vertrieb," + kBase);
  }
  ASSERT_TRUE(session().store->Modify(kGroup, {&all, 1}).Ok());
  CountedErrands errands;
  faults().errands = &errands;
  store().before_modify = {};
  OpenSheet& open = Open({kGroup}, "Members");
  EXPECT_EQ(Page().ListBox(IDC_OWN_MEMBERS).Count(), kMany + 6);
  EXPECT_THAT(errands.done, Contains("Reading the members of Vertrieb Alle..."));
  EXPECT_GE(errands.breaths, kMany) << "the window answers while the list is filled";
  const EntryLines before = Entry(kGroup);
  const std::size_t breaths = errands.breaths;
  Choose(open, {kAnna});
  Select({"Person 17", "Person 2900"});
  open.user().Click(IDC_OWN_MEMBERS_REMOVE);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)),
              UnorderedElementsAre(HasSubstr("- member: CN=Person 17,"),
                                   HasSubstr("- member: CN=Person 2900,"), "+ " + Member(kAnna)));
  EXPECT_LT(errands.breaths - breaths, kMany) << "the list is not made again";
  // Before its errands go.
  Close();
}

}  // namespace
}  // namespace pelora::test
