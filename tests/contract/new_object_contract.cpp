// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/new_object_contract.h"

#include "tests/contract/same_edits.h"

namespace pelora::contract {
namespace {

constexpr const char* kNameInUse =
    "The new object cannot be created because the name is already in use.\n"
    "Please select a different name and try again.";

const std::vector<std::string> kClasses = {"user",
                                           "contact",
                                           "group",
                                           "organizationalUnit",
                                           "computer",
                                           "peloraAddresslist",
                                           "peloraDynamicDistlist"};

/// Whether the extension's own page asks for the name.
bool IsList(const std::string& class_name) { return class_name.starts_with("pelora"); }

}  // namespace

void NewObjectContract::Open(const std::string& class_name, const std::string& name) {
  class_name_ = class_name;
  console_->Open(class_name);
  Name(name);
}

void NewObjectContract::Name(const std::string& name) {
  name_ = name;
  if (IsList(class_name_)) {
    User().Erase(IDC_OBJECT_NAME);
    EXPECT_FALSE(console_->IsNextEnabled());
    User().Type(IDC_OBJECT_NAME, name);
  } else {
    console_->SetName(name);
  }
  EXPECT_TRUE(console_->IsNextEnabled());
  console_->Next();
}

void NewObjectContract::Finish() {
  EXPECT_TRUE(console_->IsNextEnabled());
  console_->Next();
  console_->Finish();
}

NewObjectContract::Lines NewObjectContract::Stored(const std::string& name) {
  const std::optional<TabValues> stored = console_->Stored(name);
  if (!stored) return {"none"};
  Lines lines;
  for (const auto& [attribute, values] : *stored) {
    if (!attribute.starts_with("pelora") && attribute != "mail") continue;
    for (const std::string& value : values) lines.push_back(attribute + ": " + value);
  }
  return lines;
}

NewObjectContract::Lines NewObjectContract::Made() {
  Finish();
  EXPECT_FALSE(console_->IsOpen());
  return Stored(name_);
}

// Every class.

TEST_P(NewObjectContract, LeftAloneItWritesThatThereIsNoAccountAndNothingElse) {
  for (const std::string& class_name : kClasses) {
    SCOPED_TRACE(class_name);
    Open(class_name, "Plain " + class_name);
    Console().Next();
    const std::string said = Console().Summary();
    EXPECT_NE(said.find("Pelora disabled"), std::string::npos) << said;
    Console().Finish();
    EXPECT_FALSE(Console().IsOpen());
    EXPECT_EQ(Stored("Plain " + class_name), Lines{"peloraAccount: 0"});
  }
}

TEST_P(NewObjectContract, GoingBackEnablesTheButtonAndKeepsWhatWasClicked) {
  for (const std::string& class_name : kClasses) {
    SCOPED_TRACE(class_name);
    // The others have nothing that an account needs.
    const bool needs_more = class_name != "group" && class_name != "organizationalUnit";
    Open(class_name, "Back " + class_name);
    EXPECT_TRUE(Console().IsNextEnabled());
    User().Click(IDC_CREATE_PELORA);
    EXPECT_EQ(Console().IsNextEnabled(), !needs_more);
    Console().Back();
    EXPECT_TRUE(Console().IsNextEnabled());
    Console().Next();
    EXPECT_EQ(Page().Check(IDC_CREATE_PELORA), CheckState::kChecked);
    EXPECT_EQ(Console().IsNextEnabled(), !needs_more);
    User().Click(IDC_CREATE_PELORA);
    EXPECT_TRUE(Console().IsNextEnabled());
  }
}

TEST_P(NewObjectContract, ANameInUseIsSaidAndAnotherIsTaken) {
  for (const std::string& class_name : kClasses) {
    SCOPED_TRACE(class_name);
    const std::string taken = "Taken " + class_name;
    Open(class_name, taken);
    EXPECT_EQ(Made(), Lines{"peloraAccount: 0"});
    Open(class_name, taken);
    Console().AwaitBox();
    Finish();
    EXPECT_EQ(Console().TakeBox(), (TabBox{.caption = "Pelora Error", .text = kNameInUse}));
    EXPECT_TRUE(Console().IsOpen());
    Console().Back();
    Console().Back();
    Name("Free " + class_name);
    EXPECT_EQ(Made(), Lines{"peloraAccount: 0"});
  }
}

TEST_P(NewObjectContract, AnyOtherFailureShowsItsCodeAndMayBeTriedAgain) {
  for (const std::string& class_name : kClasses) {
    SCOPED_TRACE(class_name);
    const std::string name = "Again " + class_name;
    Open(class_name, name);
    Console().FailCommit();
    Console().AwaitBox();
    Finish();
    const TabBox box = Console().TakeBox();
    const TabBox expected = ErrorBox("Unknown error occured", "0X80070005");
    EXPECT_EQ(box.caption, expected.caption);
    // A console may go on with what the directory said.
    EXPECT_TRUE(box.text.starts_with(expected.text)) << box.text;
    EXPECT_TRUE(Console().IsOpen());
    EXPECT_EQ(Stored(name), Lines{"none"});
    Console().Finish();
    EXPECT_FALSE(Console().IsOpen());
    EXPECT_EQ(Stored(name), Lines{"peloraAccount: 0"});
  }
}

// Each page.

TEST_P(NewObjectContract, AUserNeedsAnAddress) {
  Open("user", "Ada");
  EXPECT_FALSE(Page().IsEnabled(IDC_NEW_ADDRESS));
  User().Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_NEW_ADDRESS, "ö@x.test");
  EXPECT_TRUE(Console().IsNextEnabled());
  Console().Pick(Here(sample::kSecondServer));
  User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(Page().Text(IDC_SERVER), "mail02");
  User().Click(IDC_PELORA_HIDDEN);
  Console().Next();
  EXPECT_NE(Console().Summary().find("Pelora enabled"), std::string::npos);
  EXPECT_EQ(Stored("Ada"), Lines{"none"}) << "not before Finish";
  Console().Finish();
  EXPECT_EQ(Stored("Ada"),
            (Lines{"mail: ö@x.test", "peloraAccount: 1", "peloraAdmin: 0", "peloraHidden: 1",
                   "peloraSharedStoreOnly: 0", "peloraUserServer: mail02"}));
}

TEST_P(NewObjectContract, TheUserThatEveryFaceMakes) {
  Open("user", SameNewUser::kName);
  User().Click(IDC_CREATE_PELORA);
  User().ChooseComboRow(IDC_ACCOUNT_TYPE, 2);
  User().Type(IDC_CAPACITY, SameNewUser::kCapacity);
  User().Click(IDC_PELORA_HIDDEN);
  User().Type(IDC_NEW_ADDRESS, SameNewUser::kAddress);
  Console().Pick(Here(SameNewUser::kServer));
  User().Click(IDC_SERVER_SELECT);
  std::string made;
  for (const std::string& line : Made()) made += line + "\n";
  EXPECT_EQ(made, kSameNewUserDump);
}

TEST_P(NewObjectContract, EveryTypeOfUserIsWrittenAsWhatItStandsFor) {
  struct Row {
    RowIndex type;
    Lines written;
    std::string capacity{};
  };
  const std::vector<Row> rows = {
      {1, {"peloraAdmin: 0", "peloraHidden: 0", "peloraSharedStoreOnly: 1"}},
      {2,
       {"peloraAdmin: 0", "peloraHidden: 0", "peloraResourceCapacity: 12",
        "peloraResourceType: room", "peloraSharedStoreOnly: 1"},
       "1x2"},
      {3,
       {"peloraAdmin: 0", "peloraHidden: 0", "peloraResourceType: equipment",
        "peloraSharedStoreOnly: 1"}},
      {4, {"peloraAdmin: 1", "peloraHidden: 0", "peloraSharedStoreOnly: 0"}},
      {5, {"peloraAdmin: 2", "peloraHidden: 0", "peloraSharedStoreOnly: 0"}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.type);
    Open("user", "Type " + std::to_string(row.type));
    User().Click(IDC_CREATE_PELORA);
    EXPECT_FALSE(Console().IsNextEnabled());
    User().ChooseComboRow(IDC_ACCOUNT_TYPE, row.type);
    EXPECT_TRUE(Console().IsNextEnabled());
    EXPECT_EQ(Page().IsEnabled(IDC_CAPACITY), row.type == 2 || row.type == 3);
    if (!row.capacity.empty()) User().Type(IDC_CAPACITY, row.capacity);
    Lines expected = row.written;
    expected.insert(expected.begin(), "peloraAccount: 1");
    EXPECT_EQ(Made(), expected);
  }
}

TEST_P(NewObjectContract, AContactNeedsAnAddress) {
  Open("contact", "Carl");
  User().Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_NEW_ADDRESS, "carl@x.test");
  EXPECT_EQ(Made(), (Lines{"mail: carl@x.test", "peloraAccount: 1", "peloraHidden: 0"}));
}

TEST_P(NewObjectContract, AGroupMayHaveAnAddress) {
  Open("group", "All");
  User().Click(IDC_CREATE_PELORA);
  EXPECT_EQ(Made(), (Lines{"peloraAccount: 1", "peloraHidden: 0"}));
  Open("group", "Team");
  User().Click(IDC_CREATE_PELORA);
  User().Type(IDC_NEW_ADDRESS, "team@x.test");
  EXPECT_EQ(Made(), (Lines{"mail: team@x.test", "peloraAccount: 1", "peloraHidden: 0"}));
}

TEST_P(NewObjectContract, ACompanyHasAnAdministratorAndAServer) {
  Open("organizationalUnit", "Works");
  User().Click(IDC_CREATE_PELORA);
  EXPECT_TRUE(Console().IsNextEnabled());
  Console().Pick(Here(sample::kBirgit));
  User().Click(IDC_SYSTEM_ADMIN_SELECT);
  Console().Pick(Here(sample::kServer));
  User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(Made(), (Lines{"peloraAccount: 1", "peloraCompanyServer: mail01", "peloraHidden: 0",
                           "peloraSystemAdmin: " + Here(sample::kBirgit)}));
}

TEST_P(NewObjectContract, AServerBringsItsPortsAndWaitsForAnAddressAndOneOfThem) {
  Open("computer", "mail");
  EXPECT_EQ(Page().Text(IDC_HTTP_PORT), "236");
  EXPECT_EQ(Page().Text(IDC_SSL_PORT), "237");
  EXPECT_EQ(Page().Text(IDC_FILE_PATH), "/var/run/pelora");
  User().Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_HOST_ADDRESS, "192.0.2.1");
  EXPECT_TRUE(Console().IsNextEnabled());
  User().Erase(IDC_HTTP_PORT);
  EXPECT_TRUE(Console().IsNextEnabled());
  User().Erase(IDC_SSL_PORT);
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_SSL_PORT, "2a37");
  EXPECT_TRUE(Console().IsNextEnabled());
  User().Click(IDC_CONTAINS_PUBLIC);
  EXPECT_EQ(Made(),
            (Lines{"peloraAccount: 1", "peloraContainsPublic: 1", "peloraFilePath: /var/run/pelora",
                   "peloraHostAddress: 192.0.2.1", "peloraSslPort: 237"}));
}

TEST_P(NewObjectContract, AnAddressListHasABaseThatIsBrowsedForAndAQueryThatIsTyped) {
  Open("peloraAddresslist", "Äl");
  User().Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_SEARCH_QUERY, "(cn=*)");
  EXPECT_TRUE(Console().IsNextEnabled());
  Console().Back();
  EXPECT_EQ(Page().Text(IDC_OBJECT_NAME), "Äl");
  Console().Next();
  User().Type(IDC_SEARCH_BASE, "typed");
  EXPECT_EQ(Page().Text(IDC_SEARCH_BASE), "");
  Console().Browse(Here(sample::kSales));
  User().Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(Page().Text(IDC_SEARCH_BASE), Here(sample::kSales));
  Console().Next();
  EXPECT_EQ(Console().Summary(), "Fullname: Äl\n\nPelora enabled");
  Console().Back();
  EXPECT_EQ(Made(), (Lines{"peloraAccount: 1", "peloraBase: " + Here(sample::kSales),
                           "peloraFilter: (cn=*)", "peloraHidden: 0"}));
}

TEST_P(NewObjectContract, ADynamicListNeedsAQueryAndMayHaveAnAddress) {
  Open("peloraDynamicDistlist", "Dyn");
  User().Click(IDC_CREATE_PELORA);
  User().Type(IDC_NEW_ADDRESS, "dyn@x.test");
  EXPECT_FALSE(Console().IsNextEnabled());
  User().Type(IDC_SEARCH_QUERY, "(cn=d*)");
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Made(), (Lines{"mail: dyn@x.test", "peloraAccount: 1", "peloraFilter: (cn=d*)",
                           "peloraHidden: 1"}));
}

}  // namespace pelora::contract
