#include "base/log.h"

#include "base/descriptor_output.h"
#include "base/line_escapes.h"
#include "base/utf8.h"

#include <array>
#include <mutex>

namespace velmo {

namespace {

struct TagText {
    LogTag tag;
    QStringView prefix;
};

constexpr std::array kTagTexts = {
    TagText{LogTag::Auth, u"🔑 [Auth] "},
    TagText{LogTag::Dict, u"📖 [Dict] "},
    TagText{LogTag::Flow, u"🎙️ [Flow] "},
    TagText{LogTag::FnKey, u"🎙️ [FnKey] "},
    TagText{LogTag::Hallucination, u"🎙️ [Hallucination] "},
    TagText{LogTag::History, u"🎙️ [History] "},
    TagText{LogTag::Hotkey, u"🎙️ [Hotkey] "},
    TagText{LogTag::Insert, u"🎙️ [Insert] "},
    TagText{LogTag::Latency, u"⏱️ [Latency] "},
    TagText{LogTag::Normalize, u"🇳🇴 [Normalize] "},
    TagText{LogTag::Prefs, u"🎙️ [Prefs] "},
    TagText{LogTag::Prompt, u"🎙️ [Prompt] "},
    TagText{LogTag::Recorder, u"🎙️ [Recorder] "},
    TagText{LogTag::Sync, u"🔄 [Sync] "},
    TagText{LogTag::TextProcessor, u"🔧 [TextProcessor] "},
    TagText{LogTag::Tx, u"🎙️ [Tx] "},
    TagText{LogTag::VelmoMac, u"🎙️ [Velmo Mac] "},
    TagText{LogTag::VelmoMacSync, u"🔄 [Velmo Mac] "},
};

QStringView prefixOf(LogTag tag) {
    for (const TagText &row : kTagTexts) {
        if (row.tag == tag)
            return row.prefix;
    }
    return {};
}

struct Sink {
    std::mutex mutex;
    LogSink write;
};

Sink &currentSink() {
    static Sink sink;
    return sink;
}

} // namespace

void log(LogTag tag, const QString &text) {
    const QString line = prefixOf(tag).toString() + onOneLine(text);
    Sink &sink = currentSink();
    const std::lock_guard lock(sink.mutex);
    if (sink.write)
        sink.write(line);
}

void setLogSink(LogSink sink) {
    Sink &current = currentSink();
    const std::lock_guard lock(current.mutex);
    current.write = std::move(sink);
}

LogSink descriptorLogSink(int descriptor) {
    return [descriptor](const QString &line) { writeAll(descriptor, utf8(line) + '\n'); };
}

QString onOneLine(const QString &text) {
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        if (const auto escape = lineEscape(character))
            line += *escape;
        else
            line += character;
    }
    return line;
}

QString fixed(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

} // namespace velmo
