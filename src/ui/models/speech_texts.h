#pragma once

#include <QString>
#include <QStringList>

namespace velmo {

class ServiceWatch;
struct ModelDownload;
struct ServiceHealth;

// What is said of the speech service wherever it is said.
namespace speech_texts {

/// "Norwegian, Danish and Finnish"
[[nodiscard]] QString listed(const QStringList &names);

/// "Whisper, model base"; empty where the service does not say.
[[nodiscard]] QString engine(const ServiceHealth &health);

/// What recognises speech, or why nothing does, on one line.
[[nodiscard]] QString standing(const ServiceWatch &service);

/// How to start a service on this machine that does not run, as styled text; empty for one elsewhere.
[[nodiscard]] QString remedyForSilence(const ServiceWatch &service);

/// "Norwegian, Swedish and 97 more": those on offer go first.
[[nodiscard]] QString understood(const QStringList &codes);

/// Of the codes those that the engine is known not to understand.
[[nodiscard]] QStringList notUnderstood(const QStringList &codes, const ServiceWatch &service);

/// "Danish and Finnish are not understood by this engine."; empty when all are.
[[nodiscard]] QString languagesProblem(const QStringList &codes, const ServiceWatch &service);

/// "148 MB"
[[nodiscard]] QString size(qint64 bytes);

/// "12 MB of 148 MB · 2.0 MB/s · 1 min left"
[[nodiscard]] QString progress(const ModelDownload &download);

} // namespace speech_texts

} // namespace velmo
