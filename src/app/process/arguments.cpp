#include "app/process/arguments.h"

#include "base/utf8.h"

#include <algorithm>
#include <cstring>

namespace velmo {

QStringList takeArguments(int argc, char **argv) {
    constexpr QLatin1StringView scheme("velmo:");
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words.append(fromUtf8(argv[i]));
        if (words.last().startsWith(scheme, Qt::CaseInsensitive))
            std::fill(argv[i] + scheme.size(), argv[i] + std::strlen(argv[i]), '.');
    }
    return words;
}

} // namespace velmo
