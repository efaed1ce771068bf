#include "localservice/speech/language_names.h"

#include <QLocale>
#include <QRegularExpression>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

struct Name {
    QStringView name;
    QStringView code;
};

/// What Qt names otherwise, or not at all.
constexpr std::array kNames = {
    Name{u"nb", u"no"},
    Name{u"norwegian", u"no"},
    Name{u"bokmål", u"no"},
    Name{u"norwegian bokmål", u"no"},
    Name{u"norwegian bokmal", u"no"},
    Name{u"nynorsk", u"nn"},
};

std::optional<QString> listedCode(QStringView name) {
    for (const Name &row : kNames) {
        if (row.name == name)
            return row.code.toString();
    }
    return std::nullopt;
}

std::optional<QString> codeByQt(QStringView name) {
    for (int number = QLocale::C + 1; number <= QLocale::LastLanguage; ++number) {
        const auto language = static_cast<QLocale::Language>(number);
        if (name.compare(QLocale::languageToString(language), Qt::CaseInsensitive) == 0)
            return QLocale::languageToCode(language);
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> languageCode(const QString &name) {
    static const QRegularExpression codeForm(u"\\A([a-z]{2,3})(?:[-_].*)?\\z"_s);
    const QString lower = name.trimmed().toLower();
    const QString code = codeForm.match(lower).captured(1);
    if (const auto listed = listedCode(code.isEmpty() ? lower : code))
        return listed;
    return code.isEmpty() ? codeByQt(lower) : code;
}

} // namespace velmo::localservice
