#pragma once

#include <QString>
#include <functional>

namespace velmo {

/// Who speaks. Each tag is written with its own symbol: "🎙️ [Flow] …", "🔑 [Auth] …".
enum class LogTag {
    Auth,
    Dict,
    Flow,
    FnKey,
    Hallucination,
    History,
    Hotkey,
    Insert,
    Latency,
    Normalize,
    Prefs,
    Prompt,
    Recorder,
    Sync,
    TextProcessor,
    Tx,
    VelmoMac,
    VelmoMacSync, ///< "[Velmo Mac]" with the symbol of synchronisation.
};

/// Writes one line for one event. Line feeds and other control characters of the text are escaped, so an
/// event can never look like two. Any thread. The text may carry dictated words only where a line is defined
/// to; never tokens, never addresses with a query.
void log(LogTag tag, const QString &text);

using LogSink = std::function<void(const QString &line)>;

/// Where lines go, without their line end; the application chooses (standard output or error), tests collect
/// them. The sink is called by one thread at a time. An empty sink drops the lines.
void setLogSink(LogSink sink);

/// A sink that writes a line to the descriptor in one piece and at once, as UTF-8. A closed pipe is ignored.
[[nodiscard]] LogSink descriptorLogSink(int descriptor);

/// The text with its line feeds and other control characters escaped, so that it takes one line.
[[nodiscard]] QString onOneLine(const QString &text);

/// A number in the form of printf's "%.<decimals>f": always a point, whatever the locale.
[[nodiscard]] QString fixed(double value, int decimals);

} // namespace velmo
