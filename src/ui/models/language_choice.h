#pragma once

#include "store/languages.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmo {

class PreferenceWatch;

/// The languages a person dictates in, as the settings page shows and changes them: one primary language, and a set
/// of selected ones that it always belongs to. Each change is stored when it is made; what another process changes
/// appears by itself. Nothing is stored before the first change. Main thread.
class LanguageChoice final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QStringList names READ names CONSTANT)
    Q_PROPERTY(int primaryRow READ primaryRow NOTIFY primaryLanguageChanged)
    Q_PROPERTY(QString primaryName READ primaryName NOTIFY primaryLanguageChanged)

public:
    /// Both outlive the choice.
    LanguageChoice(Preferences &preferences, PreferenceWatch &watch);

    /// What is on offer.
    [[nodiscard]] static QList<Language> languages() { return offeredLanguages(); }

    /// Their names, in the same order.
    [[nodiscard]] static QStringList names();

    /// The place of the primary language in what is on offer; -1 when it is not.
    [[nodiscard]] int primaryRow() const;
    [[nodiscard]] QString primaryName() const { return languageName(m_primaryLanguage); }
    Q_INVOKABLE void choosePrimary(qsizetype row);

    [[nodiscard]] const QString &primaryLanguage() const { return m_primaryLanguage; }
    /// Also selects the language where it was not.
    void setPrimaryLanguage(const QString &code);

    /// The set, ascending by code points. It may hold codes that are not on offer.
    [[nodiscard]] const QStringList &selectedLanguages() const { return m_selectedLanguages; }

    /// Selects the language or leaves it out; the primary language stays as it is. The set is stored in any case.
    void toggleLanguage(const QString &code);

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
