#pragma once

#include "base/interface.h"
#include "platform/display_client.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace velmo {

/// One of the formats in which the clipboard's contents are offered. The fields beside type and data mean
/// nothing to anyone but the back-end that filled them: they let it offer the very same again.
struct ClipboardItem {
    QString type; ///< As its owner names it: "text/html", "image/png", "UTF8_STRING".
    QByteArray data;
    QString dataType = {}; ///< What the owner said the data are, where that differs from `type`; else empty.
    int unitBits = 8;      ///< Size of the data's units: 8, 16 or 32, in the order of bytes of this machine.

    friend bool operator==(const ClipboardItem &, const ClipboardItem &) = default;
};

/// How much of another program's clipboard is kept at most. Measured: a frozen owner would otherwise hold an
/// insertion up without end, and ordinary ones offer everything within a few milliseconds.
struct ClipboardSaveLimits {
    std::chrono::milliseconds time{200};
    qint64 bytes = qint64{64} << 20;
};

/// A place from which people paste: the clipboard, or the primary selection where the desktop has one.
///
/// Called on the main thread; no call waits. Each answer comes once, each event as often as it happens, as a
/// task of the main queue, in the order in which things happened on the display.
class Clipboard : public Interface {
public:
    /// Grows with every change by anyone; equal counts mean that nothing changed in between.
    using ChangeCount = quint64;

    struct Saved {
        std::vector<ClipboardItem> items; ///< In the order of the offer; empty when nothing was there.
        ChangeCount changeCount = 0;
    };

    /// The change count right after our change, or nothing when none was made.
    using Changed = std::function<void(std::optional<ChangeCount>)>;

    /// What happens to a text of ours while it is offered.
    struct TextEvents {
        std::function<void(DisplayClient)> read; ///< This program has taken in the whole text.
        std::function<void()> lost;              ///< Somebody else has put something in its place.
    };

    /// Reads every offered format, within the limits: plain text first, so that it is what remains when the
    /// rest must be left out (with a log line).
    virtual void save(std::function<void(Saved)> done) = 0;

    /// Offers the text in place of what is there, marked so that clipboard managers do not keep it; unless the
    /// change count is no longer `expected`.
    virtual void setText(ChangeCount expected, const QString &text, TextEvents events, Changed done) = 0;

    /// Offers saved contents again, or nothing when there are none; unless the change count is no longer
    /// `expected`.
    virtual void setItems(ChangeCount expected, std::vector<ClipboardItem> items, Changed done) = 0;

    /// What a program offers is gone when it ends. This asks the desktop's clipboard manager to keep what we
    /// offer; done comes once it has, or at once where there is no manager or nothing of ours, or after a
    /// second. Contents marked as secret are never handed over.
    virtual void handOver(std::function<void()> done) = 0;
};

} // namespace velmo
