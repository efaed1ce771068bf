#pragma once

#include <QStringView>
#include <span>

namespace velmo {

/// The filler words and phrases of one language. Of two equally long ones the earlier goes first.
struct LanguageFillers {
    QStringView code;
    std::span<const QStringView> fillers;
};

/// Sounds people make in every language while they think.
[[nodiscard]] std::span<const QStringView> universalHesitations();

[[nodiscard]] std::span<const LanguageFillers> fillersByLang();

} // namespace velmo
