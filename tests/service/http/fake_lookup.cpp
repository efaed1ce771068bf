#include "service/http/fake_lookup.h"

#include <dlfcn.h>
#include <latch>
#include <netdb.h>
#include <string_view>

namespace velmo::testing {

namespace {

std::latch &slowLookups() {
    static std::latch latch(1);
    return latch;
}

} // namespace

void endSlowLookups() {
    slowLookups().count_down();
}

} // namespace velmo::testing

extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *req, addrinfo **pai) {
    const std::string_view host(name == nullptr ? "" : name);
    if (host == "slow.velmo.example") {
        velmo::testing::slowLookups().wait();
        return EAI_NONAME;
    }
    using Lookup = decltype(&getaddrinfo);
    static const auto next = reinterpret_cast<Lookup>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(host == "here.velmo.example" ? "127.0.0.1" : name, service, req, pai);
}
