#pragma once

#include "platform/clipboard.h"

#include <QString>
#include <vector>

namespace velmo::x11 {

/// The formats in which a text of ours is offered: the encodings programs ask for, and the marks that tell
/// clipboard managers not to keep it.
[[nodiscard]] std::vector<ClipboardItem> textFormats(const QString &text);

/// Whether the format carries the text itself, not something about it.
[[nodiscard]] bool isMark(const ClipboardItem &item);

/// Whether the contents are marked so that clipboard managers do not keep them.
[[nodiscard]] bool areSecret(const std::vector<ClipboardItem> &items);

/// Whether a target names contents; some are questions about the selection, some are orders to its owner.
[[nodiscard]] bool isContents(const QByteArray &target);

/// Whether to read a target before the others: plain text, which is what remains when the rest must be left
/// out, and the marks, without which a password would come back as something to be kept.
[[nodiscard]] bool isReadFirst(const QByteArray &target);

} // namespace velmo::x11
