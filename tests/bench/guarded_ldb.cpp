// SPDX-License-Identifier: Apache-2.0
// The least that a program has to do to change one attribute of many objects of a directory file
// without overwriting what somebody else wrote: reads each object by the database library,
// compares, and writes the change with its guard, all in one transaction. What `ctl_bench` measures
// others by.
//
//   guarded_ldb FILE ROWS.csv [unmapped]
//
// ROWS.csv has a header, and rows of a quoted name and a number, as `ctl_bench` writes them. With
// `unmapped` the file is read and not mapped into memory, as a program does that has to live when
// somebody cuts the file short.
#include <array>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/talloc_ptr.h"

namespace {

using pelora::ldap::MakeTallocScope;
using pelora::ldap::TallocPtr;
using pelora::ldap::TallocScope;

constexpr const char* kAttribute = "peloraQuotaHard";

class Writer {
 public:
  Writer(const std::string& file, bool is_mapped) : context_(ldb_init(nullptr, nullptr)) {
    auto options = std::to_array<const char*>({"modules:", nullptr});
    const unsigned flags = is_mapped ? 0 : LDB_FLG_NOMMAP;
    Check(ldb_connect(context_.get(), ("tdb://" + file).c_str(), flags, options.data()));
    Check(ldb_transaction_start(context_.get()));
  }

  void Change(const std::string& dn, std::string wanted) {
    const TallocScope scope = MakeTallocScope();
    ldb_dn* const name = ldb_dn_new(scope.get(), context_.get(), dn.c_str());
    const auto attributes = std::to_array<const char*>({kAttribute, nullptr});
    ldb_result* found = nullptr;
    Check(ldb_search(context_.get(), scope.get(), &found, name, LDB_SCOPE_BASE, attributes.data(),
                     nullptr));
    if (found->count != 1) throw std::runtime_error("no such object: " + dn);
    ldb_message* const change = ldb_msg_new(scope.get());
    change->dn = name;
    const ldb_val* const seen = ldb_msg_find_ldb_val(found->msgs[0], kAttribute);
    if (seen != nullptr) {
      const std::string is(reinterpret_cast<const char*>(seen->data), seen->length);
      if (is == wanted) return;
      Put(*change, LDB_FLAG_MOD_DELETE, *seen);
    }
    Put(*change, LDB_FLAG_MOD_ADD,
        {.data = reinterpret_cast<std::uint8_t*>(wanted.data()), .length = wanted.size()});
    Check(ldb_modify(context_.get(), change));
  }
  void Commit() { Check(ldb_transaction_commit(context_.get())); }

 private:
  void Put(ldb_message& message, int flags, const ldb_val& value) {
    ldb_message_element* element = nullptr;
    Check(ldb_msg_add_empty(&message, kAttribute, flags, &element));
    Check(ldb_msg_element_add_value(&message, element, &value));
  }
  void Check(int code) {
    if (code != LDB_SUCCESS) throw std::runtime_error(ldb_errstring(context_.get()));
  }

  TallocPtr<ldb_context> context_;
};

void Run(const std::string& file, const std::string& rows, bool is_mapped) {
  Writer writer(file, is_mapped);
  std::ifstream table(rows);
  std::string row;
  std::getline(table, row);
  while (std::getline(table, row)) {
    if (row.ends_with('\r')) row.pop_back();
    const std::size_t end = row.rfind('"');
    if (end == std::string::npos || end < 1) throw std::runtime_error("not a row: " + row);
    writer.Change(row.substr(1, end - 1), row.substr(end + 2));
  }
  writer.Commit();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  try {
    Run(argv[1], argv[2], argc == 3);
  } catch (const std::exception& error) {
    std::cerr << "guarded_ldb: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
