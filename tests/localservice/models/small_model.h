#pragma once

#include "localservice/models/model_layout.h"

#include <QByteArray>
#include <QString>

namespace velmo::localservice::testing {

/// A speech model as small as one can be (15 MB), with nothing but zeros in it, whose parts a test can spoil.
struct SmallModel {
    ModelSizes sizes = {51864, 1500, 384, 6, 1, 448, 384, 6, 1, 80, 2};
    qint32 mark = 0x67676d6c;
    qint32 filterRows = 80;
    qint32 tokens = 50256;
    qint32 tokenLength = 1;
    QByteArray spoiltTensor = "encoder.ln_post.bias"; ///< What the following are said of.
    qint32 spoiltType = 0;
    qint32 spoiltWidth = 384;
    QByteArray spoiltName = "encoder.ln_post.bias";
    QByteArray end = {};

    [[nodiscard]] QByteArray bytes() const;
};

} // namespace velmo::localservice::testing
