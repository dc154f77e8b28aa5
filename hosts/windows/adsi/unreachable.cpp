// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/adsi/unreachable.h"

#include <algorithm>
#include <array>

#include "hosts/windows/system_headers.h"

namespace pelora::windows {
namespace {

constexpr auto kErrors = std::to_array<DWORD>({
    ERROR_BAD_NETPATH,
    ERROR_NETNAME_DELETED,
    ERROR_SEM_TIMEOUT,
    ERROR_CONNECTION_REFUSED,
    ERROR_NETWORK_UNREACHABLE,
    ERROR_HOST_UNREACHABLE,
    ERROR_CONNECTION_ABORTED,
    ERROR_NO_SUCH_DOMAIN,
    ERROR_TIMEOUT,
    RPC_S_SERVER_UNAVAILABLE,
    ERROR_DOMAIN_CONTROLLER_NOT_FOUND,
    ERROR_DS_BUSY,
    ERROR_DS_UNAVAILABLE,
    ERROR_DS_TIMELIMIT_EXCEEDED,
    ERROR_DS_SERVER_DOWN,
    WSAETIMEDOUT,
    WSAECONNRESET,
});

}  // namespace

bool SaysUnreachable(HRESULT status) {
  return std::ranges::any_of(kErrors,
                             [status](DWORD error) { return status == HRESULT_FROM_WIN32(error); });
}

}  // namespace pelora::windows
