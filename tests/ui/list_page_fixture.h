#pragma once

#include "desks/list_desk.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <QAbstractItemModel>
#include <gmock/gmock.h>

namespace velmo::testing {

class ListPageTest : public ::testing::Test, protected ListDesk<ManualMainQueue> {};

/// Writes down which rows of a model come and go: "+2..3", "-0..0".
class RowLog {
public:
    explicit RowLog(QAbstractItemModel &model) {
        const auto note = [this](const char *sign) {
            return [this, sign](const QModelIndex &, int first, int last) {
                m_changes.append(
                    QStringLiteral("%1%2..%3").arg(QLatin1StringView(sign)).arg(first).arg(last));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context, note("+"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context, note("-"));
    }

    [[nodiscard]] QStringList take() { return std::exchange(m_changes, {}); }

private:
    QObject m_context;
    QStringList m_changes;
};

} // namespace velmo::testing
