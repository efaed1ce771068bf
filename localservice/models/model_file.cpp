#include "localservice/models/model_file.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr qint32 kMark = 0x67676d6c; // "ggml"
constexpr qint32 kFilterColumns = 201;
constexpr qint32 kLongestToken = 1024;
constexpr qint32 kLongestName = 128;

/// Reads a model's file from the front.
class Reader {
public:
    explicit Reader(QIODevice &file) : m_file(file) {}

    /// Nothing at the end of the file.
    std::optional<qint32> number() {
        qint32 value = 0;
        if (m_file.read(reinterpret_cast<char *>(&value), sizeof value) != sizeof value)
            return std::nullopt;
        return qFromLittleEndian(value);
    }

    std::optional<QByteArray> bytes(qint32 count) {
        const QByteArray read = m_file.read(count);
        return read.size() == count ? std::optional(read) : std::nullopt;
    }

    bool skip(qint64 count) { return left() >= count && m_file.seek(m_file.pos() + count); }
    [[nodiscard]] qint64 left() const { return m_file.size() - m_file.pos(); }

private:
    QIODevice &m_file;
};

using Fault = std::optional<QString>;

QString noModel() {
    return u"This is no speech model in the form the engine reads (a \"ggml\" file of Whisper)."_s;
}

QString cutOff() {
    return u"This speech model is cut off."_s;
}

Fault readSizes(Reader &reader, ModelSizes &sizes) {
    if (reader.number() != kMark)
        return noModel();
    for (qint32 *size : {&sizes.vocabulary, &sizes.audioContext, &sizes.audioWidth, &sizes.audioHeads,
                         &sizes.audioLayers, &sizes.textContext, &sizes.textWidth, &sizes.textHeads,
                         &sizes.textLayers, &sizes.bands, &sizes.form}) {
        const auto value = reader.number();
        if (!value)
            return cutOff();
        *size = *value;
    }
    if (!arePlausible(sizes))
        return u"This file names sizes that no speech model has."_s;
    return std::nullopt;
}

Fault readFilters(Reader &reader, const ModelSizes &sizes) {
    const auto rows = reader.number();
    const auto columns = reader.number();
    if (rows && columns && (*rows != sizes.bands || *columns != kFilterColumns))
        return u"The filters of this speech model do not fit it."_s;
    const auto bytes = static_cast<qint64>(sizeof(float)) * sizes.bands * kFilterColumns;
    return columns && reader.skip(bytes) ? Fault() : cutOff();
}

Fault readVocabulary(Reader &reader, const ModelSizes &sizes) {
    const auto count = reader.number();
    if (!count)
        return cutOff();
    if (*count < 1 || *count > sizes.vocabulary)
        return u"The vocabulary of this speech model does not fit it."_s;
    for (qint32 token = 0; token < *count; ++token) {
        const auto length = reader.number();
        if (length && (*length < 0 || *length > kLongestToken))
            return u"The vocabulary of this speech model is damaged."_s;
        if (!length || !reader.skip(*length))
            return cutOff();
    }
    return std::nullopt;
}

/// The head of a tensor, and its name; nothing when the file ends or says what no tensor is.
std::optional<std::pair<QByteArray, Tensor>> readHead(Reader &reader) {
    const auto dimensions = reader.number();
    const auto nameLength = reader.number();
    const auto type = reader.number();
    Tensor tensor;
    if (!type || *dimensions < 1 || *dimensions > static_cast<qint32>(tensor.shape.size()) ||
        *nameLength < 1 || *nameLength > kLongestName)
        return std::nullopt;
    tensor.type = *type;
    for (qint32 dimension = 0; dimension < *dimensions; ++dimension)
        tensor.shape.at(static_cast<size_t>(dimension)) = reader.number().value_or(0);
    const auto name = reader.bytes(*nameLength);
    return name ? std::optional(std::pair(*name, tensor)) : std::nullopt;
}

/// Of a tensor that a model has, so its sizes are small numbers.
qint64 bytesOf(const Tensor &tensor) {
    qint64 count = 1;
    for (const qint32 size : tensor.shape)
        count *= size;
    const NumberForm form = numberForm(tensor.type).value_or(NumberForm());
    return count / form.count * form.bytes;
}

Fault readTensors(Reader &reader, const ModelSizes &sizes) {
    QHash<QByteArray, Tensor> awaited = tensorsOf(sizes);
    while (!awaited.isEmpty()) {
        if (reader.left() == 0)
            return cutOff();
        const auto head = readHead(reader);
        const auto found = head ? awaited.constFind(head->first) : awaited.constEnd();
        if (found == awaited.constEnd() || *found != head->second)
            return u"The table of this speech model is damaged, or it is of a kind the engine does not know."_s;
        if (!reader.skip(bytesOf(*found)))
            return cutOff();
        awaited.erase(found);
    }
    if (reader.left() > 0)
        return u"This speech model has more in it than a speech model has."_s;
    return std::nullopt;
}

} // namespace

Result<ModelSizes, QString> checkModel(QIODevice &file) {
    Reader reader(file);
    ModelSizes sizes;
    Fault fault = readSizes(reader, sizes);
    for (const auto read : {readFilters, readVocabulary, readTensors}) {
        if (!fault)
            fault = read(reader, sizes);
    }
    if (fault)
        return failed(*fault);
    return sizes;
}

Result<ModelSizes, QString> checkModelFile(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(u"%1 cannot be read: %2."_s.arg(path, file.errorString()));
    return checkModel(file);
}

} // namespace velmo::localservice
