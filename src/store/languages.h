#pragma once

#include "store/preferences.h"

#include <QStringList>
#include <qobjectdefs.h>

namespace velmo {

/// A language people can choose to dictate in.
struct Language {
    Q_GADGET
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString name MEMBER name)

public:
    QString code; ///< "no"
    QString name; ///< For people, in the language of the interface: "Norwegian".
};

/// The languages on offer, in the order of the settings page: no, sv, da, fi, en.
[[nodiscard]] QList<Language> offeredLanguages();

/// The name of a language on offer; of any other, the code.
[[nodiscard]] QString languageName(const QString &code);

/// What is selected until somebody chooses.
inline constexpr QLatin1StringView defaultSelectedLanguages{"no,sv,da,fi,en"};

/// The stored primary language, else "no".
[[nodiscard]] QString primaryLanguage(const Preferences &preferences);

/// Stores the first language on offer among those of a desktop ("nb-NO", "en"), dearest first, as the primary one; nothing
/// where one is stored already or none is on offer.
void choosePrimaryLanguage(Preferences &preferences, const QStringList &desktopLanguages);

/// The comma-separated codes exactly as stored, else the default.
[[nodiscard]] QString selectedLanguagesText(const Preferences &preferences);

/// The codes of such a text, in its order, each trimmed of spaces and tabs; empty pieces stay.
[[nodiscard]] QStringList languageCodes(const QString &selectedLanguages);

} // namespace velmo
