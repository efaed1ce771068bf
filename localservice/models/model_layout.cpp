#include "localservice/models/model_layout.h"

namespace velmo::localservice {

namespace {

constexpr qint32 kSingle = 0; // numbers of four bytes, and of two
constexpr qint32 kHalf = 1;
constexpr qint32 kHeadWidth = 64;
// The thousands of the form tell the version of how numbers are packed.
constexpr qint32 kFormVersion = 1000;

/// The type of the weights of a form.
std::optional<qint32> weightType(qint32 form) {
    switch (form % kFormVersion) {
    case 0:
        return kSingle;
    case 1:
        return kHalf;
    case 2:
        return 2;
    case 3:
        return 3;
    case 7:
        return 8;
    case 8:
        return 6;
    case 9:
        return 7;
    case 10:
        return 10;
    case 11:
        return 11;
    case 12:
        return 12;
    case 13:
        return 13;
    case 14:
        return 14;
    default:
        return std::nullopt;
    }
}

/// Collects the tensors of a model.
class Layout {
public:
    explicit Layout(const ModelSizes &sizes) : m_weights(weightType(sizes.form).value_or(kSingle)) {}

    void addTable(const QByteArray &name, qint32 width, qint32 height, qint32 type) {
        m_tensors.insert(name, {{width, height, 1}, type});
    }

    void addConvolution(const QByteArray &name, qint32 from, qint32 to) {
        m_tensors.insert(name + ".weight", {{3, from, to}, m_weights == kSingle ? kSingle : kHalf});
        addTable(name + ".bias", 1, to, kSingle);
    }

    void addNorm(const QByteArray &name, qint32 width) {
        addTable(name + ".weight", width, 1, kSingle);
        addTable(name + ".bias", width, 1, kSingle);
    }

    void addEmbedding(const QByteArray &name, qint32 width, qint32 count) {
        addTable(name, width, count, m_weights);
    }

    void addBlock(const QByteArray &name, qint32 width, bool isDecoder) {
        addNorm(name + ".mlp_ln", width);
        addLinear(name + ".mlp.0", width, 4 * width);
        addLinear(name + ".mlp.2", 4 * width, width);
        addNorm(name + ".attn_ln", width);
        addAttention(name + ".attn", width);
        if (!isDecoder)
            return;
        addNorm(name + ".cross_attn_ln", width);
        addAttention(name + ".cross_attn", width);
    }

    [[nodiscard]] const QHash<QByteArray, Tensor> &tensors() const { return m_tensors; }

private:
    void addLinear(const QByteArray &name, qint32 from, qint32 to) {
        addTable(name + ".weight", from, to, m_weights);
        addTable(name + ".bias", to, 1, kSingle);
    }

    void addAttention(const QByteArray &name, qint32 width) {
        for (const char *part : {".query", ".value", ".out"})
            addLinear(name + part, width, width);
        addTable(name + ".key.weight", width, width, m_weights);
    }

    qint32 m_weights;
    QHash<QByteArray, Tensor> m_tensors;
};

bool isPlausibleHalf(qint32 width, qint32 heads, qint32 layers) {
    return width >= 384 && width <= 1280 && width % kHeadWidth == 0 && heads == width / kHeadWidth &&
           layers >= 1 && layers <= 32;
}

} // namespace

std::optional<NumberForm> numberForm(qint32 type) {
    switch (type) {
    case kSingle:
        return NumberForm{1, 4};
    case kHalf:
        return NumberForm{1, 2};
    case 2:
        return NumberForm{32, 18};
    case 3:
        return NumberForm{32, 20};
    case 6:
        return NumberForm{32, 22};
    case 7:
        return NumberForm{32, 24};
    case 8:
        return NumberForm{32, 34};
    case 10:
        return NumberForm{256, 84};
    case 11:
        return NumberForm{256, 110};
    case 12:
        return NumberForm{256, 144};
    case 13:
        return NumberForm{256, 176};
    case 14:
        return NumberForm{256, 210};
    default:
        return std::nullopt;
    }
}

bool arePlausible(const ModelSizes &sizes) {
    if (sizes.form < 0 || sizes.form >= 10 * kFormVersion)
        return false;
    const auto weights = weightType(sizes.form);
    return weights && sizes.vocabulary >= 51864 && sizes.vocabulary <= 51866 && sizes.audioContext == 1500 &&
           sizes.textContext == 448 && (sizes.bands == 80 || sizes.bands == 128) &&
           isPlausibleHalf(sizes.audioWidth, sizes.audioHeads, sizes.audioLayers) &&
           isPlausibleHalf(sizes.textWidth, sizes.textHeads, sizes.textLayers) &&
           sizes.audioWidth == sizes.textWidth && sizes.audioWidth % numberForm(*weights)->count == 0;
}

QHash<QByteArray, Tensor> tensorsOf(const ModelSizes &sizes) {
    Layout layout(sizes);
    layout.addTable("encoder.positional_embedding", sizes.audioWidth, sizes.audioContext, kSingle);
    layout.addConvolution("encoder.conv1", sizes.bands, sizes.audioWidth);
    layout.addConvolution("encoder.conv2", sizes.audioWidth, sizes.audioWidth);
    layout.addNorm("encoder.ln_post", sizes.audioWidth);
    for (qint32 layer = 0; layer < sizes.audioLayers; ++layer)
        layout.addBlock("encoder.blocks." + QByteArray::number(layer), sizes.audioWidth, false);
    layout.addTable("decoder.positional_embedding", sizes.textWidth, sizes.textContext, kSingle);
    layout.addEmbedding("decoder.token_embedding.weight", sizes.textWidth, sizes.vocabulary);
    layout.addNorm("decoder.ln", sizes.textWidth);
    for (qint32 layer = 0; layer < sizes.textLayers; ++layer)
        layout.addBlock("decoder.blocks." + QByteArray::number(layer), sizes.textWidth, true);
    return layout.tensors();
}

} // namespace velmo::localservice
