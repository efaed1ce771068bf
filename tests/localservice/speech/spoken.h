#pragma once

#include <QByteArray>
#include <QString>

namespace velmo::localservice::testing {

/// A WAVE file (16000 Hz, mono, 16 bit) of the sentence, spoken by flite; empty when flite is not installed.
[[nodiscard]] QByteArray spoken(const QString &sentence);

} // namespace velmo::localservice::testing
