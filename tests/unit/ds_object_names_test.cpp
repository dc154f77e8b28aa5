// SPDX-License-Identifier: Apache-2.0
#include "directory/ds_object_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "tests/support/selection_data_object.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::MakeDsObjectNames;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
const std::string kJuergen = "LDAP://dc1/CN=M\xC3\xBCller\\, J\xC3\xBCrgen,DC=x";

/// Reads from a copy that ends exactly where the block ends.
HRESULT Read(const std::vector<std::byte>& block, std::vector<std::string>& paths) {
  const auto copy = std::make_unique<std::byte[]>(block.size());
  std::ranges::copy(block, copy.get());
  return ReadDsObjectNames({copy.get(), block.size()}, paths);
}

void ExpectRefused(const std::vector<std::byte>& block) {
  std::vector<std::string> paths = {"from before"};
  EXPECT_EQ(Read(block, paths), E_INVALIDARG);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(DsObjectNames, PathsComeInTheirOrder) {
  std::vector<std::string> paths;
  EXPECT_EQ(Read(MakeDsObjectNames({kAda, kJuergen}), paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda, kJuergen));
}

TEST(DsObjectNames, NoEntriesAreNoPaths) {
  std::vector<std::string> paths = {"from before"};
  EXPECT_EQ(Read(MakeDsObjectNames({}), paths), S_OK);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(DsObjectNames, OnlyCountAndNameOffsetsAreRead) {
  std::vector<std::byte> block = MakeDsObjectNames({kAda});
  for (const std::size_t offset : {0, 4, 8, 12, 20, 24, 32}) WriteUint32(block, offset, 0xFFFFFFFF);
  std::vector<std::string> paths;
  EXPECT_EQ(Read(block, paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda));
}

TEST(DsObjectNames, EntriesMayShareAStringAndStandAtAnOddOffset) {
  std::vector<std::byte> block = MakeDsObjectNames({kAda, kAda});
  const std::size_t string_bytes = (kAda.size() + 1) * 2;
  const std::size_t odd = block.size() + 1;
  block.push_back(std::byte{0xEE});
  block.insert(block.end(), block.begin() + 52,
               block.begin() + 52 + static_cast<int>(string_bytes));
  WriteUint32(block, 28, static_cast<std::uint32_t>(odd));
  WriteUint32(block, 44, static_cast<std::uint32_t>(odd));
  std::vector<std::string> paths;
  EXPECT_EQ(Read(block, paths), S_OK);
  EXPECT_THAT(paths, ElementsAre(kAda, kAda));
}

TEST(DsObjectNames, ABlockCutShortAnywhereIsRefused) {
  const std::vector<std::byte> whole = MakeDsObjectNames({kAda, kJuergen});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    SCOPED_TRACE(size);
    ExpectRefused({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
  }
}

TEST(DsObjectNames, ACountBeyondTheBlockIsRefused) {
  // 0x10000001 entries of 16 bytes are 16 bytes again when 32 bits overflow.
  for (const std::uint32_t count : {2U, 0x10000001U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    std::vector<std::byte> block = MakeDsObjectNames({kAda});
    block.resize(20 + 16 + 8);
    WriteUint32(block, 16, count);
    ExpectRefused(block);
  }
}

TEST(DsObjectNames, AnOffsetOutsideTheBlockIsRefused) {
  const std::vector<std::byte> whole = MakeDsObjectNames({kAda});
  const auto size = static_cast<std::uint32_t>(whole.size());
  for (const std::uint32_t offset :
       {size - 1, size, size + 1, 0x7FFFFFFFU, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
    std::vector<std::byte> block = whole;
    WriteUint32(block, 28, offset);
    SCOPED_TRACE(offset);
    ExpectRefused(block);
  }
}

TEST(DsObjectNames, AStringWithoutItsEndIsRefused) {
  std::vector<std::byte> block = MakeDsObjectNames({kAda});
  block.at(block.size() - 2) = std::byte{'x'};
  ExpectRefused(block);
}

TEST(DsObjectNames, OneBadEntryKeepsNoPathOfTheGoodOnes) {
  std::vector<std::byte> block = MakeDsObjectNames({kAda, kJuergen});
  WriteUint32(block, 44, 0xFFFF);
  ExpectRefused(block);
}

TEST(DsObjectNames, RandomBlocksNeverReadOutside) {
  std::mt19937 random(20);
  std::uniform_int_distribution<int> byte(0, 255);
  std::uniform_int_distribution<std::uint32_t> small(0, 80);
  for (int round = 0; round < 20000; ++round) {
    std::vector<std::byte> block(small(random));
    std::ranges::generate(block, [&] { return static_cast<std::byte>(byte(random)); });
    if (block.size() >= 36) {
      WriteUint32(block, 16, small(random) % 3);
      WriteUint32(block, 28, small(random));
    }
    std::vector<std::string> paths;
    const HRESULT status = Read(block, paths);
    ASSERT_TRUE(status == S_OK || (status == E_INVALIDARG && paths.empty()));
  }
}

}  // namespace
}  // namespace pelora
