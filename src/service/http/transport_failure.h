#pragma once

#include "service/http/http_message.h"

#include <curl/curl.h>

namespace velmo {

/// How an exchange that libcurl ended with this code (not CURLE_OK) failed, in our words.
[[nodiscard]] TransportFailure failureOf(CURLcode code);

[[nodiscard]] TransportFailure timedOut();
[[nodiscard]] TransportFailure connectionLost();
[[nodiscard]] TransportFailure invalidAddress();

} // namespace velmo
