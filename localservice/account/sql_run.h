#pragma once

#include "base/utf8.h"
#include "store/sqlite_connection.h"

#include <QString>
#include <optional>

namespace velmo::localservice {

/// The statements of one transaction. The first failure is kept, and whatever is asked for after it does nothing, so
/// a sequence of statements needs no check between them; who ends the transaction looks at `failure`. Texts, bytes
/// and whole numbers are bound to ?1, ?2 … in their order. One thread.
class SqlRun {
public:
    /// The connection must outlive it.
    explicit SqlRun(const SqliteConnection &connection) : m_connection(connection) {}

    template <class... Values>
    void run(const char *sql, const Values &...values) {
        rows([](const SqliteStatement::Use &) {}, sql, values...);
    }

    /// Calls `onRow` with each row of the result.
    template <class OnRow, class... Values>
    void rows(const OnRow &onRow, const char *sql, const Values &...values) {
        if (const auto statement = prepare(sql))
            step(*statement, onRow, values...);
    }

    /// Runs one statement for each element; `bind` is given its use and the element.
    template <class List, class Bind>
    void runForEach(const List &list, const char *sql, const Bind &bind) {
        const auto statement = prepare(sql);
        for (auto element = list.begin(); statement && element != list.end(); ++element) {
            SqliteStatement::Use use(*statement);
            bind(use, *element);
            note(use.step());
        }
    }

    /// The first column of the only row; zero when there is none.
    template <class... Values>
    [[nodiscard]] qint64 number(const char *sql, const Values &...values) {
        qint64 found = 0;
        rows([&found](const SqliteStatement::Use &row) { found = row.integer(0); }, sql, values...);
        return found;
    }

    /// Keeps a failure, if it is one and the first.
    void note(SqliteCode code);

    /// SQLITE_OK, or the first failure.
    [[nodiscard]] SqliteCode failure() const { return m_failure; }

private:
    template <class OnRow, class... Values>
    void step(const SqliteStatement &statement, const OnRow &onRow, const Values &...values) {
        SqliteStatement::Use use(statement);
        int parameter = 0;
        (bind(use, ++parameter, values), ...);
        SqliteCode code = use.step();
        for (; code == SQLITE_ROW; code = use.step())
            onRow(use);
        note(code);
    }

    static void bind(SqliteStatement::Use &use, int parameter, const QString &text) {
        use.bindText(parameter, utf8(text));
    }
    static void bind(SqliteStatement::Use &use, int parameter, const QByteArray &bytes) {
        use.bindData(parameter, bytes);
    }
    static void bind(SqliteStatement::Use &use, int parameter, qint64 number) {
        use.bindInteger(parameter, number);
    }

    /// Nothing after a failure.
    [[nodiscard]] std::optional<SqliteStatement> prepare(const char *sql);

    const SqliteConnection &m_connection;
    SqliteCode m_failure = SQLITE_OK;
};

/// The text in a column.
[[nodiscard]] QString textIn(const SqliteStatement::Use &row, int column);

} // namespace velmo::localservice
