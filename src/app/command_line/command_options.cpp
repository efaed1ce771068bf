#include "app/command_line/command_options.h"

#include "app/command_line/output.h"

namespace velmo {

CommandOptions::CommandOptions(const Command &command) : m_command(command) {
    m_parser.setApplicationDescription(QString(command.summary));
    // A file whose name begins with a dash is one wrong option, not one for each of its letters.
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
}

std::optional<int> CommandOptions::read(const QStringList &arguments) {
    const QString program = QStringLiteral("velmo ") + m_command.name;
    if (!m_parser.parse(QStringList{program} + arguments))
        return usageError(complaintAbout(arguments));
    if (!m_parser.isSet(QStringLiteral("help")))
        return std::nullopt;
    // Without declared operands Qt writes a usage line of its own; the command's is put in its place.
    QString help = m_parser.helpText();
    help.replace(0, help.indexOf(u'\n'),
                 QStringLiteral("Usage: %1 %2").arg(program, QString(m_command.usage)).trimmed());
    print(help);
    return exit_status::success;
}

/// Names an unknown option as it was typed; the parser knows it without its dashes.
QString CommandOptions::complaintAbout(const QStringList &arguments) const {
    const QString unknown = m_parser.unknownOptionNames().value(0);
    if (unknown.isEmpty())
        return m_parser.errorText();
    for (const QString &argument : arguments) {
        const QString name = argument.section(u'=', 0, 0);
        if (name == QStringLiteral("--") + unknown || name == u'-' + unknown)
            return QStringLiteral("unknown option '%1'").arg(argument);
    }
    return m_parser.errorText();
}

std::optional<int> CommandOptions::readOptionsAlone(const QStringList &arguments) {
    const auto status = read(arguments);
    if (status || operands().isEmpty())
        return status;
    return usageError(QStringLiteral("unexpected argument '%1'").arg(operands().first()));
}

int CommandOptions::usageError(const QString &message) const {
    printError(QStringLiteral("velmo %1: %2\nTry 'velmo %1 --help'.").arg(QString(m_command.name), message));
    return exit_status::usage;
}

} // namespace velmo
