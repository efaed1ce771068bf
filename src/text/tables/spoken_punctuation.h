#pragma once

#include <QStringView>
#include <span>

namespace velmo {

/// A phrase and what is written where it is spoken as words of its own: "comma" and ",". Breaks are written
/// as U+2028 (line) and U+2029 (paragraph); they become line feeds at the end.
struct SpokenRule {
    QStringView spoken;
    QStringView written;
};

/// The rules of one language in the order they apply.
struct LanguageRules {
    QStringView code;
    std::span<const SpokenRule> rules;
};

[[nodiscard]] std::span<const LanguageRules> spokenToWrittenRules();

} // namespace velmo
