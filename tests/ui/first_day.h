// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/session/directory_session.h"

namespace pelora::test {

/// The sample company, in a file or in a domain, in which somebody has his first day.
class FirstDayCompany {
 public:
  virtual ~FirstDayCompany() = default;

  [[nodiscard]] virtual std::unique_ptr<session::DirectorySession> Open() = 0;
  /// What an object of the sample company is called here.
  [[nodiscard]] virtual std::string Here(const std::string& sample) const = 0;
  /// What the directory's own tools find of an attribute of an object, in ascending order.
  [[nodiscard]] virtual std::vector<std::string> Values(const std::string& dn,
                                                        const std::string& attribute) = 0;
  [[nodiscard]] virtual bool IsThere(const std::string& dn) = 0;
  /// An object as it is now is there again when the test is over.
  virtual void Remember(const std::string& dn) = 0;
};

/// One for each test.
[[nodiscard]] std::unique_ptr<FirstDayCompany> MakeFirstDayCompany();

}  // namespace pelora::test
