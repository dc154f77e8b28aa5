// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_search.h"

#include <algorithm>
#include <array>
#include <exception>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/talloc_ptr.h"

namespace pelora::ldap {
namespace {

/// The matching rules that the library brings along.
constexpr auto kMatchingRules =
    std::to_array<std::string_view>({LDB_OID_COMPARATOR_AND, LDB_OID_COMPARATOR_OR});

/// Who takes what is found, and how that went.
struct Reception {
  const std::function<bool(Entry entry)>& take;
  bool is_ended = false;
  std::exception_ptr failure{};

  /// Nothing may be thrown through the library.
  [[nodiscard]] bool Take(const ldb_message& message) {
    try {
      is_ended = !take(ToEntry(message));
    } catch (...) {
      failure = std::current_exception();
      is_ended = true;
    }
    return !is_ended;
  }
};

int TakeReply(struct ldb_request* request, ldb_reply* reply) {
  if (reply == nullptr) return ldb_request_done(request, LDB_ERR_OPERATIONS_ERROR);
  // Ours by now; of an entry that is taken nothing stays behind.
  const TallocPtr<ldb_reply> owned(reply);
  if (reply->error != LDB_SUCCESS) return ldb_request_done(request, reply->error);
  if (reply->type == LDB_REPLY_DONE) return ldb_request_done(request, LDB_SUCCESS);
  if (reply->type != LDB_REPLY_ENTRY) return LDB_SUCCESS;
  auto& reception = *static_cast<Reception*>(request->context);
  if (reception.Take(*reply->message)) return LDB_SUCCESS;
  // Any failure makes the library go no further.
  return ldb_request_done(request, LDB_ERR_SIZE_LIMIT_EXCEEDED);
}

int TakeRecord(struct ldb_request* request, ldb_reply* reply) {
  if (reply == nullptr) return ldb_request_done(request, LDB_ERR_OPERATIONS_ERROR);
  const TallocPtr<ldb_reply> owned(reply);
  if (reply->error != LDB_SUCCESS) return ldb_request_done(request, reply->error);
  if (reply->type == LDB_REPLY_DONE) return ldb_request_done(request, LDB_SUCCESS);
  if (reply->type == LDB_REPLY_ENTRY) {
    // Nothing may be thrown through the library: this asks for no memory.
    auto& found = *static_cast<TallocPtr<ldb_message>*>(request->context);
    found.reset(talloc_steal(nullptr, reply->message));
  }
  return LDB_SUCCESS;
}

/// The names as the library takes them; null: all attributes.
class NameList {
 public:
  explicit NameList(std::span<const std::string> names) {
    names_.reserve(names.size() + 1);
    for (const std::string& name : names) names_.push_back(name.c_str());
    names_.push_back(nullptr);
  }
  [[nodiscard]] const char* const* get() const {
    return names_.size() == 1 ? nullptr : names_.data();
  }

 private:
  std::vector<const char*> names_;
};

/// Has a request done that was built with success.
int Done(ldb_context* context, int code, struct ldb_request*& request) {
  if (code == LDB_SUCCESS) code = ldb_request(context, request);
  return code == LDB_SUCCESS ? ldb_wait(request->handle, LDB_WAIT_ALL) : code;
}

ldb_scope ScopeOf(SearchScope scope) {
  switch (scope) {
    case SearchScope::kBase:
      return LDB_SCOPE_BASE;
    case SearchScope::kOneLevel:
      return LDB_SCOPE_ONELEVEL;
    case SearchScope::kSubtree:
      return LDB_SCOPE_SUBTREE;
  }
  return LDB_SCOPE_BASE;
}

}  // namespace

bool KnowsMatchingRules(const struct ldb_parse_tree& filter) {
  switch (filter.operation) {
    case LDB_OP_AND:
    case LDB_OP_OR: {
      const std::span parts(filter.u.list.elements, filter.u.list.num_elements);
      return std::ranges::all_of(
          parts, [](const struct ldb_parse_tree* part) { return KnowsMatchingRules(*part); });
    }
    case LDB_OP_NOT:
      return KnowsMatchingRules(*filter.u.isnot.child);
    case LDB_OP_EXTENDED: {
      const char* const rule = filter.u.extended.rule_id;
      return rule != nullptr && std::ranges::find(kMatchingRules, rule) != kMatchingRules.end();
    }
    default:
      return true;
  }
}

int SearchLdb(ldb_context* context, const LdbSearch& search,
              const std::function<bool(Entry entry)>& take) {
  const TallocScope memory = MakeTallocScope();
  const NameList names(search.attributes);
  Reception reception{.take = take};
  // A function has the name, too.
  struct ldb_request* request = nullptr;
  int code = ldb_build_search_req(&request, context, memory.get(), search.base,
                                  ScopeOf(search.scope), search.filter.c_str(), names.get(),
                                  nullptr, &reception, &TakeReply, nullptr);
  code = Done(context, code, request);
  if (reception.failure) std::rethrow_exception(reception.failure);
  return reception.is_ended ? LDB_SUCCESS : code;
}

int ReadLdb(ldb_context* context, ldb_dn* name, struct ldb_parse_tree* filter,
            std::span<const std::string> attributes, LdbRecord& record) {
  TallocPtr<ldb_message> found;
  const TallocScope memory = MakeTallocScope();
  const NameList names(attributes);
  struct ldb_request* request = nullptr;
  const int code =
      ldb_build_search_req_ex(&request, context, memory.get(), name, LDB_SCOPE_BASE, filter,
                              names.get(), nullptr, &found, &TakeRecord, nullptr);
  const int outcome = Done(context, code, request);
  record = std::move(found);
  return outcome;
}

}  // namespace pelora::ldap
