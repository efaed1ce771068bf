#include "base/collation.h"

#include "base/icu_text.h"

#include <unicode/ucol.h>
#include <unicode/usearch.h>

namespace velmo {

Collation::Collation(const QString &locale) {
    UErrorCode status = U_ZERO_ERROR;
    m_collator.reset(ucol_open(locale.toLatin1().constData(), &status));
    // The second level is where accents differ; case is the third.
    ucol_setAttribute(m_collator.get(), UCOL_STRENGTH, UCOL_SECONDARY, &status);
    ucol_setAttribute(m_collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
}

Collation::~Collation() = default;

void Collation::Close::operator()(UCollator *collator) const {
    ucol_close(collator);
}

bool Collation::precedes(QStringView left, QStringView right) const {
    return ucol_strcoll(m_collator.get(), icu::units(left), icu::length(left), icu::units(right),
                        icu::length(right)) == UCOL_LESS;
}

CollationSearch::CollationSearch(const Collation &collation, QString wanted) : m_wanted(std::move(wanted)) {
    if (m_wanted.isEmpty())
        return;
    // ICU wants a text from the beginning; the real ones come later.
    UErrorCode status = U_ZERO_ERROR;
    m_search.reset(usearch_openFromCollator(icu::units(m_wanted), icu::length(m_wanted), icu::units(m_wanted),
                                            icu::length(m_wanted), collation.m_collator.get(), nullptr,
                                            &status));
}

CollationSearch::~CollationSearch() = default;

void CollationSearch::Close::operator()(UStringSearch *search) const {
    usearch_close(search);
}

bool CollationSearch::isPartOf(const QString &text) {
    if (m_wanted.isEmpty())
        return true;
    if (!m_search || text.isEmpty())
        return false;
    UErrorCode status = U_ZERO_ERROR;
    usearch_setText(m_search.get(), icu::units(text), icu::length(text), &status);
    return usearch_first(m_search.get(), &status) != USEARCH_DONE && U_SUCCESS(status);
}

} // namespace velmo
