#pragma once

#include "localservice/account/authorization_request.h"

#include <optional>

namespace velmo::localservice {

/// What a person enters on the sign-in page, without white space at the ends.
struct SignInEntry {
    QString email;
    QString givenName;
    QString familyName;
};

/// A sentence beside each field that is to be mended.
struct SignInFaults {
    std::optional<QString> email;
    std::optional<QString> givenName;
    std::optional<QString> familyName;

    [[nodiscard]] bool isEmpty() const { return !email && !givenName && !familyName; }
};

[[nodiscard]] SignInEntry signInEntry(const FormFields &fields);

/// What can be told wrong from the entry alone.
[[nodiscard]] SignInFaults faultsIn(const SignInEntry &entry);

/// The fault of an entry that would begin an account without a name.
[[nodiscard]] SignInFaults missingName();

/// The page with the form; with faults it is shown again, with what was entered.
[[nodiscard]] Reply signInForm(const AuthorizationRequest &request, const SignInEntry &entry,
                               const SignInFaults &faults);

/// What goes back to the client when somebody has signed in.
struct SignInAnswer {
    QString idToken;
    QString state;
    QString user; ///< {"name":{"firstName","lastName"}}; empty where nothing new is known.
};

/// The page that sends the answer to the callback when its button is pressed. A press, rather than a redirect or a
/// script, is what browsers want to see before they open another program.
[[nodiscard]] Reply continuePage(const SignInAnswer &answer, const QString &email);

} // namespace velmo::localservice
