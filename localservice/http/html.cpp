#include "localservice/http/html.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QString sourceOf(const std::variant<QString, Html> &value) {
    if (const auto *html = std::get_if<Html>(&value))
        return html->source;
    return std::get<QString>(value).toHtmlEscaped();
}

} // namespace

QString pageResource(const QString &name) {
    QFile file(u":/pages/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the page %s is missing from the program", qPrintable(name));
    return QString::fromUtf8(file.readAll());
}

Html filled(const QString &page, const HtmlValues &values) {
    const QString html = pageResource(page);
    QString result;
    qsizetype at = 0;
    for (qsizetype place = 0; (place = html.indexOf("{{"_L1, at)) >= 0;) {
        const qsizetype name = place + 2;
        const qsizetype end = html.indexOf("}}"_L1, name);
        result += QStringView(html).sliced(at, place - at);
        result += sourceOf(values.value(html.sliced(name, end - name)));
        at = end + 2;
    }
    result += QStringView(html).sliced(at);
    return {result};
}

} // namespace velmo::localservice
