// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/sealed_wire.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "hosts/ldap/wipe.h"

namespace pelora::ldap {
namespace {

using Protection = KerberosContext::Protection;

constexpr std::size_t kLengthSize = 4;

std::string LengthOf(std::size_t size) {
  std::string length;
  for (unsigned shift = 32; shift > 0; shift -= 8) {
    length += static_cast<char>(size >> (shift - 8) & 0xFFU);
  }
  return length;
}

ber_slen_t Fail(int error) {
  errno = error;
  return -1;
}

}  // namespace

SealedWire::SealedWire(std::unique_ptr<KerberosContext> context, std::size_t most_sent)
    : context_(std::move(context)), most_plain_(context_->MostPlain(most_sent)) {}

std::size_t SealedWire::PacketSize() const {
  if (packet_.size() < kLengthSize) return kLengthSize;
  std::size_t size = 0;
  for (std::size_t at = 0; at < kLengthSize; ++at) {
    size = size << 8U | static_cast<unsigned char>(packet_[at]);
  }
  return size > kMostReceived ? 0 : kLengthSize + size;
}

bool SealedWire::Open() {
  const bool is_open =
      context_->Unwrap(std::string_view(packet_).substr(kLengthSize), Protection::kSealed, plain_);
  packet_.clear();
  taken_ = 0;
  return is_open;
}

ber_slen_t SealedWire::Receive(const Read& read, char* bytes, std::size_t size) {
  while (!HasReceived()) {
    const std::size_t whole = PacketSize();
    if (whole == 0) return Fail(EPROTO);
    const std::size_t before = packet_.size();
    if (before < whole) {
      packet_.resize(whole);
      const ber_slen_t count = read(packet_.data() + before, whole - before);
      packet_.resize(before + static_cast<std::size_t>(std::max<ber_slen_t>(0, count)));
      if (count <= 0) return count;
    }
    if (packet_.size() < kLengthSize || packet_.size() != PacketSize()) continue;
    if (!Open()) return Fail(EPROTO);
    // One that holds nothing gives whoever waits the chance to stop.
    if (plain_.empty()) return Fail(EAGAIN);
  }
  const std::size_t count = std::min(size, plain_.size() - taken_);
  std::copy_n(plain_.data() + taken_, count, bytes);
  taken_ += count;
  return static_cast<ber_slen_t>(count);
}

bool SealedWire::Seal(const char* bytes, std::size_t size) {
  sealed_.assign(bytes, std::min(size, most_plain_));
  sent_ = 0;
  std::string wrapped;
  if (sealed_.empty() || !context_->Wrap(sealed_, Protection::kSealed, wrapped)) return false;
  outgoing_ = LengthOf(wrapped.size()) + wrapped;
  return true;
}

ber_slen_t SealedWire::Send(const Write& write, const char* bytes, std::size_t size) {
  if (outgoing_.empty()) {
    if (!Seal(bytes, size)) return Fail(EPROTO);
  } else if (!std::string_view(bytes, size).starts_with(sealed_)) {
    // What is under way is in the middle of another message.
    return Fail(EPROTO);
  }
  while (sent_ < outgoing_.size()) {
    const ber_slen_t count = write(outgoing_.data() + sent_, outgoing_.size() - sent_);
    if (count == 0) return Fail(EAGAIN);
    if (count < 0) return count;
    sent_ += static_cast<std::size_t>(count);
  }
  outgoing_.clear();
  const auto count = static_cast<ber_slen_t>(sealed_.size());
  // It may have been a password.
  Wipe(sealed_);
  return count;
}

namespace {

SealedWire& WireOf(Sockbuf_IO_Desc* layer) { return *static_cast<SealedWire*>(layer->sbiod_pvt); }

int Setup(Sockbuf_IO_Desc* layer, void* wire) {
  layer->sbiod_pvt = wire;
  return 0;
}

int Remove(Sockbuf_IO_Desc* layer) {
  const std::unique_ptr<SealedWire> ended(&WireOf(layer));
  layer->sbiod_pvt = nullptr;
  return 0;
}

int Control(Sockbuf_IO_Desc* layer, int option, void* argument) {
  if (option == LBER_SB_OPT_DATA_READY && WireOf(layer).HasReceived()) return 1;
  return LBER_SBIOD_CTRL_NEXT(layer, option, argument);
}

ber_slen_t ReadSealed(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size) {
  try {
    const auto read = [&](char* to, std::size_t count) {
      return LBER_SBIOD_READ_NEXT(layer, to, count);
    };
    return WireOf(layer).Receive(read, static_cast<char*>(bytes), size);
  } catch (const std::bad_alloc&) {
    return Fail(ENOMEM);
  }
}

ber_slen_t WriteSealed(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size) {
  try {
    const auto write = [&](const char* from, std::size_t count) {
      return LBER_SBIOD_WRITE_NEXT(layer, const_cast<char*>(from), count);
    };
    return WireOf(layer).Send(write, static_cast<const char*>(bytes), size);
  } catch (const std::bad_alloc&) {
    return Fail(ENOMEM);
  }
}

int Close(Sockbuf_IO_Desc* /*layer*/) { return 0; }

/// The library keeps its address and asks for it without `const`.
constinit Sockbuf_IO kLayer{.sbi_setup = Setup,
                            .sbi_remove = Remove,
                            .sbi_ctrl = Control,
                            .sbi_read = ReadSealed,
                            .sbi_write = WriteSealed,
                            .sbi_close = Close};

}  // namespace

bool InstallWire(Sockbuf* socket, std::unique_ptr<SealedWire> wire) {
  if (ber_sockbuf_add_io(socket, &kLayer, LBER_SBIOD_LEVEL_APPLICATION, wire.get()) != 0) {
    return false;
  }
  // The library gives it back by `Remove`.
  static_cast<void>(wire.release());
  return true;
}

}  // namespace pelora::ldap
