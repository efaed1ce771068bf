#pragma once

#include "store/languages.h"

#include <QObject>

namespace velmo {

class PreferenceWatch;

/// The languages a person dictates in, as the settings page shows and changes them: one primary language, and a set
/// of selected ones that it always belongs to. Each change is stored when it is made; what another process changes
/// appears by itself. Nothing is stored before the first change. Main thread.
class LanguageChoice final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<velmo::Language> languages READ languages CONSTANT)
    Q_PROPERTY(
        QString primaryLanguage READ primaryLanguage WRITE setPrimaryLanguage NOTIFY primaryLanguageChanged)
    Q_PROPERTY(QStringList selectedLanguages READ selectedLanguages NOTIFY selectedLanguagesChanged)

public:
    /// Both outlive the choice.
    LanguageChoice(Preferences &preferences, PreferenceWatch &watch);

    /// What is on offer.
    [[nodiscard]] static QList<Language> languages() { return offeredLanguages(); }

    [[nodiscard]] const QString &primaryLanguage() const { return m_primaryLanguage; }
    /// Also selects the language where it was not.
    void setPrimaryLanguage(const QString &code);

    /// The set, ascending by code points. It may hold codes that are not on offer.
    [[nodiscard]] const QStringList &selectedLanguages() const { return m_selectedLanguages; }

    /// Selects the language or leaves it out; the primary language stays as it is. The set is stored in any case.
    Q_INVOKABLE void toggleLanguage(const QString &code);

Q_SIGNALS:
    void primaryLanguageChanged();
    void selectedLanguagesChanged();

private:
    enum class Wish { Selected, LeftOut, AsItIs };

    [[nodiscard]] static QStringList edited(const QStringList &codes, const QString &code, Wish wish);
    void load();
    void storeSelection(const QString &code, Wish wish);
    void publishPrimary(const QString &code);
    void publishSelection(const QStringList &codes);

    Preferences &m_preferences;
    QString m_primaryLanguage;
    QStringList m_selectedLanguages;
};

} // namespace velmo
