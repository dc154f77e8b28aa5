// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/session/find/listing.h"
#include "server/component_server.h"
#include "tests/unit/ldb_bench.h"
#include "tests/unit/page_bench.h"

namespace pelora::session {

/// Lists of a sample company of the test's own.
class FindBench : public ldap::LdbBench {
 protected:
  FindBench()
      : catalogue_(specifiers_, host_.platform, host_.templates(), &CreateComponent),
        check_fields_(CheckFieldsOf(catalogue_)),
        store_(Open()) {}

  /// The objects of a listing, each as its cells with tabs between.
  std::vector<std::string> Rows(const Listing& listing, const std::vector<std::string>& columns) {
    std::vector<std::string> rows;
    end_ = ListObjects(*store_, listing, ListColumns(columns, catalogue_), check_fields_,
                       [&](ListedObject listed) {
                         std::string row;
                         for (const std::string& cell : listed.cells) {
                           row +=
                               (row.empty() && &cell == &listed.cells.front() ? "" : "\t") + cell;
                         }
                         rows.push_back(row);
                         return rows.size() != stop_after_;
                       });
    return rows;
  }
  std::vector<std::string> Names(const Listing& listing) { return Rows(listing, {"name"}); }

  [[nodiscard]] FieldCatalogue& catalogue() { return catalogue_; }
  [[nodiscard]] ldap::IDirectoryStore& store() { return *store_; }
  [[nodiscard]] const ListingEnd& end() const { return end_; }
  void StopAfter(std::size_t rows) { stop_after_ = rows; }

 private:
  pelora::testing::PageBench host_;
  ldap::DisplaySpecifiers specifiers_;
  FieldCatalogue catalogue_;
  CheckFields check_fields_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
  ListingEnd end_;
  std::size_t stop_after_ = 0;
};

}  // namespace pelora::session
