// SPDX-License-Identifier: Apache-2.0
// A network for a domain of the lab where the system gives it none of its own. It is
// loaded before the C library into every program of the lab (run_in_lab.sh), and it needs no
// rights.
//
// Servers' ports, those below 10000, are found 20000 higher on an address of this machine that
// nobody else uses: PELORA_LAB_ADDRESS, of 127.0.0.0/8. Ports that the system hands out stay as
// they are. Names are those of the file PELORA_LAB_HOSTS, which is written like /etc/hosts, and no
// others; service records are asked of the domain's own server.
#include <arpa/inet.h>
#include <dlfcn.h>
#include <netdb.h>
#include <netinet/in.h>
#include <resolv.h>
#include <strings.h>
#include <sys/socket.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

constexpr std::uint16_t kFirstOrdinaryPort = 10'000;
constexpr std::uint16_t kDistance = 20'000;
constexpr std::uint16_t kNameServerPort = 53;

/// The function that this library stands before.
template <typename Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

const char* Setting(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

in_addr LabAddress() {
  in_addr address{htonl(INADDR_LOOPBACK)};
  inet_pton(AF_INET, Setting("PELORA_LAB_ADDRESS"), &address);
  return address;
}

/// An address of a caller's, and the one that stands for it.
class Address {
 public:
  Address(const sockaddr* address, socklen_t size) : address_(address), size_(size) {
    if (address == nullptr || size < sizeof(sockaddr_in) || address->sa_family != AF_INET) return;
    std::memcpy(&internet_, address, sizeof internet_);
    const std::uint32_t host = ntohl(internet_.sin_addr.s_addr);
    const std::uint16_t port = ntohs(internet_.sin_port);
    const bool is_here = host >> 24U == IN_LOOPBACKNET || host == INADDR_ANY;
    if (!is_here || port == 0 || port >= kFirstOrdinaryPort) return;
    internet_.sin_addr = LabAddress();
    internet_.sin_port = htons(static_cast<std::uint16_t>(port + kDistance));
    address_ = reinterpret_cast<const sockaddr*>(&internet_);
    size_ = sizeof internet_;
  }
  Address(const Address&) = delete;
  Address& operator=(const Address&) = delete;
  ~Address() = default;

  [[nodiscard]] const sockaddr* get() const { return address_; }
  [[nodiscard]] socklen_t size() const { return size_; }

 private:
  sockaddr_in internet_{};
  const sockaddr* address_;
  socklen_t size_;
};

/// A line of the file of names.
struct Host {
  std::string address;
  /// The first of its names.
  std::string name;
};

/// The first line that has the address, or the name whatever its case.
Host FindHost(const char* sought) {
  std::ifstream file(Setting("PELORA_LAB_HOSTS"));
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    Host host;
    words >> host.address >> host.name;
    if (host.address == sought) return host;
    for (std::string name = host.name; words; words >> name) {
      if (strcasecmp(name.c_str(), sought) == 0) return host;
    }
  }
  return {};
}

bool IsNumber(const char* name) {
  in6_addr address{};
  return inet_pton(AF_INET, name, &address) == 1 || std::strchr(name, ':') != nullptr;
}

}  // namespace

extern "C" {

int bind(int socket, const sockaddr* address, socklen_t size) {
  const Address there(address, size);
  return Next<decltype(bind)>("bind")(socket, there.get(), there.size());
}

int connect(int socket, const sockaddr* address, socklen_t size) {
  const Address there(address, size);
  return Next<decltype(connect)>("connect")(socket, there.get(), there.size());
}

// The server tells by the port on which it is asked whether the whole forest is meant.
int getsockname(int socket, sockaddr* address, socklen_t* size) {
  const socklen_t room = address != nullptr && size != nullptr ? *size : 0;
  const int code = Next<decltype(getsockname)>("getsockname")(socket, address, size);
  sockaddr_in own{};
  if (code != 0 || room < sizeof own || address->sa_family != AF_INET) return code;
  std::memcpy(&own, address, sizeof own);
  const std::uint16_t port = ntohs(own.sin_port);
  const bool is_servers = own.sin_addr.s_addr == LabAddress().s_addr && port >= kDistance &&
                          port < kDistance + kFirstOrdinaryPort;
  if (!is_servers) return code;
  own.sin_port = htons(static_cast<std::uint16_t>(port - kDistance));
  std::memcpy(address, &own, sizeof own);
  return code;
}

ssize_t sendto(int socket, const void* bytes, size_t count, int flags, const sockaddr* address,
               socklen_t size) {
  const Address there(address, size);
  return Next<decltype(sendto)>("sendto")(socket, bytes, count, flags, there.get(), there.size());
}

int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
  auto* const next = Next<decltype(getaddrinfo)>("getaddrinfo");
  if (name == nullptr || IsNumber(name)) return next(name, service, hints, found);
  const Host host = FindHost(name);
  if (host.address.empty()) return EAI_NONAME;
  addrinfo wanted = hints != nullptr ? *hints : addrinfo{};
  const bool wants_name = (wanted.ai_flags & AI_CANONNAME) != 0;
  wanted.ai_flags &= ~(AI_CANONNAME | AI_ADDRCONFIG);
  wanted.ai_flags |= AI_NUMERICHOST;
  const int code = next(host.address.c_str(), service, &wanted, found);
  if (code == 0 && wants_name) (*found)->ai_canonname = strdup(host.name.c_str());
  return code;
}

int getnameinfo(const sockaddr* address, socklen_t size, char* name, socklen_t name_size,
                char* service, socklen_t service_size, int flags) {
  const int code = Next<decltype(getnameinfo)>("getnameinfo")(
      address, size, name, name_size, service, service_size, flags | NI_NUMERICHOST);
  if (code != 0 || name == nullptr || (flags & NI_NUMERICHOST) != 0) return code;
  const Host host = FindHost(name);
  if (host.name.empty()) return (flags & NI_NAMEREQD) != 0 ? EAI_NONAME : 0;
  if (host.name.size() >= name_size) return EAI_OVERFLOW;
  std::memcpy(name, host.name.c_str(), host.name.size() + 1);
  return 0;
}

// The C library asks the name server by functions of its own, so it is told where that is.
int res_ninit(res_state state) {
  const int code = Next<int(res_state)>("__res_ninit")(state);
  sockaddr_in server{};
  server.sin_family = AF_INET;
  server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  server.sin_port = htons(kNameServerPort);
  const Address there(reinterpret_cast<const sockaddr*>(&server), sizeof server);
  std::memcpy(state->nsaddr_list, there.get(), sizeof server);
  state->nscount = 1;
  return code;
}

}  // extern "C"
