#include "ui/floating/floating_content.h"

namespace velmo {

FloatingContent::FloatingContent(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemIsFocusScope);
}

void FloatingContent::setComposited(bool isComposited) {
    if (isComposited == m_isComposited)
        return;
    m_isComposited = isComposited;
    Q_EMIT compositedChanged();
}

} // namespace velmo
