#include "localservice/models/small_model.h"

namespace velmo::localservice::testing {

namespace {

void append(QByteArray &bytes, std::initializer_list<qint32> numbers) {
    for (const qint32 number : numbers)
        bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

void appendTensor(QByteArray &bytes, const QByteArray &name, const Tensor &tensor) {
    const auto [width, height, depth] = tensor.shape;
    append(bytes, {3, static_cast<qint32>(name.size()), tensor.type, width, height, depth});
    const NumberForm form = numberForm(tensor.type).value_or(NumberForm());
    bytes += name + QByteArray(qint64(width) * height * depth / form.count * form.bytes, '\0');
}

} // namespace

QByteArray SmallModel::bytes() const {
    QByteArray bytes;
    append(bytes, {mark, sizes.vocabulary, sizes.audioContext, sizes.audioWidth, sizes.audioHeads,
                   sizes.audioLayers, sizes.textContext, sizes.textWidth, sizes.textHeads, sizes.textLayers,
                   sizes.bands, sizes.form, filterRows, 201});
    bytes += QByteArray(qsizetype(filterRows) * 201 * 4, '\0');
    append(bytes, {tokens});
    for (qint32 token = 0; token < tokens; ++token) {
        append(bytes, {tokenLength});
        bytes += QByteArray(std::max(tokenLength, 0) % 10000, 'a');
    }
    const auto tensors = tensorsOf(SmallModel().sizes);
    for (auto tensor = tensors.begin(); tensor != tensors.end(); ++tensor) {
        if (tensor.key() == spoiltTensor)
            appendTensor(bytes, spoiltName, {{spoiltWidth, 1, 1}, spoiltType});
        else
            appendTensor(bytes, tensor.key(), *tensor);
    }
    return bytes + end;
}

} // namespace velmo::localservice::testing
