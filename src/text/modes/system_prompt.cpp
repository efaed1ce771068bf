#include "text/modes/system_prompt.h"

#include "text/tables/prompt_pieces.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct LanguageName {
    QStringView code;
    QStringView name;
};

constexpr std::array kLanguageNames = {
    LanguageName{u"en", u"English"},
    LanguageName{u"sv", u"Swedish"},
    LanguageName{u"no", u"Norwegian (Bokmål)"},
    LanguageName{u"nn", u"Norwegian (Nynorsk)"},
    LanguageName{u"da", u"Danish"},
    LanguageName{u"fi", u"Finnish"},
    LanguageName{u"is", u"Icelandic"},
};

} // namespace

QString languageDisplayName(const QString &code) {
    const auto *row = std::ranges::find(kLanguageNames, QStringView(code), &LanguageName::code);
    return row == kLanguageNames.end() ? code : row->name.toString();
}

QString vocabularyInstruction(const QStringList &dictionaryWords) {
    if (dictionaryWords.isEmpty())
        return {};
    return prompt::beforeVocabulary.toString() + dictionaryWords.join(u", "_s);
}

QString buildSystemPrompt(const QString &modePrompt, const QString &language,
                          const QString &vocabularyInstruction) {
    const QString languageName = languageDisplayName(language);
    QString systemPrompt;
    for (const QStringView piece :
         {prompt::preamble, QStringView(modePrompt), prompt::beforeLanguage, QStringView(languageName),
          prompt::behindLanguage, QStringView(vocabularyInstruction), prompt::emojiInstruction})
        systemPrompt += piece;
    return systemPrompt;
}

} // namespace velmo
