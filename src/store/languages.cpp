#include "store/languages.h"

#include "store/preference_keys.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct OfferedLanguage {
    QLatin1StringView code;
    const char *name;
};

constexpr OfferedLanguage kOffered[] = {
    {"no"_L1, QT_TRANSLATE_NOOP("Languages", "Norwegian")},
    {"sv"_L1, QT_TRANSLATE_NOOP("Languages", "Swedish")},
    {"da"_L1, QT_TRANSLATE_NOOP("Languages", "Danish")},
    {"fi"_L1, QT_TRANSLATE_NOOP("Languages", "Finnish")},
    {"en"_L1, QT_TRANSLATE_NOOP("Languages", "English")},
};

} // namespace

QList<Language> offeredLanguages() {
    QList<Language> languages;
    for (const OfferedLanguage &language : kOffered)
        languages.append({language.code, QCoreApplication::translate("Languages", language.name)});
    return languages;
}

QString languageName(const QString &code) {
    for (const OfferedLanguage &language : kOffered) {
        if (code == language.code)
            return QCoreApplication::translate("Languages", language.name);
    }
    return code;
}

QString primaryLanguage(const Preferences &preferences) {
    return preferences.string(keys::primaryLanguage).value_or(u"no"_s);
}

void choosePrimaryLanguage(Preferences &preferences, const QStringList &desktopLanguages) {
    if (preferences.value(keys::primaryLanguage))
        return;
    for (const QString &desktopLanguage : desktopLanguages) {
        const QString spoken = desktopLanguage.section(u'-', 0, 0);
        const bool isNorwegian = spoken == u"nb" || spoken == u"nn";
        const QString code = isNorwegian ? u"no"_s : spoken;
        if (std::ranges::find(kOffered, code, &OfferedLanguage::code) != std::end(kOffered)) {
            preferences.set(keys::primaryLanguage, code);
            return;
        }
    }
}

QString selectedLanguagesText(const Preferences &preferences) {
    return preferences.string(keys::selectedLanguages).value_or(defaultSelectedLanguages);
}

QStringList languageCodes(const QString &selectedLanguages) {
    const auto isSpaceOrTab = [](QChar character) { return character == u' ' || character == u'\t'; };
    QStringList codes;
    const auto pieces = QStringView(selectedLanguages).split(u',');
    codes.reserve(pieces.size());
    for (QStringView piece : pieces) {
        while (!piece.isEmpty() && isSpaceOrTab(piece.front()))
            piece = piece.sliced(1);
        while (!piece.isEmpty() && isSpaceOrTab(piece.back()))
            piece.chop(1);
        codes.append(piece.toString());
    }
    return codes;
}

} // namespace velmo
