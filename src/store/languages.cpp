#include "store/languages.h"

#include "store/preference_keys.h"

namespace velmo {

QString primaryLanguage(const Preferences &preferences) {
    return preferences.string(keys::primaryLanguage).value_or(QStringLiteral("no"));
}

QString selectedLanguagesText(const Preferences &preferences) {
    return preferences.string(keys::selectedLanguages).value_or(QStringLiteral("no,sv,da,fi,en"));
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
