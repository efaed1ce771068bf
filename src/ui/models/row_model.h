#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QSet>
#include <concepts>
#include <utility>

namespace velmo {

/// Rows of plain values for a view. Given another list it tells the view exactly which rows came and went, so that
/// the others stay where they are. Main thread.
///
/// A subclass names its roles and answers `data`. `Key` says by what a row is known: rows of equal keys are the same
/// row; it has equality and qHash.
template <class Row, class Key>
class RowModel : public QAbstractListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] const QList<Row> &rows() const { return m_rows; }

    void setRows(const QList<Row> &rows) {
        QSet<Key> wanted;
        for (const Row &row : rows)
            wanted.insert(keyOf(row));
        for (qsizetype at = 0; at < std::max(rows.size(), m_rows.size());) {
            if (isSameAt(at, rows))
                ++at;
            else if (const qsizetype leaving = leavingAt(at, rows, wanted); leaving > 0)
                remove(at, leaving);
            else
                at += insert(at, rows);
        }
        const QList<Row> before = std::exchange(m_rows, rows);
        announceChanges(before);
    }

protected:
    [[nodiscard]] virtual Key keyOf(const Row &row) const = 0;

private:
    /// Rows that stay may have changed in what their keys leave out. Rows without equality are told by their keys alone.
    void announceChanges(const QList<Row> &before) {
        if constexpr (std::equality_comparable<Row>) {
            for (qsizetype at = 0; at < m_rows.size(); ++at) {
                if (const QModelIndex row = index(static_cast<int>(at)); before[at] != m_rows[at])
                    Q_EMIT dataChanged(row, row);
            }
        }
    }

    [[nodiscard]] bool isSameAt(qsizetype at, const QList<Row> &rows) const {
        return at < m_rows.size() && at < rows.size() && keyOf(m_rows[at]) == keyOf(rows[at]);
    }

    /// How many rows from there on the new list does not hold.
    [[nodiscard]] qsizetype leavingAt(qsizetype at, const QList<Row> &rows, const QSet<Key> &wanted) const {
        if (at >= rows.size())
            return m_rows.size() - at;
        qsizetype end = at;
        while (end < m_rows.size() && !wanted.contains(keyOf(m_rows[end])))
            ++end;
        return end - at;
    }

    void remove(qsizetype at, qsizetype count) {
        beginRemoveRows({}, static_cast<int>(at), static_cast<int>(at + count - 1));
        m_rows.remove(at, count);
        endRemoveRows();
    }

    /// Inserts the new rows that come before the row now standing there; answers how many.
    qsizetype insert(qsizetype at, const QList<Row> &rows) {
        qsizetype end = at + 1;
        while (end < rows.size() && !(at < m_rows.size() && keyOf(m_rows[at]) == keyOf(rows[end])))
            ++end;
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(end - 1));
        m_rows = m_rows.mid(0, at) + rows.mid(at, end - at) + m_rows.mid(at);
        endInsertRows();
        return end - at;
    }

    QList<Row> m_rows;
};

} // namespace velmo
