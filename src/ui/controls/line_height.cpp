#include "ui/controls/line_height.h"

#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace velmo {

void LineHeight::set(QQuickTextDocument *document, qreal pixels) {
    QTextBlockFormat format;
    format.setLineHeight(pixels, QTextBlockFormat::FixedHeight);
    QTextCursor cursor(document->textDocument());
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}

} // namespace velmo
