#include "base/characters.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "text/local_pipeline.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <cstdlib>

// The local text path on any bytes. The last byte chooses the settings, the rest is the transcript; its last line is
// also a word of the dictionary and the trigger of a snippet. Beside what the sanitizers see, these must hold:
// cleaned text is trimmed, its breaks are line feeds, and there are never more than two in a row.
namespace {

using namespace velmo;
using namespace Qt::StringLiterals;

/// Takes a choice out of the number.
QString choice(unsigned &number, const QStringList &choices) {
    const auto count = static_cast<unsigned>(choices.size());
    const QString chosen = choices[static_cast<qsizetype>(number % count)];
    number /= count;
    return chosen;
}

QString stored(const QJsonObject &first, const QJsonObject &second) {
    return QString::fromUtf8(QJsonDocument(QJsonArray{first, second}).toJson(QJsonDocument::Compact));
}

std::map<QString, PreferenceValue> preferencesFor(unsigned &settings, const QString &ownWord) {
    return {
        {keys::selectedLanguages, choice(settings, {u"no,sv,da,fi,en"_s, u"en"_s, u"is, nn,nb"_s, u""_s})},
        {keys::primaryLanguage, choice(settings, {u"no"_s, u"nn"_s})},
        {keys::ruleScope, choice(settings, {u"selected"_s, u"spoken"_s})},
        {keys::dictionary, stored({{u"word"_s, u"Ålesund"_s}}, {{u"word"_s, ownWord}})},
        {keys::snippets, stored({{u"trigger"_s, ownWord}, {u"expansion"_s, u"$1\\"_s}},
                                {{u"trigger"_s, u"straße"_s}, {u"expansion"_s, u""_s}})},
    };
}

std::optional<QString> detectedLanguage(unsigned settings) {
    const QString code = choice(settings, {u"no"_s, u"SV"_s, u"da"_s, u"en"_s, QString()});
    return code.isNull() ? std::nullopt : std::optional(code);
}

void check(bool holds) {
    if (!holds)
        std::abort();
}

void checkCleaned(const QString &text) {
    check(trimmed(text) == text);
    check(!text.contains(QChar::LineSeparator) && !text.contains(QChar::ParagraphSeparator));
    check(!text.contains(u"\n\n\n"_s) && !text.contains(u"  "_s));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size) - 1);
    // Bytes that are no UTF-8 read as U+FFFD; half a surrogate pair is the rougher guest.
    const QString transcript = QString::fromUtf8(bytes).replace(QChar::ReplacementCharacter, QChar(0xd800));
    unsigned settings = data[size - 1];
    const MemoryPreferences preferences(preferencesFor(settings, transcript.section(u'\n', -1)));
    const auto detected = detectedLanguage(settings);

    const CleanupContext context = cleanupContext(preferences, detected);
    checkCleaned(cleanup(preClean(transcript, context), context));
    (void)LocalTextPath(preferences).process(transcript, detected);
    return 0;
}
