#pragma once

#include "base/interface.h"

#include <QString>
#include <QStringView>
#include <memory>

struct UCollator;
struct UStringSearch;

namespace velmo {

/// How the people of a locale order and find text: letters by their alphabet, accents count, case does not.
/// In Norwegian "Ål" comes after "zebra" and "ål" finds "Ålesund", but "al" does not. One thread.
class Collation : private Unmovable {
public:
    /// @param locale as ICU writes it: "nb_NO", "en_GB". An unknown one gets the order common to most.
    explicit Collation(const QString &locale);
    ~Collation();

    [[nodiscard]] bool precedes(QStringView left, QStringView right) const;

private:
    friend class CollationSearch;
    struct Close {
        void operator()(UCollator *collator) const;
    };
    std::unique_ptr<UCollator, Close> m_collator;
};

/// Looks for one text in many others. The collation outlives it.
class CollationSearch : private Unmovable {
public:
    CollationSearch(const Collation &collation, QString wanted);
    ~CollationSearch();

    /// Whether the wanted text is part of this one. An empty text is part of every other.
    [[nodiscard]] bool isPartOf(const QString &text);

private:
    struct Close {
        void operator()(UStringSearch *search) const;
    };
    QString m_wanted;
    std::unique_ptr<UStringSearch, Close> m_search;
};

} // namespace velmo
