#pragma once

#include <QLatin1StringView>
#include <QString>
#include <functional>
#include <span>

namespace velmo {

/// One step of text processing: a pure function of the text and of what is known besides it.
template <class Context>
struct TextPass {
    QLatin1StringView name;
    QString (*apply)(const QString &text, const Context &context);
};

/// Told each pass and the text it left, for people who want to know where a change came from.
using TextTrace = std::function<void(QLatin1StringView pass, const QString &text)>;

/// Runs the passes in their order, each on what the one before left.
template <class Context>
[[nodiscard]] QString runPasses(std::span<const TextPass<Context>> passes, QString text,
                                const Context &context, const TextTrace &trace) {
    for (const TextPass<Context> &pass : passes) {
        text = pass.apply(text, context);
        if (trace)
            trace(pass.name, text);
    }
    return text;
}

} // namespace velmo
