#pragma once

#include <QStringView>
#include <span>

namespace velmo {

/// What is said after the word "emoji", as a regular expression without capture groups that begins with a
/// letter, and the emoji it stands for.
struct EmojiName {
    QStringView name;
    QStringView emoji;
};

/// All names in the order they are tried: the specific ones ("heart eyes") before the general ones ("heart")
/// that would match their beginning.
[[nodiscard]] std::span<const EmojiName> emojiNames();

} // namespace velmo
