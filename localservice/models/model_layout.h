#pragma once

#include <QByteArray>
#include <QHash>
#include <array>
#include <optional>

namespace velmo::localservice {

/// The sizes of a model, as its file tells them.
struct ModelSizes {
    qint32 vocabulary = 0;
    qint32 audioContext = 0;
    qint32 audioWidth = 0;
    qint32 audioHeads = 0;
    qint32 audioLayers = 0;
    qint32 textContext = 0;
    qint32 textWidth = 0;
    qint32 textHeads = 0;
    qint32 textLayers = 0;
    qint32 bands = 0; ///< Of the sound's picture.
    qint32 form = 0;  ///< How the numbers of its weights are stored.

    /// A vocabulary of this size or more knows other languages than English.
    [[nodiscard]] bool isMultilingual() const { return vocabulary >= 51865; }
};

/// Whether a model of the family that the engine knows has such sizes.
[[nodiscard]] bool arePlausible(const ModelSizes &sizes);

/// How one kind of number is stored: so many of them in so many bytes.
struct NumberForm {
    qint64 count = 1;
    qint64 bytes = 0;
};

/// By the number a tensor's head gives; nothing for one that no model has.
[[nodiscard]] std::optional<NumberForm> numberForm(qint32 type);

/// A table of numbers in a model.
struct Tensor {
    std::array<qint32, 3> shape{1, 1, 1}; ///< The fastest first.
    qint32 type = 0;

    bool operator==(const Tensor &) const = default;
};

/// Every tensor that a model of plausible sizes has, by name.
[[nodiscard]] QHash<QByteArray, Tensor> tensorsOf(const ModelSizes &sizes);

} // namespace velmo::localservice
