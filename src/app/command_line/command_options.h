#pragma once

#include "app/command_line/command.h"

#include <QCommandLineParser>
#include <optional>

namespace velmo {

/// Reads the words after a subcommand's name: `--help`, its own options, operands; complains in one form for all.
class CommandOptions {
public:
    explicit CommandOptions(const CommandWords &words);

    /// Declares an option; before `read`.
    void add(const QCommandLineOption &option) { m_parser.addOption(option); }

    /// Reads the words. Answers an exit status when the command ends here: help was asked for, or an option is unknown
    /// or lacks its value.
    [[nodiscard]] std::optional<int> read(const QStringList &arguments);

    /// As `read`, for a command that takes no operands.
    [[nodiscard]] std::optional<int> readOptionsAlone(const QStringList &arguments);

    [[nodiscard]] QStringList operands() const { return m_parser.positionalArguments(); }
    [[nodiscard]] bool isSet(const QString &option) const { return m_parser.isSet(option); }
    [[nodiscard]] QString value(const QString &option) const { return m_parser.value(option); }

    /// Says what is off about the words and answers the exit status for that.
    [[nodiscard]] int usageError(const QString &message) const;

private:
    [[nodiscard]] QString complaintAbout(const QStringList &arguments) const;

    CommandWords m_words;
    QCommandLineParser m_parser;
};

} // namespace velmo
