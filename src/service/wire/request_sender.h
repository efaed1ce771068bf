#pragma once

#include <QString>
#include <optional>

namespace velmo {

class Preferences;
class TokenSource;

/// What a request says of who sends it.
struct RequestSender {
    std::optional<QString> token;    ///< Of the session; absent when nobody is signed in.
    std::optional<QString> deviceId; ///< Of the installation.
    QString selectedMode;            ///< The stored mode's identifier, "accurate" when none is stored.
};

/// The sender of an upload. The first upload of an installation makes its device identifier (a lower-case
/// UUID), which from then on stays. May wait for keychain and disk: not on the main thread.
[[nodiscard]] RequestSender senderOfUpload(TokenSource &tokens, Preferences &preferences);

/// The sender of text: the device identifier as it is stored, none before the first upload. May wait: not on
/// the main thread.
[[nodiscard]] RequestSender senderOfText(TokenSource &tokens, const Preferences &preferences);

} // namespace velmo
