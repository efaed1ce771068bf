#include "store/word_count.h"

namespace velmo {

qsizetype countWords(QStringView text) {
    qsizetype words = 0;
    bool inWord = false;
    for (const QChar character : text) {
        const bool isSpace = character == u' ';
        if (!isSpace && !inWord)
            ++words;
        inWord = !isSpace;
    }
    return words;
}

} // namespace velmo
