#include "base/pattern.h"

#include "base/icu_text.h"

#include <unicode/regex.h>

namespace velmo {

/// Holds no pattern when the expression did not compile.
struct Pattern::Compiled {
    std::unique_ptr<const ::icu::RegexPattern> pattern;
};

namespace {

/// Reads the text in place; the text must outlive the string.
::icu::UnicodeString aliasOf(QStringView text) {
    return {false, icu::units(text), icu::length(text)};
}

uint32_t icuFlags(Pattern::Options options) {
    uint32_t flags = 0;
    if (options.testFlag(Pattern::CaseInsensitive))
        flags |= UREGEX_CASE_INSENSITIVE;
    if (options.testFlag(Pattern::Multiline))
        flags |= UREGEX_MULTILINE;
    return flags;
}

/// One run over one text. ICU's matcher only refers to its input, so both live here, in this order.
class Search final : public Pattern::Match {
public:
    Search(const ::icu::RegexPattern *pattern, QStringView text) : m_text(text), m_input(aliasOf(text)) {
        if (pattern)
            m_matcher.reset(pattern->matcher(m_input, m_status));
    }

    /// Moves to the next match. Once ICU has given up (its stack is bounded) there is none.
    [[nodiscard]] bool next() {
        return m_matcher && U_SUCCESS(m_status) && m_matcher->find(m_status) && U_SUCCESS(m_status);
    }

    [[nodiscard]] bool gaveUp() const { return U_FAILURE(m_status); }
    [[nodiscard]] qsizetype start() const { return boundary(&::icu::RegexMatcher::start, 0); }
    [[nodiscard]] qsizetype end() const { return boundary(&::icu::RegexMatcher::end, 0); }

    [[nodiscard]] QStringView group(int number) const override {
        const qsizetype from = boundary(&::icu::RegexMatcher::start, number);
        if (from < 0)
            return {};
        return m_text.sliced(from, boundary(&::icu::RegexMatcher::end, number) - from);
    }

private:
    using Boundary = int32_t (::icu::RegexMatcher::*)(int32_t, UErrorCode &) const;

    /// -1 for a group that took no part or does not exist.
    [[nodiscard]] qsizetype boundary(Boundary side, int group) const {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t index = (m_matcher.get()->*side)(group, status);
        return U_SUCCESS(status) ? index : -1;
    }

    QStringView m_text;
    ::icu::UnicodeString m_input;
    UErrorCode m_status = U_ZERO_ERROR;
    std::unique_ptr<::icu::RegexMatcher> m_matcher;
};

QString filledIn(QStringView replacementTemplate, const Pattern::Match &match) {
    QString text;
    for (qsizetype at = 0; at < replacementTemplate.size(); ++at) {
        const bool isGroup = replacementTemplate[at] == u'$' && at + 1 < replacementTemplate.size() &&
                             replacementTemplate[at + 1].isDigit();
        if (isGroup)
            text += match.group(replacementTemplate[++at].digitValue());
        else
            text += replacementTemplate[at];
    }
    return text;
}

} // namespace

Pattern::Pattern(const QString &expression, Options options) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError error;
    std::unique_ptr<const ::icu::RegexPattern> pattern(
        ::icu::RegexPattern::compile(aliasOf(expression), icuFlags(options), error, status));
    if (U_FAILURE(status))
        pattern.reset();
    m_compiled = std::make_shared<const Compiled>(Compiled{std::move(pattern)});
}

QString Pattern::escaped(QStringView text) {
    constexpr QStringView metacharacters = u"\\^$.|?*+()[]{}";
    QString expression;
    for (const QChar character : text) {
        if (metacharacters.contains(character))
            expression += u'\\';
        expression += character;
    }
    return expression;
}

bool Pattern::occursIn(QStringView text) const {
    return Search(m_compiled->pattern.get(), text).next();
}

QString Pattern::replaced(const QString &text, QStringView replacementTemplate) const {
    return replaced(text, [&](const Match &match) { return filledIn(replacementTemplate, match); });
}

QString Pattern::replaced(const QString &text, const Replacement &replacement) const {
    Search search(m_compiled->pattern.get(), text);
    QString result;
    qsizetype copied = 0;
    while (search.next()) {
        result += QStringView(text).sliced(copied, search.start() - copied);
        result += replacement(search);
        copied = search.end();
    }
    const bool isUnchanged = copied == 0 && result.isEmpty();
    if (isUnchanged || search.gaveUp())
        return text;
    result += QStringView(text).sliced(copied);
    return result;
}

} // namespace velmo
