#include "platform/linux/x11/insertion/selection_formats.h"

#include <QByteArrayView>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

struct Mark {
    QLatin1StringView type;
    QByteArrayView value;
};

// What clipboard managers agree on with password managers, each on their own.
constexpr std::array kMarks = {
    Mark{"x-kde-passwordManagerHint"_L1, "secret"},
    Mark{"application/x-copyq-hidden"_L1, "1"},
};

// ICCCM 2.6.2 and 2.6.3, and what freedesktop.org says of clipboard managers.
constexpr std::array<QByteArrayView, 7> kNotContents = {
    "TARGETS", "MULTIPLE", "TIMESTAMP", "DELETE", "INSERT_SELECTION", "INSERT_PROPERTY", "SAVE_TARGETS",
};

constexpr std::array<QByteArrayView, 6> kTexts = {
    "UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING", "TEXT", "COMPOUND_TEXT",
};

template <class List>
bool contains(const List &list, const QByteArray &target) {
    return std::find(list.begin(), list.end(), QByteArrayView(target)) != list.end();
}

bool isMarkType(QLatin1StringView type) {
    return std::any_of(kMarks.begin(), kMarks.end(), [type](const Mark &mark) { return mark.type == type; });
}

} // namespace

std::vector<ClipboardItem> textFormats(const QString &text) {
    const QByteArray utf8 = text.toUtf8();
    std::vector<ClipboardItem> formats = {
        {u"UTF8_STRING"_s, utf8},
        {u"text/plain;charset=utf-8"_s, utf8},
        {u"text/plain"_s, utf8},
        {u"TEXT"_s, utf8, u"UTF8_STRING"_s},
        // Latin-1 by definition (ICCCM 2.7.1); programs that know no better get what of the text there is in it.
        {u"STRING"_s, text.toLatin1()},
    };
    for (const Mark &mark : kMarks)
        formats.push_back({mark.type, mark.value.toByteArray()});
    return formats;
}

bool isMark(const ClipboardItem &item) {
    return isMarkType(QLatin1StringView(item.type.toLatin1()));
}

bool areSecret(const std::vector<ClipboardItem> &items) {
    return std::any_of(items.begin(), items.end(), [](const ClipboardItem &item) {
        return std::any_of(kMarks.begin(), kMarks.end(), [&item](const Mark &mark) {
            return item.type == mark.type && item.data == mark.value;
        });
    });
}

bool isContents(const QByteArray &target) {
    return !contains(kNotContents, target);
}

bool isReadFirst(const QByteArray &target) {
    return contains(kTexts, target) || isMarkType(QLatin1StringView(target));
}

} // namespace velmo::x11
