// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as what a directory says of its classes' tabs: lines "NAME ATTRIBUTE VALUE". What
// comes of it are classes of the module, each once, whatever the directory calls its own.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ascii_case.h"
#include "hosts/ldap/display_specifiers.h"
#include "server/class_table.h"

namespace pelora {

/// A module of three classes, of which the fuzzer makes none.
std::span<const ComponentClass> ClassTable() {
  static const std::array kClasses = {
      ComponentClass{.name = "A", .class_id = {.data1 = 1}},
      ComponentClass{.name = "B", .class_id = {.data1 = 2}},
      ComponentClass{.name = "C", .class_id = {.data1 = 3}},
  };
  return kClasses;
}

const ComponentClass* FindClass(const Guid& class_id) {
  const auto found = std::ranges::find(ClassTable(), class_id, &ComponentClass::class_id);
  return found == ClassTable().end() ? nullptr : &*found;
}

std::vector<Guid> DefaultRegistrations(std::string_view object_class, ConsoleRole role) {
  const bool is_known = EqualsWithoutCase(object_class, "user");
  return is_known && role == ConsoleRole::kPropertyPage ? std::vector{ClassTable()[0].class_id}
                                                        : std::vector<Guid>();
}

}  // namespace pelora

namespace {

using namespace pelora::ldap;
using pelora::ConsoleRole;

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Answers every search with the same entries.
class OneFolder final : public IDirectoryStore {
 public:
  explicit OneFolder(std::vector<Entry> entries) : entries_(std::move(entries)) {}

  [[nodiscard]] const Schema& schema() const override { return schema_; }
  StoreStatus ReadRoot(Entry& root) override {
    root = {.dn = "", .attributes = {{"configurationNamingContext", {"CN=c"}}}};
    return {};
  }
  StoreStatus Read(const std::string&, std::span<const std::string>, Entry&) override {
    return kRefused;
  }
  StoreStatus Search(const SearchRequest&, const EntrySink& sink) override {
    for (const Entry& entry : entries_) {
      if (!sink(entry)) break;
    }
    return {};
  }
  StoreStatus Modify(const std::string&, std::span<const Modification>) override {
    return kRefused;
  }
  StoreStatus ModifyStrictly(const std::string&, std::span<const Modification>) override {
    return kRefused;
  }
  StoreStatus Add(const Entry&) override { return kRefused; }
  StoreStatus Delete(const Entry&) override { return kRefused; }

 private:
  const StoreStatus kRefused{53, "unwilling to perform"};
  std::vector<Entry> entries_;
  Schema schema_;
};

std::vector<std::string> Divided(std::string_view text, char sign, std::size_t most) {
  std::vector<std::string> parts;
  while (parts.size() + 1 < most && text.find(sign) != text.npos) {
    parts.emplace_back(text.substr(0, text.find(sign)));
    text.remove_prefix(text.find(sign) + 1);
  }
  parts.emplace_back(text);
  return parts;
}

std::vector<Entry> EntriesOf(std::string_view text) {
  std::map<std::string, Entry> entries;
  for (const std::string& line : Divided(text, '\n', text.size() + 1)) {
    const std::vector<std::string> parts = Divided(line, ' ', 3);
    if (parts.size() < 3) continue;
    Entry& entry = entries[parts[0]];
    entry.attributes["cn"] = {parts[0]};
    entry.attributes[parts[1]].push_back(parts[2]);
  }
  std::vector<Entry> all;
  for (auto& [name, entry] : entries) all.push_back(std::move(entry));
  return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<Entry> entries =
      EntriesOf(std::string_view(reinterpret_cast<const char*>(data), size));
  OneFolder store(entries);
  DisplaySpecifiers specifiers;
  Require(DisplaySpecifiers::Read(store, "409", specifiers).Ok());
  std::vector<std::string> names = {"user", "USER", "nothing"};
  constexpr std::size_t kMostNames = 12;
  for (const Entry& entry : entries) {
    if (names.size() == kMostNames) break;
    const std::string& name = entry.attributes.at("cn").front();
    names.push_back(name.substr(0, name.find("-Display")));
  }
  for (const std::string& name : names) {
    for (const ConsoleRole role :
         {ConsoleRole::kPropertyPage, ConsoleRole::kMultiselectPropertyPage,
          ConsoleRole::kCreationWizard, ConsoleRole::kCreationWizardExtension}) {
      const std::vector<pelora::Guid> classes = specifiers.ComponentsOf(name, role);
      for (const pelora::Guid& one : classes) {
        Require(pelora::FindClass(one) != nullptr && std::ranges::count(classes, one) == 1);
      }
      if (!pelora::DefaultRegistrations(name, role).empty()) Require(!classes.empty());
    }
  }
  return 0;
}
