#include "text/passes/passes.h"

#include "base/pattern.h"
#include "text/passes/line_breaks.h"
#include "text/tables/emoji_names.h"

#include <QStringList>
#include <vector>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct NamedEmoji {
    explicit NamedEmoji(const EmojiName &row)
        : wholeName(withinLine(u"\\A(?:%1)\\z"_s.arg(row.name)), Pattern::CaseInsensitive),
          emoji(row.emoji.toString()) {}

    Pattern wholeName;
    QString emoji;
};

/// "emoji" and any name, which is capture group 1. The white space is taken whole (`(?>…)`): no name begins with
/// any, and trying every name behind every blank would cost a text of blanks dear. (`\s++` would do the same, but
/// ICU then keeps a state for each blank and gives up on a hundred thousand of them.)
QString anyPhrase() {
    QStringList names;
    for (const EmojiName &row : emojiNames())
        names.append(u"(?:%1)\\b"_s.arg(row.name));
    return withinLine(u"\\bemoji(?>\\s+)(%1)"_s.arg(names.join(u'|')));
}

/// The first row that knows the name. It is the row whose pattern alone would have replaced the phrase, had
/// the rows run over the text one by one: an earlier one that fits the name would have been found before.
QString emojiOf(const Pattern::Match &match) {
    static const std::vector<NamedEmoji> rows(emojiNames().begin(), emojiNames().end());
    for (const NamedEmoji &row : rows) {
        if (row.wholeName.occursIn(match.group(1)))
            return row.emoji;
    }
    return match.group(0).toString();
}

} // namespace

QString writeSpokenEmoji(const QString &text, const CleanupContext &) {
    static const Pattern phrase(anyPhrase(), Pattern::CaseInsensitive);
    return phrase.replaced(text, emojiOf);
}

} // namespace velmo
