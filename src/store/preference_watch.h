#pragma once

#include "base/lifetime.h"
#include "store/preferences.h"

#include <QObject>
#include <atomic>
#include <functional>
#include <map>
#include <memory>

namespace velmo {

/// Tells when the values of followed keys change, whoever changes them: another part of this process or another
/// process. It looks only when it is told that something was written, so it costs nothing at rest. Main thread.
class PreferenceWatch final : public QObject {
    Q_OBJECT

public:
    /// Both outlive the watch.
    PreferenceWatch(const Preferences &preferences, MainQueue &queue);

    /// Calls back whenever the value of that key differs from the one seen before, for as long as the context lives.
    void follow(const QString &key, const QObject *context, std::function<void()> callback);

    /// Something was written to the preferences. The watch looks in a later turn of the main queue, once for
    /// everything noted until then. Any thread.
    void noteWrite();

private:
    Q_SIGNAL void changed(const QString &key);
    void look();

    const Preferences &m_preferences;
    MainQueue &m_queue;
    std::map<QString, std::optional<PreferenceValue>> m_seen;
    std::atomic<bool> m_willLook = false;
    Lifetime m_lifetime;
};

} // namespace velmo
