#pragma once

#include <QString>

namespace velmo {

class Vocabulary;

/// Corrects each word of the text that is a slip away from a word of the vocabulary: with "Kubernetes",
/// "kubernetis," becomes "Kubernetes,"; a word in capitals stays in capitals. Marks behind a word do not count
/// as part of it, marks before it do. White space before the first word goes. Logs each correction.
[[nodiscard]] QString applyDictionary(const QString &text, const Vocabulary &vocabulary);

} // namespace velmo
