// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/entry_reader.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/entries_answer.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/name_filter.h"
#include "hosts/ldap/network/value_ranges.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ldap {
namespace {

/// A server compares each object that it considers with every name of the filter: longer lists cost
/// it more than they save.
constexpr std::size_t kNamesInBatch = 16;
/// What lies in one container is compared by a value, which takes a server half as long as a name.
/// For each search it looks at the list of all that lie there, however many.
constexpr std::size_t kSiblingsInBatch = 64;
/// Fewer are a search by their names, together with those that follow.
constexpr std::size_t kFewSiblings = 4;
/// A server may take a few more for the same than there are names.
constexpr std::size_t kMostAlike = 2;
/// Enough to keep a server busy that is some milliseconds away.
constexpr std::size_t kBatchesUnderWay = 24;

/// Whether the connection has failed, and not just the one request.
bool IsLost(const LdapConnection& connection, const StoreStatus& status) {
  return !status.Ok() && !connection.IsUsable();
}

/// Takes what `more` holds of an attribute; false when that is nothing.
bool Append(AttributeMap& more, const std::string& name, AttributeValues& values) {
  const auto found = more.find(name);
  if (found == more.end() || found->second.empty()) return false;
  std::ranges::move(found->second, std::back_inserter(values));
  return true;
}

}  // namespace

StoreStatus EntryReader::Send(const SearchRequest& search, PendingRequest& request) {
  LdapConnection::RequestId id = 0;
  StoreStatus status = connection_.SendSearch(search, nullptr, id);
  if (status.Ok()) request = PendingRequest(connection_, id);
  return status;
}

StoreStatus EntryReader::SendOne(const std::string& dn, std::span<const std::string> attributes,
                                 PendingRequest& request) {
  return Send({.base = dn, .attributes = {attributes.begin(), attributes.end()}}, request);
}

StoreStatus EntryReader::TakeOne(const std::string& dn, PendingRequest& request, Entry& entry) {
  std::vector<Entry> entries;
  StoreStatus outcome;
  StoreStatus status = TakeEntries(connection_, request, 1, entries, outcome);
  if (status.Ok()) status = std::move(outcome);
  if (!status.Ok()) return status;
  // What may not be seen is not there.
  if (entries.empty()) return {kLdapNoSuchObject, "no such object: " + dn};
  entry = std::move(entries.front());
  return {};
}

StoreStatus EntryReader::AwaitOne(const std::string& dn, PendingRequest& request, Entry& entry) {
  StoreStatus status = TakeOne(dn, request, entry);
  return status.Ok() ? Complete(entry) : status;
}

StoreStatus EntryReader::Read(const std::string& dn, std::span<const std::string> attributes,
                              Entry& entry) {
  entry = {};
  PendingRequest request;
  StoreStatus status = SendOne(dn, attributes, request);
  return status.Ok() ? AwaitOne(dn, request, entry) : status;
}

StoreStatus EntryReader::Complete(Entry& entry) {
  std::vector<UnfinishedAttribute> unfinished;
  if (!FileRanges(entry.attributes, 0, unfinished)) return Unreadable();
  const AnswerLimits& limits = connection_.limits();
  for (std::size_t parts = 0; !unfinished.empty(); ++parts) {
    if (parts == limits.most_parts || SizeOf(entry) > limits.most_bytes) {
      return {kLdapSizeLimitExceeded,
              "the values of '" + unfinished.back().name + "' find no end: given up"};
    }
    const UnfinishedAttribute part = unfinished.back();
    unfinished.pop_back();
    PendingRequest request;
    Entry rest;
    const std::vector<std::string> wanted = {part.Request()};
    StoreStatus status = SendOne(entry.dn, wanted, request);
    if (status.Ok()) status = TakeOne(entry.dn, request, rest);
    if (!status.Ok()) return status;
    std::vector<UnfinishedAttribute> more;
    if (!FileRanges(rest.attributes, part.next, more)) return Unreadable();
    // Values that went away meanwhile leave a part empty; nothing follows it.
    if (!Append(rest.attributes, part.name, entry.attributes[part.name])) continue;
    std::ranges::copy_if(more, std::back_inserter(unfinished),
                         [&](const auto& next) { return EqualsWithoutCase(next.name, part.name); });
  }
  return {};
}

StoreStatus EntryReader::SendBatch(std::span<const std::string> dns, const NamingContexts& contexts,
                                   Batch& batch) {
  const std::string& base = contexts.BaseOf(dns.front());
  const std::size_t siblings = base.empty() ? 0 : CountSiblings(dns, kSiblingsInBatch);
  if (siblings >= kFewSiblings) {
    batch.dns = dns.first(siblings);
    return Send({.base = std::string(ContainerOf(dns.front())),
                 .scope = SearchScope::kOneLevel,
                 .filter = FilterOfSiblings(batch.dns),
                 .attributes = {batch.attributes.begin(), batch.attributes.end()}},
                batch.request);
  }
  std::size_t count = 1;
  while (!base.empty() && count < std::min(dns.size(), kNamesInBatch) &&
         contexts.BaseOf(dns[count]) == base) {
    ++count;
  }
  batch.dns = dns.first(count);
  if (count == 1) return SendOne(dns.front(), batch.attributes, batch.request);
  return Send({.base = base,
               .scope = SearchScope::kSubtree,
               .filter = FilterOfNames(batch.dns),
               .attributes = {batch.attributes.begin(), batch.attributes.end()}},
              batch.request);
}

StoreStatus EntryReader::Finish(Batch& batch, const ReadSink& sink, bool& goes_on) {
  if (batch.dns.size() == 1) {
    Entry entry;
    StoreStatus status = AwaitOne(batch.dns.front(), batch.request, entry);
    if (IsLost(connection_, status)) return status;
    goes_on = sink(std::move(status), std::move(entry));
    return {};
  }
  // Whatever the server may have against the search: what it gave is good, and the rest is asked
  // for by itself.
  std::vector<Entry> found;
  StoreStatus outcome;
  const std::size_t most = batch.dns.size() * kMostAlike;
  StoreStatus status = TakeEntries(connection_, batch.request, most, found, outcome);
  return status.Ok() ? Deliver(batch, std::move(found), sink, goes_on) : status;
}

StoreStatus EntryReader::Deliver(const Batch& batch, std::vector<Entry> found, const ReadSink& sink,
                                 bool& goes_on) {
  const std::span<const std::string> dns = batch.dns;
  std::map<std::string, Entry> by_name;
  for (Entry& entry : found) by_name.emplace(FoldCase(entry.dn), std::move(entry));
  std::vector<Entry> entries(dns.size());
  std::vector<PendingRequest> missing(dns.size());
  std::vector<bool> is_missing(dns.size());
  // All that are missing are asked for before the first of them is awaited.
  for (std::size_t at = 0; at < dns.size(); ++at) {
    // A name that stands there twice is asked for again, like one that is spelled in another way.
    if (const auto node = by_name.extract(FoldCase(dns[at]))) {
      entries[at] = std::move(node.mapped());
      continue;
    }
    is_missing[at] = true;
    StoreStatus status = SendOne(dns[at], batch.attributes, missing[at]);
    if (!status.Ok()) return status;
  }
  for (std::size_t at = 0; goes_on && at < dns.size(); ++at) {
    StoreStatus status =
        is_missing[at] ? AwaitOne(dns[at], missing[at], entries[at]) : Complete(entries[at]);
    if (IsLost(connection_, status)) return status;
    goes_on = sink(std::move(status), std::move(entries[at]));
  }
  return {};
}

StoreStatus EntryReader::ReadMany(std::span<const std::string> dns,
                                  std::span<const std::string> attributes,
                                  const NamingContexts& contexts, const ReadSink& sink) {
  std::deque<Batch> under_way;
  bool goes_on = true;
  while (goes_on && (!dns.empty() || !under_way.empty())) {
    while (!dns.empty() && under_way.size() < kBatchesUnderWay) {
      Batch batch{.dns = {}, .attributes = attributes, .request = {}};
      StoreStatus status = SendBatch(dns, contexts, batch);
      if (!status.Ok()) return status;
      dns = dns.subspan(batch.dns.size());
      under_way.push_back(std::move(batch));
    }
    Batch batch = std::move(under_way.front());
    under_way.pop_front();
    StoreStatus status = Finish(batch, sink, goes_on);
    if (!status.Ok()) return status;
  }
  return {};
}

}  // namespace pelora::ldap
