#include "base/uuid.h"

#include <QUuid>

namespace velmo {

QString newUpperUuid() {
    return newLowerUuid().toUpper();
}

QString newLowerUuid() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace velmo
