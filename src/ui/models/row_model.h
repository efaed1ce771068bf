#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QMetaProperty>
#include <QSet>
#include <concepts>
#include <utility>

namespace velmo {

/// What a row of a model is: a Q_GADGET whose properties are what a view sees of it. Rows of equal keys are the same
/// row, whatever else has changed in it; a key can stand in a QSet.
template <class Row>
concept ModelRow = std::equality_comparable<Row> && requires(const Row &row) {
    { Row::staticMetaObject } -> std::convertible_to<const QMetaObject &>;
    row.key();
};

/// Rows of plain values for a view; each property of a row is a role of that name. Given another list it tells the view
/// exactly which rows came and went, so that the others stay where they are. Main thread.
template <ModelRow Row>
class RowModel final : public QAbstractListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] const QList<Row> &rows() const { return m_rows; }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        for (int at = 0; at < Row::staticMetaObject.propertyCount(); ++at)
            names.insert(Qt::UserRole + at, Row::staticMetaObject.property(at).name());
        return names;
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override {
        const QMetaProperty property = Row::staticMetaObject.property(role - Qt::UserRole);
        if (!property.isValid() || !checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        return property.readOnGadget(&m_rows.at(index.row()));
    }

    void setRows(const QList<Row> &rows) {
        QSet<Key> wanted;
        for (const Row &row : rows)
            wanted.insert(row.key());
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

private:
    using Key = std::remove_cvref_t<decltype(std::declval<const Row &>().key())>;

    /// Rows that stay may have changed in what their keys leave out.
    void announceChanges(const QList<Row> &before) {
        for (qsizetype at = 0; at < m_rows.size(); ++at) {
            if (const QModelIndex row = index(static_cast<int>(at)); before[at] != m_rows[at])
                Q_EMIT dataChanged(row, row);
        }
    }

    [[nodiscard]] bool isSameAt(qsizetype at, const QList<Row> &rows) const {
        return at < m_rows.size() && at < rows.size() && m_rows[at].key() == rows[at].key();
    }

    /// How many rows from there on the new list does not hold.
    [[nodiscard]] qsizetype leavingAt(qsizetype at, const QList<Row> &rows, const QSet<Key> &wanted) const {
        if (at >= rows.size())
            return m_rows.size() - at;
        qsizetype end = at;
        while (end < m_rows.size() && !wanted.contains(m_rows[end].key()))
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
        while (end < rows.size() && !(at < m_rows.size() && m_rows[at].key() == rows[end].key()))
            ++end;
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(end - 1));
        m_rows = m_rows.mid(0, at) + rows.mid(at, end - at) + m_rows.mid(at);
        endInsertRows();
        return end - at;
    }

    QList<Row> m_rows;
};

} // namespace velmo
