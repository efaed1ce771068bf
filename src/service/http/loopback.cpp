#include "service/http/loopback.h"

#include <QString>
#include <arpa/inet.h>

namespace velmo {

bool isLoopbackHost(QStringView host) {
    if (host == u"localhost" || host == u"::1")
        return true;
    in_addr address{};
    constexpr in_addr_t kLoopbackNetwork = 127;
    return inet_pton(AF_INET, host.toLatin1().constData(), &address) == 1 &&
           ntohl(address.s_addr) >> 24U == kLoopbackNetwork;
}

} // namespace velmo
