// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "directory/select_ad_object.h"
#include "platform/platform.h"

// The contract of the choosers port (platform/choosers.h), as one suite that every adapter of the
// port runs:
//
//   INSTANTIATE_TEST_SUITE_P(Qt, ChoosersContract, ::testing::Values(&MakeChooserHost));
//
// What the choosers show is each host's own; held here is what they hand over.

namespace pelora::contract {

/// An object of the sample company; every host's directory holds those below.
struct ChooserObject {
  const char* name;
  const char* common_name;
  /// A part of its name by which a person searches for it.
  const char* typed;
};
inline constexpr ChooserObject kBirgit{
    "CN=Birgit Krämer,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
    "Birgit Krämer", "birgit"};
/// A comma in its name.
inline constexpr ChooserObject kAnna{
    "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
    "Meyer, Anna", "meyer"};
/// A slash in its name.
inline constexpr ChooserObject kRolf{
    "CN=Rolf Uhlig,OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
    "Rolf Uhlig", "uhlig"};
inline constexpr ChooserObject kServer{"CN=mail02,OU=Groupware Servers,DC=linden-werke,DC=example",
                                       "mail02", "mail02"};
inline constexpr ChooserObject kSales{
    "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example", "Vertrieb", "vertrieb"};
/// A slash in its name.
inline constexpr ChooserObject kLaboratory{
    "OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example", "Labor I/O",
    "labor"};

/// The choosers of a host and the person in front of them; made anew for each test. What is done in
/// the next chooser of a kind is said beforehand.
class ChooserHost {
 public:
  using Choice = std::vector<ChooserObject>;

  virtual ~ChooserHost() = default;

  /// The host's ports; its directory holds the objects above.
  [[nodiscard]] virtual const Platform& platform() = 0;

  /// Chooses objects, one or several, in this order. None: the chooser is cancelled.
  virtual void Pick(const Choice& objects) = 0;
  virtual void Find(const Choice& containers) = 0;
  /// Chooses `kLaboratory`, and cancels a browser that does not take it.
  virtual void BrowseLaboratory() = 0;
  virtual void CancelBrowser() = 0;
};

using ChooserHostFactory = std::unique_ptr<ChooserHost> (*)();

class ChoosersContract : public ::testing::TestWithParam<ChooserHostFactory> {
 protected:
  using Names = std::vector<std::string>;

  [[nodiscard]] ChooserHost& Host() { return *host_; }
  [[nodiscard]] IChoosers& Choosers() { return host_->platform().choosers; }
  [[nodiscard]] SelectADObject Chooser() { return SelectADObject(host_->platform()); }

  [[nodiscard]] std::unique_ptr<IDsObjectPicker> MakePicker(const ObjectPickerInit& init);
  [[nodiscard]] std::unique_ptr<ICommonQuery> MakeQuery();
  /// The distinguished names of the objects to which the paths in a picker's choice lead.
  [[nodiscard]] Names BoundNames(IDataObject* chosen);

 private:
  std::unique_ptr<ChooserHost> host_ = GetParam()();
};

}  // namespace pelora::contract
