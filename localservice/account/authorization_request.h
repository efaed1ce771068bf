#pragma once

#include "base/result.h"
#include "localservice/http/endpoint.h"
#include "localservice/http/form_fields.h"

namespace velmo::localservice {

/// Where the sign-in page sends what it has found out, as an identity provider does.
inline constexpr QLatin1StringView kCallbackPath{"/api/auth/apple/callback"};

/// What a client asks the sign-in page for. Everything but the state has one value that is taken.
struct AuthorizationRequest {
    QString redirectUri; ///< This service's own callback.
    QString state;       ///< The client's own, given back to it.
};

/// Reads "client_id", "redirect_uri", "response_type", "scope", "response_mode" and "state". `host` is the request's own
/// Host header: the port of the callback has to be its port, and its host one of this machine's loopback names. The
/// failure is a sentence that names the field at fault.
[[nodiscard]] Result<AuthorizationRequest, QString> readAuthorizationRequest(const FormFields &fields,
                                                                             const QString &host);

/// The fields of such a request, in the order in which clients send them.
[[nodiscard]] std::vector<std::pair<QString, QString>> fieldsOf(const AuthorizationRequest &request);

/// Refuses a form that another page than ours has sent: a browser says so with the header Origin.
[[nodiscard]] std::optional<QString> faultInSender(const Request &request);

} // namespace velmo::localservice
