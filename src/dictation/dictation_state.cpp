#include "dictation/dictation_state.h"

#include <QMetaEnum>

namespace velmo {

QString nameOf(State state) {
    return QString::fromLatin1(QMetaEnum::fromType<State>().valueToKey(static_cast<int>(state)));
}

} // namespace velmo
