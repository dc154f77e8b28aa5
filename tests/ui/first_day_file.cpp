// SPDX-License-Identifier: Apache-2.0
// The company of a first day in a directory file.
#include <gtest/gtest.h>

#include "tests/support/sample_file.h"
#include "tests/ui/console_test.h"
#include "tests/ui/first_day.h"

namespace pelora::test {
namespace {

class FileCompany final : public FirstDayCompany {
 public:
  std::unique_ptr<session::DirectorySession> Open() override {
    return session::OpenDirectoryFile(file_.path()).session;
  }
  std::string Here(const std::string& sample) const override { return sample; }
  std::vector<std::string> Values(const std::string& dn, const std::string& attribute) override {
    std::vector<std::string> values;
    const std::string begin = attribute + ": ";
    for (const std::string& line : SearchEntry(file_.path(), dn)) {
      if (line.starts_with(begin)) values.push_back(line.substr(begin.size()));
    }
    return values;
  }
  bool IsThere(const std::string& dn) override {
    ldap::Entry entry;
    return Open()->store->Read(dn, {}, entry).Ok();
  }
  void Remember(const std::string& /*dn*/) override {
    // Every test has a file of its own.
  }

 private:
  pelora::testing::SampleFile file_;
};

}  // namespace

std::unique_ptr<FirstDayCompany> MakeFirstDayCompany() { return std::make_unique<FileCompany>(); }

}  // namespace pelora::test
