#pragma once

#include <QStringView>

namespace velmo {

/// The words of a dictation as statistics count them: pieces between space characters (U+0020 alone), empty pieces
/// dropped. Tabs and line breaks do not separate: "a  b\nc" has 2.
[[nodiscard]] qsizetype countWords(QStringView text);

} // namespace velmo
