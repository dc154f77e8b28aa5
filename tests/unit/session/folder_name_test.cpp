// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/folder_name.h"

#include <gtest/gtest.h>

namespace pelora::test {
namespace {

TEST(FolderOf, IsReadFromTheDomainDown) {
  EXPECT_EQ(session::FolderOf("CN=Ada,OU=Sales,OU=Works,DC=x,DC=org"), "x.org/Works/Sales");
  EXPECT_EQ(session::FolderOf("CN=A,OU=B\\, C\\c3\\A9,dc=x"), "x/B, Cé");
  EXPECT_EQ(session::FolderOf("DC=x,DC=org"), "org");
  EXPECT_EQ(session::FolderOf(""), "");
}

TEST(AsFolder, IsWhereAContainersOwnObjectsLie) {
  EXPECT_EQ(session::AsFolder("OU=Sales,DC=x,DC=org"), "x.org/Sales");
  EXPECT_EQ(session::AsFolder("DC=x,DC=org"), "x.org");
  EXPECT_EQ(session::AsFolder(""), "");
}

}  // namespace
}  // namespace pelora::test
