#pragma once

#include <QMap>
#include <QString>
#include <variant>

namespace velmo::localservice {

/// A piece of a page; whoever makes one has escaped what is in it.
struct Html {
    QString source;

    Html &operator+=(const Html &other) {
        source += other.source;
        return *this;
    }
};

/// What stands in the places of a template, by name; texts are escaped.
using HtmlValues = QMap<QString, std::variant<QString, Html>>;

/// A template, a resource of the program under ":/pages/", with its places "{{name}}" filled. A place without a value
/// stays empty; a value is never searched for places.
[[nodiscard]] Html filled(const QString &page, const HtmlValues &values);

/// The text of a resource under ":/pages/".
[[nodiscard]] QString pageResource(const QString &name);

} // namespace velmo::localservice
