// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "directory/ds_selection_list.h"
#include "directory/selection_reader.h"
#include "tests/support/chosen_objects.h"

namespace pelora {
namespace {

using testing::ChosenObjects;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::MakeDsSelectionList;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
const std::string kJuergen = "LDAP://dc1/CN=M\xC3\xBCller\\, J\xC3\xBCrgen,DC=x";
constexpr std::size_t kHeadSize = 8;
constexpr std::size_t kEntrySize = 48;

std::uint64_t AddressOf(const HeapBlock& block, std::size_t offset) {
  return reinterpret_cast<std::uintptr_t>(block.bytes.get()) + offset;
}

void SetPathAddress(const HeapBlock& block, std::size_t entry, std::uint64_t address) {
  WriteUint64(block.span(), kHeadSize + kEntrySize * entry + 8, address);
}

void ExpectRefused(std::span<const std::byte> block) {
  std::vector<std::string> paths = {"from before"};
  EXPECT_EQ(ReadDsSelectionList(block, paths), E_INVALIDARG);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(DsSelectionList, PathsComeInTheirOrder) {
  const HeapBlock block = MakeDsSelectionList({kJuergen, kAda});
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsSelectionList(block.span(), paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kJuergen, kAda));
}

TEST(DsSelectionList, NoEntriesAreNoPaths) {
  const HeapBlock block = MakeDsSelectionList({});
  std::vector<std::string> paths = {"from before"};
  EXPECT_EQ(ReadDsSelectionList(block.span(), paths), S_OK);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(DsSelectionList, OnlyCountAndPathAddressesAreRead) {
  const HeapBlock block = MakeDsSelectionList({kAda});
  // Name, class, principal name, fetched attributes and scope of the entry.
  for (const std::size_t field : {0, 16, 24, 32, 40}) {
    WriteUint64(block.span(), kHeadSize + field, 0xFFFFFFFFFFFFFFFF);
  }
  // Number of fetched attributes.
  for (std::size_t at = 4; at < 8; ++at) block.bytes[at] = std::byte{0xFF};
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsSelectionList(block.span(), paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda));
}

TEST(DsSelectionList, ABlockWithoutItsHeadIsRefused) {
  const HeapBlock block = MakeDsSelectionList({});
  for (std::size_t size = 0; size < kHeadSize; ++size) ExpectRefused(block.span().first(size));
}

TEST(DsSelectionList, ACountBeyondTheEntriesIsRefused) {
  const HeapBlock block = MakeDsSelectionList({});
  block.bytes[0] = std::byte{1};
  ExpectRefused(block.span());
}

TEST(DsSelectionList, TheLargestCountIsRefused) {
  const HeapBlock block = MakeDsSelectionList({kAda});
  for (std::size_t at = 0; at < 4; ++at) block.bytes[at] = std::byte{0xFF};
  ExpectRefused(block.span());
}

TEST(DsSelectionList, APathOutsideTheBlockIsRefused) {
  const HeapBlock block = MakeDsSelectionList({kAda});
  const std::u16string elsewhere = u"LDAP://CN=Elsewhere";
  const std::uint64_t addresses[] = {
      0,
      AddressOf(block, 0) - 2,
      AddressOf(block, block.size),
      AddressOf(block, block.size - 1),
      0xFFFFFFFFFFFFFFFF,
      reinterpret_cast<std::uintptr_t>(elsewhere.data()),
  };
  for (const std::uint64_t address : addresses) {
    SetPathAddress(block, 0, address);
    ExpectRefused(block.span());
  }
}

TEST(DsSelectionList, APathThatDoesNotEndInTheBlockIsRefused) {
  const HeapBlock block = MakeDsSelectionList({kAda});
  ExpectRefused(block.span().first(block.size - 1));
  ExpectRefused(block.span().first(block.size - 2));
}

TEST(DsSelectionList, OneBadPathRefusesTheGoodOnesToo) {
  const HeapBlock block = MakeDsSelectionList({kAda, kJuergen});
  SetPathAddress(block, 1, 0);
  ExpectRefused(block.span());
}

TEST(DsSelectionList, PathsNeedNotBeAligned) {
  const std::string path = "LDAP://CN=A";
  const HeapBlock block = MakeDsSelectionList({path + "  "});
  const std::size_t start = kHeadSize + kEntrySize;
  std::memmove(&block.bytes[start + 1], &block.bytes[start], 2 * path.size());
  block.bytes[start + 1 + 2 * path.size()] = std::byte{0};
  block.bytes[start + 2 + 2 * path.size()] = std::byte{0};
  SetPathAddress(block, 0, AddressOf(block, start + 1));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsSelectionList(block.span(), paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(path));
}

TEST(DsSelectionList, BrokenBlocksNeverReachOutside) {
  // Run under the sanitizers too: a read outside the block ends the test.
  std::minstd_rand random(1);
  for (int round = 0; round < 2000; ++round) {
    const HeapBlock block = MakeDsSelectionList({kAda, kJuergen});
    for (int patch = 0; patch < 4; ++patch) {
      block.bytes[random() % block.size] = static_cast<std::byte>(random());
    }
    std::vector<std::string> paths;
    const HRESULT status = ReadDsSelectionList(block.span(), paths);
    EXPECT_TRUE(status == S_OK || (status == E_INVALIDARG && paths.empty()));
  }
}

TEST(ReadSelection, ReadsWhatAPickerGives) {
  const Ref<ChosenObjects> chosen(ChosenObjects::AsSelectionList({kAda, kJuergen}));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsSelectionListFormat, paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda, kJuergen));
  EXPECT_EQ(chosen->last_format().format, "CFSTR_DSOP_DS_SELECTION_LIST");
  EXPECT_EQ(chosen->last_format().aspect, 1U);
  EXPECT_EQ(chosen->last_format().index, -1);
  EXPECT_EQ(chosen->last_format().medium, 1U);
}

TEST(ReadSelection, ReadsWhatAQueryGives) {
  const Ref<ChosenObjects> chosen(ChosenObjects::AsObjectNames({kJuergen, kAda}));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsObjectNamesFormat, paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kJuergen, kAda));
  EXPECT_EQ(chosen->last_format().format, "DsObjectNames");
}

TEST(ReadSelection, MemoryIsUnlockedAndReleasedOnceWhateverCameOfIt) {
  const Ref<ChosenObjects> good(ChosenObjects::AsSelectionList({kAda}));
  HeapBlock block = MakeDsSelectionList({kAda});
  SetPathAddress(block, 0, 0);
  const Ref<ChosenObjects> bad(new ChosenObjects(kDsSelectionListFormat, std::move(block)));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(good.Get(), kDsSelectionListFormat, paths), S_OK);
  EXPECT_EQ(ReadSelection(bad.Get(), kDsSelectionListFormat, paths), E_INVALIDARG);
  for (const auto& chosen : {good, bad}) {
    EXPECT_EQ(chosen->locks(), 0);
    EXPECT_EQ(chosen->releases(), 1);
  }
}

TEST(ReadSelection, NoDataObjectIsACancelledChoice) {
  std::vector<std::string> paths = {"from before"};
  EXPECT_EQ(ReadSelection(nullptr, kDsSelectionListFormat, paths), HresultOfBits(0x80070057));
  EXPECT_THAT(paths, IsEmpty());
}

TEST(ReadSelection, ARenderingThatFailsGivesItsStatus) {
  const Ref<ChosenObjects> chosen(ChosenObjects::AsSelectionList({kAda}));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsObjectNamesFormat, paths), DV_E_FORMATETC);
  chosen->FailWith(E_OUTOFMEMORY);
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsSelectionListFormat, paths), E_OUTOFMEMORY);
  EXPECT_EQ(chosen->releases(), 0);
}

TEST(ReadSelection, MemoryThatCannotBeReachedIsReleasedAllTheSame) {
  const Ref<ChosenObjects> chosen(ChosenObjects::AsSelectionList({kAda}));
  chosen->HideMemory();
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsSelectionListFormat, paths), HresultOfBits(0x80004003));
  EXPECT_EQ(chosen->locks(), 0);
  EXPECT_EQ(chosen->releases(), 1);
}

TEST(ReadSelection, MemoryThatCannotBeReachedIsNoticedBeforeTheFormat) {
  const Ref<ChosenObjects> chosen(new ChosenObjects("Shell IDList", MakeDsSelectionList({kAda})));
  chosen->HideMemory();
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), "Shell IDList", paths), HresultOfBits(0x80004003));
}

TEST(ReadSelection, ARenderingWithASuccessCodeIsRead) {
  const Ref<ChosenObjects> chosen(ChosenObjects::AsSelectionList({kAda}));
  chosen->FailWith(S_FALSE);
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), kDsSelectionListFormat, paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda));
}

TEST(ReadSelection, AnotherFormatIsRefusedEvenIfItIsRendered) {
  const Ref<ChosenObjects> chosen(new ChosenObjects("Shell IDList", MakeDsSelectionList({kAda})));
  std::vector<std::string> paths;
  EXPECT_EQ(ReadSelection(chosen.Get(), "Shell IDList", paths), E_INVALIDARG);
  EXPECT_THAT(paths, IsEmpty());
  EXPECT_EQ(chosen->releases(), 1);
}

}  // namespace
}  // namespace pelora
