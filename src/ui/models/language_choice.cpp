#include "ui/models/language_choice.h"

#include "base/characters.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"

#include <algorithm>

namespace velmo {

namespace {

/// Sorted, each once.
QStringList asSet(QStringList codes) {
    codes.removeDuplicates();
    std::sort(codes.begin(), codes.end(), precedesByCodePoints);
    return codes;
}

/// The codes of a stored text as they stand; empty pieces are none.
QStringList setIn(const QString &stored) {
    return asSet(stored.split(u',', Qt::SkipEmptyParts));
}

} // namespace

LanguageChoice::LanguageChoice(Preferences &preferences, PreferenceWatch &watch)
    : m_preferences(preferences) {
    for (const QLatin1StringView key : {keys::primaryLanguage, keys::selectedLanguages})
        watch.follow(key, this, [this] { load(); });
    load();
}

QStringList LanguageChoice::names() {
    QStringList names;
    for (const Language &language : languages())
        names.append(language.name);
    return names;
}

int LanguageChoice::primaryRow() const {
    const QList<Language> offered = languages();
    const auto primary = std::ranges::find(offered, m_primaryLanguage, &Language::code);
    return primary == offered.end() ? -1 : static_cast<int>(primary - offered.begin());
}

void LanguageChoice::choosePrimary(qsizetype row) {
    const QList<Language> offered = languages();
    if (row >= 0 && row < offered.size())
        setPrimaryLanguage(offered[row].code);
}

void LanguageChoice::setPrimaryLanguage(const QString &code) {
    m_preferences.set(keys::primaryLanguage, code);
    publishPrimary(code);
    if (!m_selectedLanguages.contains(code))
        storeSelection(code, Wish::Selected);
}

void LanguageChoice::toggleLanguage(const QString &code) {
    if (code == m_primaryLanguage)
        storeSelection(code, Wish::AsItIs);
    else
        storeSelection(code, m_selectedLanguages.contains(code) ? Wish::LeftOut : Wish::Selected);
}

QStringList LanguageChoice::edited(const QStringList &codes, const QString &code, Wish wish) {
    QStringList edited = codes;
    if (wish == Wish::Selected)
        edited.append(code);
    else if (wish == Wish::LeftOut)
        edited.removeAll(code);
    return asSet(edited);
}

void LanguageChoice::load() {
    publishPrimary(velmo::primaryLanguage(m_preferences));
    publishSelection(setIn(selectedLanguagesText(m_preferences)));
}

/// Changes the one code in the set as it is stored now, so that what another process selected stays.
void LanguageChoice::storeSelection(const QString &code, Wish wish) {
    QStringList codes = edited(m_selectedLanguages, code, wish); // what is shown when nothing can be stored
    m_preferences.change(keys::selectedLanguages, [&](const std::optional<PreferenceValue> &stored) {
        const auto *text = stored ? std::get_if<QString>(&*stored) : nullptr;
        codes = edited(setIn(text ? *text : QString(defaultSelectedLanguages)), code, wish);
        return PreferenceValue(codes.join(u','));
    });
    publishSelection(codes);
}

void LanguageChoice::publishPrimary(const QString &code) {
    if (code == m_primaryLanguage)
        return;
    m_primaryLanguage = code;
    Q_EMIT primaryLanguageChanged();
}

void LanguageChoice::publishSelection(const QStringList &codes) {
    if (codes == m_selectedLanguages)
        return;
    m_selectedLanguages = codes;
    Q_EMIT selectedLanguagesChanged();
}

} // namespace velmo
