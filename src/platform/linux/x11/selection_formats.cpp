#include "platform/linux/x11/selection_formats.h"

#include <QByteArrayView>
#include <algorithm>
#include <array>

namespace velmo::x11 {

namespace {

// A convention between clipboard managers and password managers.
constexpr QLatin1StringView kMark("x-kde-passwordManagerHint");
constexpr QByteArrayView kSecret("secret");

// ICCCM 2.6.2 and 2.6.3, and what freedesktop.org says of clipboard managers.
constexpr std::array<QByteArrayView, 7> kNotContents = {
    "TARGETS", "MULTIPLE", "TIMESTAMP", "DELETE", "INSERT_SELECTION", "INSERT_PROPERTY", "SAVE_TARGETS",
};

constexpr std::array<QByteArrayView, 7> kReadFirst = {
    "UTF8_STRING",   "text/plain;charset=utf-8",  "text/plain", "STRING", "TEXT",
    "COMPOUND_TEXT", "x-kde-passwordManagerHint",
};

template <class List>
bool contains(const List &list, const QByteArray &target) {
    return std::find(list.begin(), list.end(), QByteArrayView(target)) != list.end();
}

} // namespace

std::vector<ClipboardItem> textFormats(const QString &text) {
    const QByteArray utf8 = text.toUtf8();
    return {
        {QStringLiteral("UTF8_STRING"), utf8},
        {QStringLiteral("text/plain;charset=utf-8"), utf8},
        {QStringLiteral("text/plain"), utf8},
        {QStringLiteral("TEXT"), utf8, QStringLiteral("UTF8_STRING")},
        // Latin-1 by definition (ICCCM 2.7.1); programs that know no better get what of the text there is in it.
        {QStringLiteral("STRING"), text.toLatin1()},
        {kMark, kSecret.toByteArray()},
    };
}

bool isMark(const ClipboardItem &item) {
    return item.type == kMark;
}

bool areSecret(const std::vector<ClipboardItem> &items) {
    return std::any_of(items.begin(), items.end(),
                       [](const ClipboardItem &item) { return isMark(item) && item.data == kSecret; });
}

bool isContents(const QByteArray &target) {
    return !contains(kNotContents, target);
}

bool isReadFirst(const QByteArray &target) {
    return contains(kReadFirst, target);
}

} // namespace velmo::x11
