#include "ui/models/speech_texts.h"

#include "base/log.h"
#include "service/status/service_watch.h"
#include "store/languages.h"

#include <QCoreApplication>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo::speech_texts {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SpeechTexts)
};

/// Bokmål has two codes.
bool isAmong(const QString &code, const QStringList &codes) {
    const bool isBokmal = code == u"no" || code == u"nb";
    return codes.contains(code) || (isBokmal && (codes.contains(u"no"_s) || codes.contains(u"nb"_s)));
}

QString timeLeft(double seconds) {
    if (seconds < 60)
        return Texts::tr("%1 s left").arg(std::ceil(seconds));
    if (seconds < 3600)
        return Texts::tr("%1 min left").arg(std::ceil(seconds / 60));
    return Texts::tr("%1 h left").arg(std::ceil(seconds / 3600));
}

} // namespace

QString listed(const QStringList &names) {
    if (names.size() < 2)
        return names.join(QString());
    return Texts::tr("%1 and %2").arg(names.sliced(0, names.size() - 1).join(u", "_s), names.last());
}

QString engine(const ServiceHealth &health) {
    if (health.engine == u"server")
        return Texts::tr("Another speech server");
    return health.model.isEmpty() ? health.engine
                                  : Texts::tr("%1, model %2").arg(health.engine, health.model);
}

QString standing(const ServiceWatch &service) {
    if (service.standing() == ServiceWatch::Standing::Unknown)
        return Texts::tr("Asking the speech service…");
    if (service.standing() == ServiceWatch::Standing::Silent)
        return Texts::tr("The speech service does not answer.");
    if (!service.failure().isEmpty())
        return service.failure();
    const QString by = service.health() ? engine(*service.health()) : QString();
    return Texts::tr("Speech by %1").arg(by.isEmpty() ? service.address() : by);
}

QString remedyForSilence(const ServiceWatch &service) {
    if (service.standing() != ServiceWatch::Standing::Silent || !service.isOnThisMachine())
        return {};
    return Texts::tr("Start it with the command %1, in a terminal or when you log in.")
        .arg(u"<b>velmo-local-service</b>"_s);
}

QString understood(const QStringList &codes) {
    QStringList names;
    for (const Language &language : offeredLanguages()) {
        if (isAmong(language.code, codes))
            names.append(language.name);
    }
    const qsizetype more = codes.size() - names.size();
    if (more > 0)
        names.append(Texts::tr("%1 more").arg(more));
    return listed(names);
}

QStringList notUnderstood(const QStringList &codes, const ServiceWatch &service) {
    QStringList missing;
    if (!service.health() || !service.health()->languages)
        return missing;
    for (const QString &code : codes) {
        if (!isAmong(code, *service.health()->languages))
            missing.append(code);
    }
    return missing;
}

QString languagesProblem(const QStringList &codes, const ServiceWatch &service) {
    QStringList names;
    for (const QString &code : notUnderstood(codes, service))
        names.append(languageName(code));
    if (names.isEmpty())
        return {};
    return names.size() == 1 ? Texts::tr("%1 is not understood by this engine.").arg(names.first())
                             : Texts::tr("%1 are not understood by this engine.").arg(listed(names));
}

QString size(qint64 bytes) {
    constexpr std::array kUnits = {"kB"_L1, "MB"_L1, "GB"_L1};
    double amount = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    while (amount >= 1000 && unit + 1 < kUnits.size()) {
        amount /= 1000;
        ++unit;
    }
    return u"%1 %2"_s.arg(fixed(amount, amount < 10 ? 1 : 0), kUnits[unit]);
}

QString progress(const ModelDownload &download) {
    QStringList parts = {Texts::tr("%1 of %2").arg(size(download.received), size(download.bytes))};
    if (download.bytesPerSecond > 0) {
        const auto rest = static_cast<double>(download.bytes - download.received);
        parts.append(u"%1/s"_s.arg(size(static_cast<qint64>(download.bytesPerSecond))));
        parts.append(timeLeft(rest / download.bytesPerSecond));
    }
    return parts.join(u" · "_s);
}

} // namespace velmo::speech_texts
