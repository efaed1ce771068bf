#pragma once

#include "base/result.h"

#include <QString>
#include <optional>

namespace velmo {

/// The parts of a person's name, each where the identity provider told it.
struct FullName {
    std::optional<QString> givenName;
    std::optional<QString> familyName;

    bool operator==(const FullName &) const = default;
};

/// What the authorisation page sends back.
struct SignInCallback {
    QString idToken;
    std::optional<FullName> fullName; ///< With one part at least.
};

enum class CallbackProblem {
    Unparseable,    ///< It is no address.
    MissingIdToken, ///< Or it answers another attempt.
};

/// Reads the address the page led to: "velmo://…?id_token=…&state=…&user={"name":{"firstName":…}}". One whose "state"
/// is there and is not the attempt's is as good as one without a token.
[[nodiscard]] Result<SignInCallback, CallbackProblem> readCallback(const QString &address,
                                                                   const QString &state);

} // namespace velmo
