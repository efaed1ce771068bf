#pragma once

#include <QByteArray>
#include <QString>
#include <ostream>

// How a failed expectation shows Qt's strings (found by GoogleTest in the namespace of the type).

inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << '"' << bytes.left(200).toPercentEncoding(" {}[]\":,").toStdString() << '"';
}
