#pragma once

#include <QString>
#include <optional>

/// Speech models write things nobody said when there is nothing to hear: a stock sign-off phrase, or the hint
/// words they were given. Both tests are pure and safe on any thread.
namespace velmo {

/// Whether the whole transcript is a stock phrase: "Thank you for watching." is, "thanks for watching. " too
/// (case and outer white space do not count); "Thank you for watching" is not (the full stop is part of it).
[[nodiscard]] bool isHallucinationPhrase(const QString &text);

/// Whether the text consists mostly of the long words of the hint prompt. With the prompt "Grafana,
/// Kubernetes, Oslo" the text "Grafana Kubernetes now" does, "I use Kubernetes daily" does not. Never without
/// a prompt. Logs its verdict when there were words to compare.
[[nodiscard]] bool isPromptEcho(const QString &text, const std::optional<QString> &prompt);

} // namespace velmo
