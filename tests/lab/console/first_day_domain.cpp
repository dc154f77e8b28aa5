// SPDX-License-Identifier: Apache-2.0
// The company of a first day in a domain.
#include <algorithm>
#include <set>

#include "tests/lab/domain_company.h"
#include "tests/lab/lab.h"
#include "tests/ui/first_day.h"

namespace pelora::test {
namespace {

class DomainFirstDay final : public FirstDayCompany {
 public:
  ~DomainFirstDay() override { lab::DomainCompany::Shared().Restore(); }

  std::unique_ptr<session::DirectorySession> Open() override {
    // Whoever asks first makes it.
    (void)lab::DomainCompany::Shared();
    return session::OpenServer(lab::Server(), {}).session;
  }
  std::string Here(const std::string& sample) const override {
    const std::string base = "DC=linden-werke,DC=example";
    std::string here = sample;
    return here.replace(here.rfind(base), base.size(), lab::DomainCompany::Base());
  }
  std::vector<std::string> Values(const std::string& dn, const std::string& attribute) override {
    std::vector<std::string> values = lab::LabAdministrator().Stored(dn)[attribute];
    std::ranges::sort(values);
    return values;
  }
  bool IsThere(const std::string& dn) override {
    try {
      return !lab::LabAdministrator().Stored(dn).empty();
    } catch (const std::exception&) {
      return false;
    }
  }
  void Remember(const std::string& dn) override { lab::DomainCompany::Shared().Remember(dn); }
};

}  // namespace

std::unique_ptr<FirstDayCompany> MakeFirstDayCompany() {
  return std::make_unique<DomainFirstDay>();
}

}  // namespace pelora::test
