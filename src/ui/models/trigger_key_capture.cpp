#include "ui/models/trigger_key_capture.h"

#include "dictation/gestures/hotkey_listener.h"
#include "platform/keyboard_keys.h"
#include "store/preference_keys.h"
#include "store/preferences.h"
#include "ui/models/trigger_key_name.h"

namespace velmo {

TriggerKeyCapture::TriggerKeyCapture(const Collaborators &collaborators) : m_with(collaborators) {
    connect(&m_with.name, &TriggerKeyName::changed, this, &TriggerKeyCapture::keyNameChanged);
}

TriggerKeyCapture::~TriggerKeyCapture() = default;

const QString &TriggerKeyCapture::keyName() const {
    return m_with.name.inText();
}

QString TriggerKeyCapture::instruction() const {
    return m_isCapturing ? tr("Press the key you want to dictate with. Esc keeps %1.").arg(keyName())
                         : tr("Hold to talk, double-tap for hands-free");
}

void TriggerKeyCapture::begin() {
    if (m_isCapturing)
        return;
    m_with.listener.pauseFnKey();
    m_isCapturing = true;
    Q_EMIT isCapturingChanged();
}

void TriggerKeyCapture::press(int key, quint32 scanCode) {
    if (!m_isCapturing)
        return;
    if (key == Qt::Key_Escape) {
        cancel();
        return;
    }
    const PhysicalKey pressed = m_with.keys.keyAt(scanCode);
    setRefusal(pressed.refusal);
    if (!m_refusal.isNull())
        return;
    m_with.preferences.set(keys::triggerKey, pressed.name);
    m_with.name.refresh();
    end();
}

void TriggerKeyCapture::cancel() {
    if (m_isCapturing)
        end();
}

void TriggerKeyCapture::end() {
    m_isCapturing = false;
    setRefusal(QString());
    m_with.listener.resumeFnKey();
    Q_EMIT isCapturingChanged();
}

void TriggerKeyCapture::setRefusal(const QString &sentence) {
    if (m_refusal == sentence)
        return;
    m_refusal = sentence;
    Q_EMIT refusalChanged();
}

} // namespace velmo
