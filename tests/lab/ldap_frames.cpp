// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/ldap_frames.h"

#include <lber.h>
#include <ldap.h>

#include <memory>
#include <stdexcept>

namespace pelora::lab {
namespace {

using Kind = StandInRequest::Kind;

struct BerFree {
  void operator()(BerElement* element) const { ber_free(element, 1); }
};
using BerPtr = std::unique_ptr<BerElement, BerFree>;

[[noreturn]] void Unreadable() { throw std::runtime_error("the stand-in cannot read a request"); }

std::string Text(const berval& value) { return {value.bv_val, value.bv_len}; }

std::string TakeText(BerElement* element) {
  berval value{};
  if (ber_scanf(element, "m", &value) == LBER_ERROR) Unreadable();
  return Text(value);
}

/// The names of a filter that is a list of equalities, of whole names or of what names an object
/// right below `base`; others are passed over.
std::vector<std::string> TakeNames(BerElement* element, const std::string& base) {
  std::vector<std::string> names;
  ber_len_t length = 0;
  if (ber_peek_tag(element, &length) != LDAP_FILTER_OR) {
    if (ber_scanf(element, "x") == LBER_ERROR) Unreadable();
    return names;
  }
  char* last = nullptr;
  for (ber_tag_t tag = ber_first_element(element, &length, &last); tag != LBER_DEFAULT;
       tag = ber_next_element(element, &length, last)) {
    berval attribute{};
    berval value{};
    if (ber_scanf(element, "{mm}", &attribute, &value) == LBER_ERROR) Unreadable();
    const bool is_whole = Text(attribute) == "distinguishedName";
    names.push_back(is_whole ? Text(value) : Text(attribute) + "=" + Text(value) + "," + base);
  }
  return names;
}

void ReadSearch(BerElement* element, StandInRequest& request) {
  berval base{};
  ber_int_t scope = 0;
  ber_int_t number = 0;
  if (ber_scanf(element, "{meeiib", &base, &scope, &number, &number, &number, &number) ==
      LBER_ERROR) {
    Unreadable();
  }
  request.dn = Text(base);
  request.goes_below = scope != LDAP_SCOPE_BASE;
  request.names = TakeNames(element, request.dn);
  ber_len_t length = 0;
  char* last = nullptr;
  for (ber_tag_t tag = ber_first_element(element, &length, &last); tag != LBER_DEFAULT;
       tag = ber_next_element(element, &length, last)) {
    request.attributes.push_back(TakeText(element));
  }
}

void ReadBind(BerElement* element, StandInRequest& request) {
  ber_int_t version = 0;
  berval name{};
  ber_len_t length = 0;
  if (ber_scanf(element, "{im", &version, &name) == LBER_ERROR) Unreadable();
  if (ber_peek_tag(element, &length) != LDAP_AUTH_SASL) return;
  if (ber_scanf(element, "{") == LBER_ERROR) Unreadable();
  request.mechanism = TakeText(element);
  if (ber_peek_tag(element, &length) == LBER_OCTETSTRING) request.token = TakeText(element);
}

void ReadOperation(BerElement* element, StandInRequest& request) {
  ber_len_t length = 0;
  switch (ber_peek_tag(element, &length)) {
    case LDAP_REQ_BIND:
      request.kind = Kind::kBind;
      return ReadBind(element, request);
    case LDAP_REQ_SEARCH:
      request.kind = Kind::kSearch;
      return ReadSearch(element, request);
    case LDAP_REQ_MODIFY:
    case LDAP_REQ_ADD:
      request.kind = ber_peek_tag(element, &length) == LDAP_REQ_ADD ? Kind::kAdd : Kind::kModify;
      if (ber_scanf(element, "{") == LBER_ERROR) Unreadable();
      request.dn = TakeText(element);
      return;
    case LDAP_REQ_DELETE:
      request.kind = Kind::kDelete;
      request.dn = TakeText(element);
      return;
    case LDAP_REQ_UNBIND:
      request.kind = Kind::kUnbind;
      return;
    default:
      return;
  }
}

BerPtr NewMessage() {
  BerPtr element(ber_alloc_t(LBER_USE_DER));
  if (element == nullptr) throw std::bad_alloc();
  return element;
}

std::string Flattened(const BerPtr& element) {
  berval bytes{};
  if (ber_flatten2(element.get(), &bytes, 0) != 0) throw std::bad_alloc();
  return Text(bytes);
}

berval Borrowed(const std::string& text) {
  return {.bv_len = text.size(), .bv_val = const_cast<char*>(text.data())};
}

/// Stands before the controls of a message.
constexpr ber_tag_t kControls = 0xA0;

ber_tag_t AnswerTo(Kind kind) {
  switch (kind) {
    case Kind::kSearch:
      return LDAP_RES_SEARCH_RESULT;
    case Kind::kModify:
      return LDAP_RES_MODIFY;
    case Kind::kAdd:
      return LDAP_RES_ADD;
    case Kind::kDelete:
      return LDAP_RES_DELETE;
    default:
      return LDAP_RES_BIND;
  }
}

}  // namespace

std::optional<StandInRequest> TakeRequest(std::string& bytes) {
  // A tag, and a length of one byte or of as many as its first one says.
  if (bytes.size() < 2) return std::nullopt;
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  std::size_t head = 2;
  std::size_t length = byte(1);
  if (length > 0x80) {
    head += length - 0x80;
    if (bytes.size() < head) return std::nullopt;
    length = 0;
    for (std::size_t at = 2; at < head; ++at) length = length * 256 + byte(at);
  }
  if (bytes.size() < head + length) return std::nullopt;
  const std::string frame = bytes.substr(0, head + length);
  bytes.erase(0, frame.size());

  berval whole = Borrowed(frame);
  const BerPtr element(ber_init(&whole));
  StandInRequest request;
  ber_int_t id = 0;
  if (element == nullptr || ber_scanf(element.get(), "{i", &id) == LBER_ERROR) Unreadable();
  request.id = id;
  ReadOperation(element.get(), request);
  request.is_page = frame.find(LDAP_CONTROL_PAGEDRESULTS) != std::string::npos;
  return request;
}

std::string EntryMessage(int id, const StandInEntry& entry) {
  const BerPtr message = NewMessage();
  const berval dn = Borrowed(entry.dn);
  ber_printf(message.get(), "{it{O{", id, LDAP_RES_SEARCH_ENTRY, &dn);
  for (const auto& [name, values] : entry.attributes) {
    const berval attribute = Borrowed(name);
    ber_printf(message.get(), "{O[", &attribute);
    for (const std::string& text : values) {
      const berval value = Borrowed(text);
      ber_printf(message.get(), "O", &value);
    }
    ber_printf(message.get(), "]N}");
  }
  ber_printf(message.get(), "N}N}N}");
  return Flattened(message);
}

std::string ReferenceMessage(int id, const std::string& uri) {
  const BerPtr message = NewMessage();
  const berval value = Borrowed(uri);
  ber_printf(message.get(), "{it{O}N}", id, LDAP_RES_SEARCH_REFERENCE, &value);
  return Flattened(message);
}

std::string ResultMessage(const StandInRequest& request, int code, const std::string& text,
                          const std::string& page, const std::vector<std::string>& referral) {
  const BerPtr message = NewMessage();
  const berval value = Borrowed(text);
  ber_printf(message.get(), "{it{esO", request.id, AnswerTo(request.kind), code, "", &value);
  if (!referral.empty()) {
    ber_printf(message.get(), "t{", LDAP_TAG_REFERRAL);
    for (const std::string& address : referral) {
      const berval bytes = Borrowed(address);
      ber_printf(message.get(), "O", &bytes);
    }
    ber_printf(message.get(), "N}");
  }
  ber_printf(message.get(), "N}");
  if (!page.empty()) {
    const BerPtr mark = NewMessage();
    const berval cookie = Borrowed(page);
    ber_printf(mark.get(), "{iO}", 0, &cookie);
    const std::string bytes = Flattened(mark);
    const berval control = Borrowed(bytes);
    ber_printf(message.get(), "t{{sON}N}", kControls, LDAP_CONTROL_PAGEDRESULTS, &control);
  }
  ber_printf(message.get(), "N}");
  return Flattened(message);
}

std::string GoodByeMessage(int code, const std::string& text) {
  const BerPtr message = NewMessage();
  const berval why = Borrowed(text);
  const std::string notice = LDAP_NOTICE_OF_DISCONNECTION;
  const berval name = Borrowed(notice);
  ber_printf(message.get(), "{it{esOtON}N}", LDAP_RES_UNSOLICITED, LDAP_RES_EXTENDED, code, "",
             &why, LDAP_TAG_EXOP_RES_OID, &name);
  return Flattened(message);
}

std::string BindMessage(int id, int code, const std::string& token) {
  const BerPtr message = NewMessage();
  const berval value = Borrowed(token);
  if (token.empty()) {
    ber_printf(message.get(), "{it{ess}N}", id, LDAP_RES_BIND, code, "", "");
  } else {
    ber_printf(message.get(), "{it{esstO}N}", id, LDAP_RES_BIND, code, "", "",
               LDAP_TAG_SASL_RES_CREDS, &value);
  }
  return Flattened(message);
}

}  // namespace pelora::lab
