#include "store/languages.h"

#include "store/preference_keys.h"

#include <QCoreApplication>

namespace velmo {

namespace {

struct OfferedLanguage {
    QLatin1StringView code;
    const char *name;
};

constexpr OfferedLanguage kOffered[] = {
    {QLatin1StringView("no"), QT_TRANSLATE_NOOP("Languages", "Norwegian")},
    {QLatin1StringView("sv"), QT_TRANSLATE_NOOP("Languages", "Swedish")},
    {QLatin1StringView("da"), QT_TRANSLATE_NOOP("Languages", "Danish")},
    {QLatin1StringView("fi"), QT_TRANSLATE_NOOP("Languages", "Finnish")},
    {QLatin1StringView("en"), QT_TRANSLATE_NOOP("Languages", "English")},
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
    return preferences.string(keys::primaryLanguage).value_or(QStringLiteral("no"));
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
