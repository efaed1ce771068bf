// A file that somebody takes for a speech model, with whatever is in it. The check in front of the engine must end with a
// sentence or with sizes that a model can have.

#include "localservice/models/model_file.h"

#include <QBuffer>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const auto checked = velmo::localservice::checkModel(file);
    if (checked ? !velmo::localservice::arePlausible(*checked) : checked.error().isEmpty())
        std::abort();
    return 0;
}
