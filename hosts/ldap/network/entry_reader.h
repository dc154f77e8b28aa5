// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/naming_contexts.h"
#include "hosts/ldap/network/pending_request.h"

namespace pelora::ldap {

/// Reads entries over a connection: one by one, or many at once. Values that the server gives in
/// parts are put together.
class EntryReader {
 public:
  explicit EntryReader(LdapConnection& connection) : connection_(connection) {}

  /// Reads one entry with some attributes, or all when none is named.
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes, Entry& entry);

  /// As `IDirectoryStore::ReadMany`. `attributes` outlives the call. Objects of one container, or
  /// of one part of the directory, are asked for together, some dozen to a search, and several
  /// searches are under way at a time. An object that such a search does not find is asked for by
  /// itself: only then the server says why.
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const NamingContexts& contexts, const ReadSink& sink);

  /// Asks for what the server has left out of an entry that it gave in parts. Parts that do not fit
  /// together are -4: a list that was read with gaps would be written back with them. Parts without
  /// an end are given up at the connection's limits (4).
  StoreStatus Complete(Entry& entry);

 private:
  /// Names that are asked for by one search.
  struct Batch {
    std::span<const std::string> dns;
    std::span<const std::string> attributes;
    PendingRequest request;
  };

  StoreStatus Send(const SearchRequest& search, PendingRequest& request);
  StoreStatus SendOne(const std::string& dn, std::span<const std::string> attributes,
                      PendingRequest& request);
  /// The entry as the server gave it.
  StoreStatus TakeOne(const std::string& dn, PendingRequest& request, Entry& entry);
  StoreStatus AwaitOne(const std::string& dn, PendingRequest& request, Entry& entry);
  StoreStatus SendBatch(std::span<const std::string> dns, const NamingContexts& contexts,
                        Batch& batch);
  StoreStatus Finish(Batch& batch, const ReadSink& sink, bool& goes_on);
  /// Hands over the entries of a batch in the order of their names.
  StoreStatus Deliver(const Batch& batch, std::vector<Entry> found, const ReadSink& sink,
                      bool& goes_on);

  LdapConnection& connection_;
};

}  // namespace pelora::ldap
