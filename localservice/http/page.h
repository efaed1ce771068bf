#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/http/html.h"

namespace velmo::localservice {

/// A reply that shows a page to a person: the title stands in the window's frame, the content in the middle of the
/// page. No scripts, nothing from elsewhere; no other page can frame it, and its forms lead nowhere but to this
/// service and from there to Velmo.
[[nodiscard]] Reply pageReply(int status, const QString &title, const Html &content);

/// A page that says what went wrong.
[[nodiscard]] Reply faultPage(int status, const QString &sentence);

} // namespace velmo::localservice
