// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_connection.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <new>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_library.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/ldb_search.h"
#include "hosts/ldap/talloc_ptr.h"

namespace pelora::ldap {
namespace {

/// For the owner alone: the entries are people.
constexpr unsigned kFilePermissions = 0600;

char* FoldForLdb(void* /*context*/, void* memory, const char* text, std::size_t length) {
  const std::string_view whole(text);
  const std::string folded = FoldCase(whole.substr(0, std::min(length, whole.size())));
  return talloc_strndup(memory, folded.data(), folded.size());
}

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

/// Whether a name is well-formed, and that of a directory's object.
bool IsObjectName(ldb_dn* name) {
  return name != nullptr && ldb_dn_validate(name) && !ldb_dn_is_special(name) &&
         !ldb_dn_is_null(name);
}

StoreStatus NoName(const std::string& text) {
  return {kLdapInvalidDnSyntax, "not a distinguished name: " + text};
}

}  // namespace

/// The library's context, and what it said while it worked.
class LdbConnection::Handle {
 public:
  Handle() {
    const auto alone = LockLdbLibrary();
    PrepareLdbLibrary();
    context_.reset(ldb_init(nullptr, nullptr));
    if (context_ == nullptr) return;
    ldb_set_debug(context_.get(), KeepMessage, this);
    ldb_set_utf8_fns(context_.get(), nullptr, FoldForLdb);
    ldb_set_create_perms(context_.get(), kFilePermissions);
    // Records of the library's own have no class.
    any_record_ = ldb_parse_tree(context_.get(), "(distinguishedName=*)");
    if (any_record_ == nullptr) context_.reset();
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    const auto alone = LockLdbLibrary();
    context_.reset();
  }

  [[nodiscard]] ldb_context* get() const { return context_.get(); }
  /// A filter that every record matches.
  [[nodiscard]] struct ldb_parse_tree* any_record() const { return any_record_; }
  [[nodiscard]] std::string TakeMessage() { return std::exchange(message_, {}); }

  bool is_stuck = false;

 private:
  static void KeepMessage(void* context, ldb_debug_level level, const char* format,
                          va_list arguments) {
    auto& self = *static_cast<Handle*>(context);
    const bool is_trouble = level == LDB_DEBUG_FATAL || level == LDB_DEBUG_ERROR;
    if (!is_trouble || !self.message_.empty()) return;
    // The first message is the cause; what follows it tells of the consequences.
    std::array<char, 512> text{};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    self.message_ = text.data();
  }

  TallocPtr<ldb_context> context_;
  struct ldb_parse_tree* any_record_ = nullptr;
  std::string message_;
};

LdbConnection::LdbConnection(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}

LdbConnection::~LdbConnection() = default;

StoreStatus LdbConnection::OpenUnconnected(std::unique_ptr<LdbConnection>& connection) {
  auto handle = std::make_unique<Handle>();
  if (handle->get() == nullptr) return {kLdapOther, "cannot initialise libldb"};
  connection.reset(new LdbConnection(std::move(handle)));
  return {};
}

StoreStatus LdbConnection::Open(const std::string& path, Mode mode,
                                std::unique_ptr<LdbConnection>& connection) {
  std::unique_ptr<LdbConnection> opened;
  StoreStatus status = OpenUnconnected(opened);
  if (!status.Ok()) return status;
  // An empty list is a list: the one that the file may hold is not looked at, and nothing that it
  // names is loaded into the program.
  auto options = std::to_array<const char*>({"modules:", nullptr});
  unsigned flags = mode == Mode::kNew ? LDB_FLG_NOSYNC : LDB_FLG_DONT_CREATE_DB;
  // A file that shrinks under a mapping would end the process.
  if (mode != Mode::kMapped) flags |= LDB_FLG_NOMMAP;
  const std::string url = "tdb://" + path;
  {
    const auto alone = LockLdbLibrary();
    status = opened->Outcome(ldb_connect(opened->handle(), url.c_str(), flags, options.data()));
  }
  if (status.Ok()) connection = std::move(opened);
  return status;
}

ldb_context* LdbConnection::handle() const { return handle_->get(); }

bool LdbConnection::IsName(const std::string& text) const {
  // The library would take what stands before it for the name.
  if (text.find('\0') != std::string::npos) return false;
  const TallocScope scope = MakeTallocScope();
  return IsObjectName(ldb_dn_new(scope.get(), handle(), text.c_str()));
}

std::string LdbConnection::CanonicalName(const std::string& name) const {
  const TallocScope scope = MakeTallocScope();
  return ldb_dn_get_casefold(ldb_dn_new(scope.get(), handle(), name.c_str()));
}

std::string LdbConnection::ParentName(const std::string& name) const {
  const TallocScope scope = MakeTallocScope();
  ldb_dn* const child = ldb_dn_new(scope.get(), handle(), name.c_str());
  ldb_dn* const parent = ldb_dn_get_parent(scope.get(), child);
  return parent == nullptr ? std::string() : ldb_dn_get_linearized(parent);
}

LdbConnection::NamingAttribute LdbConnection::NamingAttributeOf(const std::string& name) const {
  const TallocScope scope = MakeTallocScope();
  ldb_dn* const dn = ldb_dn_new(scope.get(), handle(), name.c_str());
  const char* const attribute = ldb_dn_get_rdn_name(dn);
  const ldb_val* const value = ldb_dn_get_rdn_val(dn);
  if (attribute == nullptr || value == nullptr) return {};
  return {attribute, ToBytes(*value)};
}

std::string LdbConnection::Rebased(const std::string& name, const std::string& old_top,
                                   const std::string& new_top) const {
  const TallocScope scope = MakeTallocScope();
  ldb_dn* const dn = ldb_dn_new(scope.get(), handle(), name.c_str());
  ldb_dn* const before = ldb_dn_new(scope.get(), handle(), old_top.c_str());
  ldb_dn* const after = ldb_dn_new(scope.get(), handle(), new_top.c_str());
  const int depth = ldb_dn_get_comp_num(before);
  const bool is_rebased = depth > 0 && ldb_dn_get_comp_num(after) > 0 &&
                          ldb_dn_remove_base_components(dn, static_cast<unsigned>(depth)) &&
                          ldb_dn_add_base(dn, after);
  if (!is_rebased) throw std::bad_alloc();
  return ldb_dn_get_linearized(dn);
}

std::string LdbConnection::FilterValue(const std::string& value) const {
  const TallocScope scope = MakeTallocScope();
  const char* const escaped = ldb_binary_encode_string(scope.get(), value.c_str());
  if (escaped == nullptr) throw std::bad_alloc();
  return escaped;
}

StoreStatus LdbConnection::Search(const SearchRequest& request, std::vector<Entry>& entries) const {
  entries.clear();
  return SearchEach(request, [&entries](Entry entry) {
    entries.push_back(std::move(entry));
    return true;
  });
}

StoreStatus LdbConnection::SearchEach(const SearchRequest& request, const Take& take) const {
  static_cast<void>(handle_->TakeMessage());
  const TallocScope memory = MakeTallocScope();
  const std::string& filter = request.filter;
  const bool may_be_filter = filter.find('\0') == std::string::npos;
  const struct ldb_parse_tree* tree =
      may_be_filter ? ldb_parse_tree(memory.get(), filter.c_str()) : nullptr;
  if (tree == nullptr) return {kLdapFilterError, "not a search filter: " + filter};
  if (!KnowsMatchingRules(*tree)) {
    return {kLdapFilterError, "a matching rule that no directory file has: " + filter};
  }
  ldb_dn* const base = ldb_dn_new(memory.get(), handle(), request.base.c_str());
  if (base == nullptr || !ldb_dn_validate(base)) return NoName(request.base);
  return SearchAt(base, request.scope, filter, request.attributes, take);
}

StoreStatus LdbConnection::SearchAt(ldb_dn* base, SearchScope scope, const std::string& filter,
                                    std::span<const std::string> attributes,
                                    const Take& take) const {
  static_cast<void>(handle_->TakeMessage());
  const int code = SearchLdb(
      handle(), {.base = base, .scope = scope, .filter = filter, .attributes = attributes}, take);
  return OutcomeOfSearch(code);
}

StoreStatus LdbConnection::OutcomeOfSearch(int code) const {
  // A record that cannot be read looks to the library like one that is not there.
  const std::string trouble = handle_->TakeMessage();
  if (!trouble.empty()) return {kLdapOther, OneLine("the file is damaged: " + trouble)};
  return Outcome(code);
}

StoreStatus LdbConnection::Read(const std::string& dn, std::span<const std::string> attributes,
                                Entry& entry) const {
  LdbRecord record;
  StoreStatus status = ReadRecord(dn, attributes, record);
  if (status.Ok()) entry = ToEntry(*record);
  return status;
}

StoreStatus LdbConnection::ReadRecord(const std::string& dn,
                                      std::span<const std::string> attributes,
                                      LdbRecord& record) const {
  const TallocScope memory = MakeTallocScope();
  ldb_dn* const name = ldb_dn_new(memory.get(), handle(), dn.c_str());
  if (name == nullptr || !ldb_dn_validate(name)) return NoName(dn);
  return ReadAt(name, dn, attributes, record);
}

StoreStatus LdbConnection::ReadObject(const std::string& dn,
                                      std::span<const std::string> attributes,
                                      LdbRecord& record) const {
  // The library would take what stands before it for the name.
  if (dn.find('\0') != std::string::npos) return NoName(dn);
  const TallocScope memory = MakeTallocScope();
  ldb_dn* const name = ldb_dn_new(memory.get(), handle(), dn.c_str());
  if (!IsObjectName(name)) return NoName(dn);
  return ReadAt(name, dn, attributes, record);
}

StoreStatus LdbConnection::ReadAt(ldb_dn* name, const std::string& dn,
                                  std::span<const std::string> attributes,
                                  LdbRecord& record) const {
  static_cast<void>(handle_->TakeMessage());
  StoreStatus status =
      OutcomeOfSearch(ReadLdb(handle(), name, handle_->any_record(), attributes, record));
  if (status.Ok() && record == nullptr) return {kLdapNoSuchObject, "no such object: " + dn};
  return status;
}

StoreStatus LdbConnection::Add(const Entry& entry) const {
  const TallocScope scope = MakeTallocScope();
  ldb_message* const message = MakeLdbMessage(scope.get(), handle(), entry.dn);
  if (message == nullptr) return NoName(entry.dn);
  for (const auto& [name, values] : entry.attributes) AddElement(*message, 0, name, values);
  return Outcome(ldb_add(handle(), message));
}

StoreStatus LdbConnection::Replace(const std::string& dn, const AttributeMap& values) const {
  const TallocScope scope = MakeTallocScope();
  ldb_message* const message = MakeLdbMessage(scope.get(), handle(), dn);
  return message == nullptr ? NoName(dn) : SendReplacement(*message, values);
}

StoreStatus LdbConnection::Replace(const ldb_message& record, const AttributeMap& values) const {
  const TallocScope scope = MakeTallocScope();
  ldb_message* const message = ldb_msg_new(scope.get());
  if (message == nullptr) throw std::bad_alloc();
  message->dn = record.dn;
  return SendReplacement(*message, values);
}

StoreStatus LdbConnection::SendReplacement(ldb_message& message, const AttributeMap& values) const {
  for (const auto& [name, set] : values) AddElement(message, LDB_FLAG_MOD_REPLACE, name, set);
  return Outcome(ldb_modify(handle(), &message));
}

StoreStatus LdbConnection::Delete(const std::string& dn) const {
  const TallocScope scope = MakeTallocScope();
  ldb_dn* const name = ldb_dn_new(scope.get(), handle(), dn.c_str());
  if (name == nullptr) return {kLdapInvalidDnSyntax, "not a distinguished name: " + dn};
  return Outcome(ldb_delete(handle(), name));
}

StoreStatus LdbConnection::ReadSequenceNumber(std::uint64_t& number) const {
  return Outcome(ldb_sequence_number(handle(), LDB_SEQ_HIGHEST_SEQ, &number));
}

StoreStatus LdbConnection::Rename(const std::string& dn, const std::string& to) const {
  const TallocScope scope = MakeTallocScope();
  ldb_dn* const name = ldb_dn_new(scope.get(), handle(), dn.c_str());
  ldb_dn* const wanted = ldb_dn_new(scope.get(), handle(), to.c_str());
  if (name == nullptr || wanted == nullptr) throw std::bad_alloc();
  return Outcome(ldb_rename(handle(), name, wanted));
}

StoreStatus LdbConnection::BeginTransaction() const {
  return Outcome(ldb_transaction_start(handle()));
}

StoreStatus LdbConnection::CommitTransaction() const {
  static_cast<void>(handle_->TakeMessage());
  const int code = ldb_transaction_commit(handle());
  std::string trouble;
  if (code != LDB_SUCCESS) {
    StoreStatus failed = Outcome(code);
    // A failure ends it, and it has been taken back: but for one of the disk behind the last byte,
    // where the library leaves it as it is, written and to be taken back by who opens the file
    // next. It says so by beginning no other one within it.
    const int another = ldb_transaction_start(handle());
    if (another == LDB_SUCCESS) CancelTransaction();
    if (another != LDB_ERR_OTHER) return failed;
    handle_->is_stuck = true;
    trouble = std::move(failed.text);
  } else {
    // Everything is written and yet to be taken back where the record of how it was before could
    // not be struck out: the library counts that as done.
    trouble = handle_->TakeMessage();
  }
  if (trouble.empty()) return {};
  return {kLdapTimeout, OneLine("whether it was done is not known: " + trouble)};
}

bool LdbConnection::IsStuck() const { return handle_->is_stuck; }

void LdbConnection::CancelTransaction() const {
  ldb_transaction_cancel_noerr(handle());
  static_cast<void>(handle_->TakeMessage());
}

StoreStatus LdbConnection::Outcome(int code) const {
  std::string message = handle_->TakeMessage();
  if (code == LDB_SUCCESS) return {};
  const char* const reason = ldb_errstring(handle());
  std::string text = reason != nullptr ? reason : ldb_strerror(code);
  if (!message.empty() && text.find(message) == std::string::npos) text += ": " + message;
  return {code, OneLine(std::move(text))};
}

StoreStatus LdbTransaction::Begin() {
  StoreStatus status = connection_.BeginTransaction();
  is_open_ = status.Ok();
  return status;
}

StoreStatus LdbTransaction::Commit() {
  is_open_ = false;
  return connection_.CommitTransaction();
}

}  // namespace pelora::ldap
