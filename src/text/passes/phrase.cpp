#include "text/passes/phrase.h"

#include "base/case_mapping.h"

namespace velmo {

Phrase::Phrase(QStringView phrase, QStringView before, QStringView after)
    : m_caseFolded(velmo::caseFolded(phrase)),
      m_expression(before.toString() + Pattern::escaped(phrase) + after.toString()) {}

const Pattern &Phrase::pattern() const {
    std::call_once(m_compileOnce, [this] { m_pattern.emplace(m_expression, Pattern::CaseInsensitive); });
    return *m_pattern;
}

PhraseText::PhraseText(const QString &text) : m_text(text), m_caseFolded(caseFolded(text)) {}

void PhraseText::replaceAll(const Phrase &phrase, const QString &replacement) {
    replaceAll(phrase, [&](const Pattern::Match &) { return replacement; });
}

void PhraseText::replaceAll(const Phrase &phrase, const Pattern::Replacement &replacement) {
    if (!m_caseFolded.contains(phrase.caseFolded()))
        return;
    const QString changed = phrase.pattern().replaced(m_text, replacement);
    if (changed == m_text)
        return;
    m_text = changed;
    m_caseFolded = caseFolded(m_text);
}

} // namespace velmo
