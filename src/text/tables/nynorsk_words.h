#pragma once

#include <QStringView>
#include <span>

namespace velmo {

/// A word in Nynorsk spelling (or dialect, as speech models write it) and its form in Bokmål.
struct NynorskWord {
    QStringView nynorsk;
    QStringView bokmal;
};

/// All words in the order they are replaced.
[[nodiscard]] std::span<const NynorskWord> nynorskWords();

} // namespace velmo
